#include "shells/linux/desktop/appearance/popover_frame.h"

#include "shells/linux/desktop/appearance/palettes.h"

#include <QPainterPath>

namespace kestrel::linux_shell::popover_frame {
namespace {

constexpr int shadowOffset = 4; // down, as of light from above
constexpr double shadowStrength = 0.055;
constexpr float hairlineStrength = 0.22F;
constexpr float highContrastHairlineStrength = 0.8F;

QPainterPath rounded(const QRectF& rect, double corner) {
    QPainterPath path;
    path.addRoundedRect(rect, corner, corner);
    return path;
}

} // namespace

// Ever larger and ever fainter shapes on top of each other come close to a blur.
void paintShadow(QPainter& painter, const QRect& content) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    constexpr int reach = shadowMargin - shadowOffset;
    for (int grow = reach; grow > 0; grow -= 2) {
        const double distance = static_cast<double>(grow) / reach;
        painter.setBrush(
            QColor::fromRgbF(0, 0, 0, static_cast<float>(shadowStrength * (1 - distance))));
        const QRectF shape =
            QRectF(content).translated(0, shadowOffset).adjusted(-grow, -grow, grow, grow);
        painter.drawPath(rounded(shape, cornerRadius + grow));
    }
    painter.restore();
}

void paintBackground(QPainter& painter, const QRect& content, const QPalette& palette) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(rounded(content, cornerRadius), palette.color(QPalette::Window));
    // One pixel of the screen wide, just inside the edge.
    const double width = 1 / painter.device()->devicePixelRatioF();
    const double inset = width / 2;
    QColor hairline = palette.color(QPalette::WindowText);
    hairline.setAlphaF(isHighContrast(palette) ? highContrastHairlineStrength : hairlineStrength);
    painter.setPen(QPen(hairline, width));
    painter.drawPath(
        rounded(QRectF(content).adjusted(inset, inset, -inset, -inset), cornerRadius - inset));
    painter.restore();
}

QRegion shape(const QRect& content, double radius) {
    return QRegion(rounded(content, radius).toFillPolygon().toPolygon());
}

} // namespace kestrel::linux_shell::popover_frame
