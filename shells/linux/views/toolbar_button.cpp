#include "shells/linux/views/toolbar_button.h"

#include "shells/linux/desktop/appearance/symbol.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "views/settings/settings_style.h"

#include <QFontMetrics>
#include <QPainter>

#include <utility>

namespace kestrel::linux_shell {

namespace {

namespace toolbar = settings_style::toolbar;

constexpr int inset = 2; // pixels around the background

} // namespace

ToolbarButton::ToolbarButton(const QString& label, std::string symbol, QWidget* parent)
    : ControlButton(parent), symbol_(std::move(symbol)) {
    setText(label);
    setToolTip(label);
    setFixedSize(sizeFor(toolbar::buttonSize));
    // A click leaves the focus with the list, whose row the button acts on.
    setFocusPolicy(Qt::TabFocus);
}

void ToolbarButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    drawBackground(painter, rect().adjusted(inset, inset, -inset, -inset));
    const QColor color =
        colorFor(isEnabled() ? toolbar::enabledColor : toolbar::disabledColor, palette());
    const QFont font = fontFor(toolbar::labelFont);
    const int textHeight = QFontMetrics(font).height();
    // A symbol leaves a margin in its square; the spacing counts from the square of its point size.
    const int extent = symbolExtent(toolbar::symbolFont.size);
    const int square = pixels(toolbar::symbolFont.size);
    const int spacing = pixels(toolbar::buttonSpacing);
    const int top = (height() - square - spacing - textHeight) / 2;
    drawSymbol(painter, QPoint((width() - extent) / 2, top - (extent - square) / 2), symbol_,
               extent, color);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(QRect(0, top + square + spacing, width(), textHeight),
                     Qt::AlignCenter | Qt::TextSingleLine, text());
}

} // namespace kestrel::linux_shell
