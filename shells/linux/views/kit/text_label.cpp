#include "shells/linux/views/kit/text_label.h"

#include "shells/linux/desktop/accessible_role.h"
#include "shells/linux/desktop/appearance/symbol.h"
#include "shells/linux/views/kit/mnemonics.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace kestrel::linux_shell {

TextLabel::TextLabel(const QString& text, const style::TextStyle& textStyle, QWidget* parent)
    : QLabel(text, parent), style_(textStyle) {
    setTextFormat(Qt::PlainText);
    setFont(fontFor(style_.font));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void TextLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(colorFor(style_.color, palette()));
    const int wrap = wordWrap() ? Qt::TextWordWrap : Qt::TextSingleLine;
    drawMarked(painter, rect(), static_cast<int>(alignment()) | wrap, text(), mark_);
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

int TextLabel::heightForWidth(int width) const {
    return QLabel::heightForWidth(std::min(width, maximumWidth()));
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
