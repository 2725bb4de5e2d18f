#pragma once
// The icon of an item as both lists draw it.

#include "actions/item_icon.h"

#include <QIcon>
#include <QPixmap>
#include <QSize>

#include <functional>
#include <string>

namespace kestrel::linux_shell {

/// The desktop's icon for the file at a path, generic when there is no such file.
using FileIconSource = std::function<QIcon(const std::string& path)>;

/// `icon` stretched to exactly `size` device-independent pixels; symbols are drawn in `color`.
/// Null where the icon theme has no icon or the program no such symbol.
QPixmap itemIconPixmap(const ItemIcon& icon, const FileIconSource& fileIcons, QSize size,
                       qreal devicePixelRatio, const QColor& color);

} // namespace kestrel::linux_shell
