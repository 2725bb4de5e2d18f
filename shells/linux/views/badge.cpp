#include "shells/linux/views/badge.h"

#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "views/settings/item_row_style.h"

#include <QFontMetrics>
#include <QPainter>

namespace kestrel::linux_shell {

namespace badge = item_row_style::badge;

QSize badgeSize(const QString& text) {
    const QFontMetrics metrics(fontFor(badge::text.font));
    const QMargins padding = marginsFor(badge::padding);
    return QSize(metrics.horizontalAdvance(text), metrics.height()).grownBy(padding);
}

void drawBadge(QPainter& painter, QPoint topLeft, const QString& text, const QPalette& palette) {
    const QRect rect(topLeft, badgeSize(text));
    fillRounded(painter, rect, badge::radius, colorFor(badge::background, palette));
    painter.setFont(fontFor(badge::text.font));
    painter.setPen(colorFor(badge::text.color, palette));
    painter.drawText(rect, Qt::AlignCenter | Qt::TextSingleLine, text);
}

} // namespace kestrel::linux_shell
