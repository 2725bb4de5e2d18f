#include "shells/linux/views/kit/menu_list.h"

#include <QMouseEvent>

#include <utility>

namespace kestrel::linux_shell {

// After a reload the owner is told again where the pointer is.
void MenuList::cancelGesture() {
    pressedRow_ = -1;
    reportedRow_ = -1;
}

// A screen reader that spoke along with the pointer would never be silent.
void MenuList::currentRowChanged() {
    if (lastInput() == LastInput::keyboard)
        RowList::currentRowChanged();
}

void MenuList::reportPointer(int row) {
    if (lastInput() == LastInput::keyboard)
        return;
    const int left = std::exchange(reportedRow_, row);
    if (row == left)
        return;
    if (left >= 0)
        Q_EMIT pointerLeft(left);
    if (row >= 0)
        Q_EMIT pointerEntered(row);
}

void MenuList::mousePressEvent(QMouseEvent* event) {
    pressedRow_ = event->button() == Qt::LeftButton ? rowAt(event->position().toPoint()) : -1;
}

void MenuList::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const QPoint position = event->position().toPoint();
    const int pressed = std::exchange(pressedRow_, -1);
    if (pressed >= 0 && pressed == rowAt(position) && viewport()->rect().contains(position))
        Q_EMIT activated(pressed);
}

} // namespace kestrel::linux_shell
