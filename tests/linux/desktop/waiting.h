#pragma once
// Waits for what the event loop brings.

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

#include <functional>

namespace kestrel::linux_shell {

/// Runs the event loop until `condition` holds; false when it does not within 30 seconds.
inline bool waitUntil(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(30000);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
    }
    return true;
}

/// Handles all that is waiting now, deletions included.
inline void settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace kestrel::linux_shell
