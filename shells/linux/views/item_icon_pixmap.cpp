#include "shells/linux/views/item_icon_pixmap.h"

#include "shells/linux/desktop/appearance/symbol.h"

namespace kestrel::linux_shell {

QPixmap itemIconPixmap(const ItemIcon& icon, const FileIconSource& fileIcons, QSize size,
                       qreal devicePixelRatio, const QColor& color) {
    const auto* symbol = std::get_if<SymbolIcon>(&icon);
    QPixmap pixmap = symbol != nullptr
                         ? symbolPixmap(symbol->name, size.width(), color, devicePixelRatio)
                         : fileIcons(std::get<FileIcon>(icon).path).pixmap(size, devicePixelRatio);
    if (pixmap.isNull())
        return pixmap;
    const QSize deviceSize = (QSizeF(size) * devicePixelRatio).toSize();
    if (pixmap.size() != deviceSize)
        pixmap = pixmap.scaled(deviceSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

} // namespace kestrel::linux_shell
