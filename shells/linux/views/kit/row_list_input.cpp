// What RowList does with the pointer, the wheel and the keys.

#include "shells/linux/views/kit/list_keys.h"
#include "shells/linux/views/kit/row_list.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <cmath>

namespace kestrel::linux_shell {

namespace {

constexpr double wheelUnitsPerNotch = 120;

// The X11 plugin's pixel deltas depend on the device's driver; its angles are sound.
bool hasSoundPixelDelta(const QWheelEvent& event) {
    return !event.pixelDelta().isNull() && QGuiApplication::platformName() != u"xcb";
}

double pixelsOf(const QWheelEvent& event, int pixelsPerLine) {
    if (hasSoundPixelDelta(event))
        return event.pixelDelta().y();
    return event.angleDelta().y() / wheelUnitsPerNotch * QApplication::wheelScrollLines() *
           pixelsPerLine;
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

void RowList::mouseMoveEvent(QMouseEvent* event) { pointerAt(event->position().toPoint()); }

void RowList::wheelEvent(QWheelEvent* event) {
    if (std::abs(event->angleDelta().x()) > std::abs(event->angleDelta().y())) {
        event->ignore();
        return;
    }
    wheelRemainder_ -= pixelsOf(*event, verticalScrollBar()->singleStep());
    const double whole = std::trunc(wheelRemainder_);
    wheelRemainder_ -= whole;
    lastInput_ = LastInput::pointer;
    verticalScrollBar()->setValue(scrollOffset() + static_cast<int>(whole));
    event->accept();
}

void RowList::keyPressEvent(QKeyEvent* event) {
    if (count() == 0 || !takeKey(*event))
        event->ignore();
}

bool RowList::takeKey(const QKeyEvent& event) {
    if (const auto step = rowStepOf(event)) {
        lastInput_ = LastInput::keyboard;
        setFocus(Qt::OtherFocusReason); // the key may come from a control of a row
        takeStep(*step);
        return true;
    }
    if (isPlainReturn(event)) {
        if (currentRow_ >= 0)
            Q_EMIT activated(currentRow_);
        return true;
    }
    return typeLetter(event);
}

bool RowList::typeLetter(const QKeyEvent& event) {
    const QString text = event.text();
    const Qt::KeyboardModifiers modifiers = modifiersOf(event) & ~Qt::ShiftModifier;
    const bool command = modifiers != Qt::NoModifier && modifiers != Qt::GroupSwitchModifier;
    if (command || text.isEmpty() || !text.at(0).isPrint())
        return false;
    lastInput_ = LastInput::keyboard;
    Q_EMIT typed(text);
    return true;
}

} // namespace kestrel::linux_shell
