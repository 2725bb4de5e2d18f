#include "shells/linux/views/footer_button.h"

#include "shells/linux/desktop/appearance/symbol.h"
#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QFontMetrics>
#include <QPainter>

namespace kestrel::linux_shell {
namespace {

namespace footer = menu_popover_style::footer;

constexpr int buttonHeight = 26;   // pixels
constexpr double hoverWash = 0.06; // as in the toolbar of the settings
constexpr double pressedWash = 0.12;

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
    if (isDown() || showsHover()) {
        fillRounded(painter, rect(), controlRadius,
                    washColor(palette(), isDown() ? pressedWash : hoverWash));
    }
    if (showsFocus()) {
        drawFocusRing(painter, rect(), controlRadius, palette());
    }
    // The drawing leaves air in its square; the spacing counts from the square of its point size.
    const int extent = symbolExtent(look_.symbol.font.size);
    const int square = pixels(look_.symbol.font.size);
    drawSymbol(painter, QPoint(margin - (extent - square) / 2, (height() - extent) / 2),
               look_.symbol.name, extent, colorFor(look_.symbol.color, palette()));
    painter.setFont(fontFor(look_.titleStyle.font));
    painter.setPen(colorFor(look_.titleStyle.color, palette()));
    const int textLeft = margin + square + pixels(footer::buttonSpacing);
    painter.drawText(QRect(textLeft, 0, width() - textLeft, height()),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text());
}

} // namespace kestrel::linux_shell
