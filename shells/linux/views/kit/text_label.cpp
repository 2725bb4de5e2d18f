#include "shells/linux/views/kit/text_label.h"

#include "shells/linux/desktop/accessible_role.h"
#include "shells/linux/desktop/appearance/symbol.h"
#include "shells/linux/views/kit/mnemonics.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/text_line.h"
#include "shells/linux/views/kit/wrapped_text.h"

#include <QMouseEvent>
#include <QPainter>

namespace kestrel::linux_shell {

TextLabel::TextLabel(const QString& text, const style::TextStyle& textStyle, QWidget* parent)
    : QLabel(text, parent), style_(textStyle) {
    setTextFormat(Qt::PlainText);
    setFont(fontFor(style_.font));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void TextLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setLayoutDirection(layoutDirection());
    painter.setPen(colorFor(style_.color, palette()));
    if (wrapWidth_) {
        drawWrapped(painter, rect(), text(), font(), Qt::AlignHCenter);
        return;
    }
    const Qt::Alignment horizontal = alignment() & Qt::AlignHorizontal_Mask;
    drawMarked(painter, rect(), lineFlags(layoutDirection(), horizontal, directionOf(text())),
               text(), mark_);
}

void TextLabel::setMark(int mark) {
    mark_ = mark;
    update();
}

// The focus shows, and the text of a field is selected, as if the keyboard had led there: the click
// was not on the control.
void TextLabel::focusBuddy() {
    if (QWidget* const control = buddy())
        control->setFocus(Qt::ShortcutFocusReason);
}

void TextLabel::mousePressEvent(QMouseEvent* event) {
    if (buddy() != nullptr && event->button() == Qt::LeftButton)
        focusBuddy();
    else
        QLabel::mousePressEvent(event);
}

void TextLabel::setWrapWidth(int width) {
    wrapWidth_ = width;
    updateGeometry();
}

QSize TextLabel::sizeHint() const {
    if (!wrapWidth_)
        return QLabel::sizeHint();
    const int width = evenWidth(text(), font(), *wrapWidth_);
    return {width, wrappedHeight(text(), font(), width)};
}

SymbolLabel::SymbolLabel(const style::SymbolStyle& symbol, QWidget* parent)
    : QWidget(parent), symbol_(symbol) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleRole(*this, QAccessible::Graphic);
}

QSize SymbolLabel::sizeHint() const {
    const int extent = symbolExtent(symbol_.font.size);
    return {extent, extent};
}

void SymbolLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    drawSymbol(painter, {}, symbol_.name, symbolExtent(symbol_.font.size),
               colorFor(symbol_.color, palette()));
}

} // namespace kestrel::linux_shell
