#include "shells/linux/views/kit/control_button.h"

#include <QKeyEvent>

namespace kestrel::linux_shell {

ControlButton::ControlButton(QWidget* parent) : QAbstractButton(parent) {
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
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
