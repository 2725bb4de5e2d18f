#pragma once
// Icons of applications without the toolkit's reading of their theme's whole index, which is the
// dearest step of a start.

namespace kestrel::linux_shell {

/// Makes the toolkit read the short index that comes with the program in place of the installed one
/// of the theme hicolor. The icons are those of the installed theme, also where they are added
/// later. To be called once, after the application object is there and before the first icon of a
/// theme is looked up.
void installIconIndex();

} // namespace kestrel::linux_shell
