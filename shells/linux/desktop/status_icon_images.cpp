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

QList<QImage> StatusIconImages::drawn(const QColor& color) const {
    QList<QImage> images;
    if (image_ != nullptr) {
        for (const IconSize size : iconSizes) {
            QImage icon(size.pixels, size.pixels, QImage::Format_ARGB32_Premultiplied);
            icon.fill(Qt::transparent);
            const int border = (size.pixels - size.drawing) / 2;
            QPainter(&icon).drawImage(border, border, drawn(size.drawing, color));
            images.append(icon);
        }
    }
    return images;
}

QImage StatusIconImages::drawn(int pixels, const QColor& color) const {
    const QImage image = renderer_(*image_, pixels);
    return isTemplate_ ? tinted(image, color) : image;
}

QIcon iconOf(const QList<QImage>& images) {
    QIcon icon;
    for (const QImage& image : images) {
        icon.addPixmap(QPixmap::fromImage(image));
    }
    return icon;
}

} // namespace kestrel::linux_shell
