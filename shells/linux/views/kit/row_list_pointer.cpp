// The pointer half of RowList.

#include "shells/linux/views/kit/row_drag.h"
#include "shells/linux/views/kit/row_list.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <cmath>
#include <utility>

namespace kestrel::linux_shell {

namespace {

constexpr double wheelUnitsPerNotch = 120;

// The X11 plugin's pixel deltas depend on the device's driver; its angles are sound.
bool hasSoundPixelDelta(const QWheelEvent& event) {
    return !event.pixelDelta().isNull() && QGuiApplication::platformName() != u"xcb";
}

double pixelsOf(const QWheelEvent& event) {
    if (hasSoundPixelDelta(event)) {
        return event.pixelDelta().y();
    }
    return event.angleDelta().y() / wheelUnitsPerNotch * QApplication::wheelScrollLines() *
           RowList::pixelsPerScrollLine;
}

} // namespace

// Widgets that scroll or appear under a resting pointer report it as coming in; only a pointer
// that really moved takes the highlight from the keyboard.
void RowList::pointerAt(std::optional<QPoint> position) {
    if (position != pointer_) {
        pointer_ = position;
        lastInput_ = LastInput::pointer;
        updateStates();
    }
}

void RowList::reportPointer() {
    if (!isMenu() || lastInput_ == LastInput::keyboard) {
        return;
    }
    const int row = pointer_ ? rowAt(*pointer_) : -1;
    const int left = std::exchange(reportedRow_, row);
    if (row == left) {
        return;
    }
    if (left >= 0) {
        Q_EMIT pointerLeft(left);
    }
    if (row >= 0) {
        Q_EMIT pointerEntered(row);
    }
}

void RowList::mousePressEvent(QMouseEvent* event) {
    const QPoint position = event->position().toPoint();
    pressedSinceReload_ = true;
    pressedRow_ = event->button() == Qt::LeftButton ? rowAt(position) : -1;
    if (isMenu()) {
        return;
    }
    pick(rowAt(position), LastInput::pointer);
    if (drag_ != nullptr && pressedRow_ >= 0) {
        drag_->press(pressedRow_, position);
    }
}

void RowList::mouseMoveEvent(QMouseEvent* event) {
    const QPoint position = event->position().toPoint();
    pointerAt(position);
    if (drag_ != nullptr) {
        drag_->move(position);
    }
}

void RowList::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const int pressed = std::exchange(pressedRow_, -1);
    if (drag_ != nullptr) {
        drag_->drop();
        layoutRows();
        return;
    }
    const QPoint position = event->position().toPoint();
    if (isMenu() && pressed >= 0 && pressed == rowAt(position) &&
        viewport()->rect().contains(position)) {
        Q_EMIT activated(pressed);
    }
}

// A second click on a row that has only just come under the pointer is the first on that row.
void RowList::mouseDoubleClickEvent(QMouseEvent* event) {
    const int row = rowAt(event->position().toPoint());
    if (isMenu() || !pressedSinceReload_) {
        mousePressEvent(event);
    } else if (event->button() == Qt::LeftButton && row >= 0) {
        Q_EMIT activated(row);
    }
}

void RowList::wheelEvent(QWheelEvent* event) {
    if (std::abs(event->angleDelta().x()) > std::abs(event->angleDelta().y())) {
        event->ignore();
        return;
    }
    wheelRemainder_ -= pixelsOf(*event);
    const double whole = std::trunc(wheelRemainder_);
    wheelRemainder_ -= whole;
    lastInput_ = LastInput::pointer;
    verticalScrollBar()->setValue(scrollOffset() + static_cast<int>(whole));
    event->accept();
}

void RowList::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    const int row = byKeyboard ? currentRow_ : rowAt(event->pos());
    if (isMenu() || row < 0) {
        return;
    }
    if (byKeyboard) {
        ensureVisible(row);
    }
    const QPoint position = byKeyboard ? rowRect(row).center() : event->pos();
    Q_EMIT contextMenuRequested(row, viewport()->mapToGlobal(position));
}

} // namespace kestrel::linux_shell
