#include "shells/linux/views/item_icon_pixmap.h"

#include "shells/linux/desktop/appearance/symbol.h"

namespace kestrel::linux_shell {

namespace {

QPixmap stretched(const QPixmap& picture, QSize size, qreal devicePixelRatio) {
    if (picture.isNull()) {
        return picture;
    }
    const QSize deviceSize = (QSizeF(size) * devicePixelRatio).toSize();
    QPixmap result =
        picture.size() == deviceSize
            ? picture
            : picture.scaled(deviceSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    result.setDevicePixelRatio(devicePixelRatio);
    return result;
}

} // namespace

QPixmap itemIconPixmap(const ItemIcon& icon, const FileIconSource& fileIcons, QSize size,
                       qreal devicePixelRatio, const QColor& color) {
    if (const auto* symbol = std::get_if<SymbolIcon>(&icon)) {
        return stretched(symbolPixmap(symbol->name, size.width(), color, devicePixelRatio), size,
                         devicePixelRatio);
    }
    const QIcon file = fileIcons(std::get<FileIcon>(icon).path);
    return stretched(file.pixmap(size, devicePixelRatio), size, devicePixelRatio);
}

} // namespace kestrel::linux_shell
