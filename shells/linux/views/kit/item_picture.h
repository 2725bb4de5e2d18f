#pragma once
// The picture of an item, as both lists show it.

#include "actions/item_icon.h"
#include "shells/linux/views/kit/file_icon_source.h"

#include <QPixmap>
#include <QSize>

namespace kestrel::linux_shell {

/// `icon` stretched to exactly `size` device-independent pixels; symbols are drawn in `color`.
/// Null where the icon theme or the symbol is missing.
QPixmap itemPicture(const ItemIcon& icon, const FileIconSource& fileIcons, QSize size,
                    qreal devicePixelRatio, const QColor& color);

} // namespace kestrel::linux_shell
