#include "shells/linux/views/footer_button.h"

#include "shells/linux/desktop/appearance/symbol.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/text_line.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace kestrel::linux_shell {
namespace {

namespace footer = menu_popover_style::footer;

constexpr int buttonHeight = 26; // pixels

} // namespace

FooterButton::FooterButton(const footer::Button& look, QWidget* parent)
    : ControlButton(parent), look_(look) {
    setText(textFor(look.title));
}

QSize FooterButton::sizeHint() const {
    const int text = QFontMetrics(fontFor(look_.titleStyle.font)).horizontalAdvance(this->text());
    return {2 * margin + pixels(look_.symbol.font.size) + pixels(footer::buttonSpacing) + text,
            buttonHeight};
}

void FooterButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setLayoutDirection(layoutDirection());
    drawBackground(painter, rect());
    // A symbol leaves a margin in its square; the spacing counts from the square of its point size.
    const int extent = symbolExtent(look_.symbol.font.size);
    const int square = pixels(look_.symbol.font.size);
    const QRect symbol(margin - (extent - square) / 2, (height() - extent) / 2, extent, extent);
    drawSymbol(painter, QStyle::visualRect(layoutDirection(), rect(), symbol).topLeft(),
               look_.symbol.name, extent, colorFor(look_.symbol.color, palette()));
    painter.setFont(fontFor(look_.titleStyle.font));
    painter.setPen(colorFor(look_.titleStyle.color, palette()));
    const int textLeft = margin + square + pixels(footer::buttonSpacing);
    const QRect title(textLeft, 0, width() - textLeft, height());
    drawLine(painter, QStyle::visualRect(layoutDirection(), rect(), title), text(), Qt::AlignLeft,
             directionOf(text()));
}

} // namespace kestrel::linux_shell
