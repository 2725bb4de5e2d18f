#include "shells/linux/views/kit/text_label.h"

#include "shells/linux/desktop/appearance/symbol.h"
#include "shells/linux/views/kit/accessible_role.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

namespace kestrel::linux_shell {

namespace {
constexpr int unlimited = 1 << 16;
}

TextLabel::TextLabel(const QString& text, const style::TextStyle& textStyle, QWidget* parent)
    : QWidget(parent), style_(textStyle) {
    setAccessibleRole(*this, QAccessible::StaticText);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setText(text);
}

void TextLabel::setText(const QString& text) {
    text_ = text;
    setAccessibleName(text);
    updateGeometry();
    update();
}

void TextLabel::setMaximumTextWidth(int pixels) {
    maximumTextWidth_ = pixels;
    updateGeometry();
}

void TextLabel::setAlignment(Qt::Alignment alignment) {
    alignment_ = alignment;
    update();
}

int TextLabel::flags() const {
    return static_cast<int>(alignment_) |
           (maximumTextWidth_ > 0 ? Qt::TextWordWrap : Qt::TextSingleLine);
}

QSize TextLabel::sizeHint() const {
    const int width = maximumTextWidth_ > 0 ? maximumTextWidth_ : unlimited;
    return QFontMetrics(fontFor(style_.font))
        .boundingRect(QRect(0, 0, width, unlimited), flags(), text_)
        .size();
}

void TextLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setFont(fontFor(style_.font));
    painter.setPen(colorFor(style_.color, palette()));
    painter.drawText(rect(), flags(), text_);
}

void TextLabel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
    }
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
