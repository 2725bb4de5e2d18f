#include "shells/linux/desktop/appearance/symbol.h"

#include "shells/linux/desktop/appearance/texts.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>

namespace kestrel::linux_shell {

namespace {

QPixmap render(const QString& path, int extent, const QColor& color, qreal devicePixelRatio) {
    if (!QFile::exists(path))
        return {};
    QSvgRenderer renderer(path);
    const int side = static_cast<int>(std::lround(extent * devicePixelRatio));
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(0, 0, side, side));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    painter.end();
    QPixmap pixmap = QPixmap::fromImage(std::move(image));
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

} // namespace

// An odd number, so that a line through the middle falls on a column of pixels.
int symbolExtent(double pointSize) {
    return 2 * static_cast<int>(std::lround(pointSize * 0.65)) + 1;
}

QPixmap symbolPixmap(std::string_view name, int extent, const QColor& color,
                     qreal devicePixelRatio) {
    const QString path = QStringLiteral(":/kestrel/symbols/%1.svg").arg(toQString(name));
    const QString key = QStringLiteral("%1 %2 %3 %4")
                            .arg(path)
                            .arg(extent)
                            .arg(color.rgba(), 0, 16)
                            .arg(devicePixelRatio);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = render(path, extent, color, devicePixelRatio);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

void drawSymbol(QPainter& painter, QPoint position, std::string_view name, int extent,
                const QColor& color) {
    const QPixmap pixmap = symbolPixmap(name, extent, color, painter.device()->devicePixelRatioF());
    if (!pixmap.isNull())
        painter.drawPixmap(QRect(position, QSize(extent, extent)), pixmap);
}

} // namespace kestrel::linux_shell
