#include "shells/linux/desktop/template_icon.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QScreen>

#include <algorithm>
#include <array>

namespace kestrel::linux_shell {

QImage tinted(const QImage& image, const QColor& color) {
    QImage result = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(result.rect(), color);
    return result;
}

QColor contrastingColor(const QImage& background) {
    const int right = background.width() - 1;
    const int bottom = background.height() - 1;
    std::array<int, 4> grays{qGray(background.pixel(0, 0)), qGray(background.pixel(right, 0)),
                             qGray(background.pixel(0, bottom)),
                             qGray(background.pixel(right, bottom))};
    std::sort(grays.begin(), grays.end());
    const int middle = (grays[1] + grays[2]) / 2;
    return middle < 128 ? colorOnDark : colorOnLight;
}

QImage seenAt(const QRect& rect) {
    auto* screen = QGuiApplication::screenAt(rect.center());
    if (rect.isEmpty() || screen == nullptr)
        return {};
    const QPoint corner = rect.topLeft() - screen->geometry().topLeft();
    return screen->grabWindow(0, corner.x(), corner.y(), rect.width(), rect.height()).toImage();
}

} // namespace kestrel::linux_shell
