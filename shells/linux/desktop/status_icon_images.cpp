#include "shells/linux/desktop/status_icon_images.h"

#include "shells/linux/desktop/template_icon.h"

#include <QPainter>
#include <QPixmap>

#include <array>

namespace kestrel::linux_shell {
namespace {

struct IconSize {
    int pixels;  ///< the side of the icon
    int drawing; ///< the side of the square in its middle that the image is drawn into
};

// The sizes that panels show icons at, on plain and on dense screens. The smallest is filled; in
// the larger ones the drawings of icon themes leave a border, about as wide as here.
constexpr std::array<IconSize, 6> iconSizes{
    {{16, 16}, {22, 20}, {24, 22}, {32, 28}, {48, 42}, {64, 56}}};

} // namespace

QList<QImage> statusIconImages(const IconRenderer& renderer, const QColor& color) {
    QList<QImage> images;
    for (const IconSize size : iconSizes) {
        const QImage shape = renderer(size.drawing);
        if (shape.isNull())
            return {};
        QImage icon(size.pixels, size.pixels, QImage::Format_ARGB32_Premultiplied);
        icon.fill(Qt::transparent);
        const int border = (size.pixels - size.drawing) / 2;
        QPainter(&icon).drawImage(border, border, tinted(shape, color));
        images.append(icon);
    }
    return images;
}

QIcon iconOf(const QList<QImage>& images) {
    QIcon icon;
    for (const QImage& image : images)
        icon.addPixmap(QPixmap::fromImage(image));
    return icon;
}

} // namespace kestrel::linux_shell
