#include "shells/linux/views/kit/control_button.h"

#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QKeyEvent>

namespace kestrel::linux_shell {

namespace {
constexpr double hoverOpacity = 0.06;
constexpr double pressedOpacity = 0.12;
} // namespace

ControlButton::ControlButton(QWidget* parent) : QAbstractButton(parent) {
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
}

void ControlButton::drawBackground(QPainter& painter, const QRectF& area) const {
    if (isDown() || showsHover()) {
        fillRounded(painter, area, controlRadius,
                    washColor(palette(), isDown() ? pressedOpacity : hoverOpacity));
    }
    if (showsFocus())
        drawFocusRing(painter, area, controlRadius, palette());
}

void ControlButton::focusInEvent(QFocusEvent* event) {
    keyboardFocus_.focused(event->reason());
    QAbstractButton::focusInEvent(event);
}

// The toolkit's own handling of Return differs from desktop to desktop.
void ControlButton::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isReturn) {
        keyboardFocus_.keyPressed();
        QAbstractButton::keyPressEvent(event);
    } else if (returnKey_ == ReturnKey::leftToOthers ||
               (event->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) {
        event->ignore();
    } else if (!event->isAutoRepeat()) {
        click(); // may be the end of the button
    }
}

// Where the window is shown again, the keyboard has brought nobody here yet.
void ControlButton::hideEvent(QHideEvent* event) {
    if (!event->spontaneous())
        keyboardFocus_.reset();
    QAbstractButton::hideEvent(event);
}

} // namespace kestrel::linux_shell
