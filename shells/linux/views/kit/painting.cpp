#include "shells/linux/views/kit/painting.h"

#include "shells/linux/views/kit/style_bridge.h"

#include <QPainter>

namespace kestrel::linux_shell {

QColor mixed(const QColor& under, const QColor& over, double share) {
    const double rest = 1 - share;
    return QColor::fromRgbF(static_cast<float>(under.redF() * rest + over.redF() * share),
                            static_cast<float>(under.greenF() * rest + over.greenF() * share),
                            static_cast<float>(under.blueF() * rest + over.blueF() * share));
}

void fillRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& fill) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(rect, radius, radius);
    painter.restore();
}

void strokeRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& color,
                   double width) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, width));
    painter.setBrush(Qt::NoBrush);
    const double inset = width / 2;
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius - inset,
                            radius - inset);
    painter.restore();
}

void drawFocusRing(QPainter& painter, const QRectF& rect, double radius, const QPalette& palette) {
    strokeRounded(painter, rect, radius, focusColor(palette), 2);
}

} // namespace kestrel::linux_shell
