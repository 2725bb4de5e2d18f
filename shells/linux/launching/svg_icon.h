#pragma once
// Icons that are drawings in SVG files, drawn by QtSvg itself: for an icon of such a file the
// toolkit seeks a plugin, which some systems have in a package of its own, and draws nothing
// without.

#include <QIcon>
#include <QString>

namespace kestrel::linux_shell {

/// The drawing in the file or resource at `path`, stretched to the size that is asked for.
/// Transparent when there is no drawing.
QIcon svgIcon(const QString& path);

} // namespace kestrel::linux_shell
