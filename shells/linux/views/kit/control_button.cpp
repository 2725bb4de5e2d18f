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

// Some desktops let Return press the focused button, which would make it submit a form.
void ControlButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->ignore();
        return;
    }
    keyboardFocus_.keyPressed();
    QAbstractButton::keyPressEvent(event);
}

} // namespace kestrel::linux_shell
