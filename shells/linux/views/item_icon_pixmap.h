#pragma once
// The icon of an item as both lists draw it.

#include "actions/item_icon.h"
#include "shells/linux/views/file_icon_source.h"

#include <QPixmap>
#include <QSize>

namespace kestrel::linux_shell {

/// `icon` stretched to exactly `size` device-independent pixels; symbols are drawn in `color`.
/// Null where the icon theme has no icon or the program no such symbol.
QPixmap itemIconPixmap(const ItemIcon& icon, const FileIconSource& fileIcons, QSize size,
                       qreal devicePixelRatio, const QColor& color);

} // namespace kestrel::linux_shell
