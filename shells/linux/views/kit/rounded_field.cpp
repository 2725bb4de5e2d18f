#include "shells/linux/views/kit/rounded_field.h"

#include "shells/linux/views/kit/control_faces.h"
#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>

#include <limits>

namespace kestrel::linux_shell {

namespace {
constexpr int textMargin = 6; // pixels, on top of the two that the line edit keeps
}

RoundedField::RoundedField(const style::Font& font, const QString& placeholder, const QString& name,
                           QWidget* parent)
    : QLineEdit(parent) {
    setFrame(false);
    setTextMargins(textMargin, 0, textMargin, 0);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setPlaceholderText(placeholder);
    setAccessibleName(name);
    setAttribute(Qt::WA_Hover);
    setFont(fontFor(font));
    setMaxLength(std::numeric_limits<int>::max()); // a shown text is never cut
    setOwnColors();
    connect(this, &QLineEdit::textChanged, this, [this](const QString& changed) {
        if (!isShowing_)
            Q_EMIT edited(changed);
    });
}

void RoundedField::show(const QString& text) {
    if (text == this->text())
        return;
    isShowing_ = true;
    setText(text);
    isShowing_ = false;
    if (!hasFocus())
        setCursorPosition(0); // a long text shows its beginning
}

QSize RoundedField::sizeHint() const { return {160, controlHeight}; }

QSize RoundedField::minimumSizeHint() const { return {80, controlHeight}; }

// The style would fill the whole rectangle, corners included, with the palette's base colour. And
// some platform themes have no colour for placeholders. Only these two are the field's own: all
// others go on following the application's.
void RoundedField::setOwnColors() {
    QPalette own;
    own.setColor(QPalette::Base, Qt::transparent);
    own.setColor(QPalette::PlaceholderText, placeholderColor(QApplication::palette(this)));
    if (own.color(QPalette::PlaceholderText) != palette().color(QPalette::PlaceholderText) ||
        palette().color(QPalette::Base) != Qt::transparent)
        setPalette(own);
}

void RoundedField::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    drawFieldFace(painter, rect(), QApplication::palette(this),
                  {.isHovered = underMouse(), .hasFocus = hasFocus()});
    painter.end();
    QLineEdit::paintEvent(event);
}

void RoundedField::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        setOwnColors();
}

} // namespace kestrel::linux_shell
