#pragma once
// The toolkit's own file dialog as FallbackStyle shows it: with columns that hold what is in them.

class QFileDialog;

namespace kestrel::linux_shell {

/// Widens the columns of sizes and dates as far as they need, and the dialog with them. Does
/// nothing to a dialog that the desktop shows.
void fitFileList(QFileDialog& dialog);

} // namespace kestrel::linux_shell
