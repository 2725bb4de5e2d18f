#include "shells/linux/desktop/active_window_watch.h"

#include "shells/linux/desktop/x11_connection.h"

#include <QCoreApplication>

#include <utility>

namespace kestrel::linux_shell::x11 {

void ActiveWindowWatch::start() {
    if (auto* c = connection(); c != nullptr && property_ == 0) {
        property_ = atom(c, "_NET_ACTIVE_WINDOW");
        qApp->installNativeEventFilter(this);
    }
}

void ActiveWindowWatch::stop() {
    if (std::exchange(property_, 0) != 0)
        qApp->removeNativeEventFilter(this);
}

// The toolkit listens to the root window's properties in any case.
bool ActiveWindowWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7FU) != XCB_PROPERTY_NOTIFY)
        return false;
    if (reinterpret_cast<const xcb_property_notify_event_t*>(event)->atom == property_) {
        QMetaObject::invokeMethod(
            &context_,
            [this] {
                if (property_ != 0)
                    changed_();
            },
            Qt::QueuedConnection);
    }
    return false;
}

} // namespace kestrel::linux_shell::x11
