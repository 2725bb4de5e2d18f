#include "shells/linux/views/kit/redraw_schedule.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace kestrel::linux_shell {

namespace {

bool isInput(QEvent::Type type) {
    switch (type) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
        return true;
    default:
        return false;
    }
}

} // namespace

void RedrawSchedule::request() {
    if (std::exchange(isDue_, true))
        return;
    QMetaObject::invokeMethod(this, &RedrawSchedule::catchUp, Qt::QueuedConnection);
    QCoreApplication::instance()->installEventFilter(this);
}

void RedrawSchedule::catchUp() {
    if (!std::exchange(isDue_, false))
        return;
    QCoreApplication::instance()->removeEventFilter(this);
    redraw_();
}

// The window gets an event before it looks for the widget that has the focus, and a redraw may
// give that to another.
bool RedrawSchedule::eventFilter(QObject* receiver, QEvent* event) {
    if (receiver->isWindowType() && isInput(event->type()))
        catchUp();
    return false;
}

} // namespace kestrel::linux_shell
