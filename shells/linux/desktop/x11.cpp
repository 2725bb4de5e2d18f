#include "shells/linux/desktop/x11.h"

#include "shells/linux/desktop/desktop_watch.h"
#include "shells/linux/desktop/x11_connection.h"

#include <QGuiApplication>

#include <string_view>
#include <utility>

namespace kestrel::linux_shell::x11 {
namespace {

constexpr std::string_view trayColors = "_NET_SYSTEM_TRAY_COLORS";

xcb_window_t trayWindow(xcb_connection_t* c) { return selectionOwner(c, "_NET_SYSTEM_TRAY_S0"); }

unsigned pointerButtons() {
    auto* c = connection();
    if (c == nullptr)
        return 0;
    const Reply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(c, xcb_query_pointer(c, rootWindow(c)), nullptr));
    return reply ? reply->mask : 0U;
}

} // namespace

bool isAvailable() { return connection() != nullptr; }

bool isXWayland() { return isAvailable() && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"); }

bool hasTray() {
    auto* c = connection();
    return c != nullptr && trayWindow(c) != XCB_WINDOW_NONE;
}

std::optional<QColor> trayForeground() {
    auto* c = connection();
    if (c == nullptr)
        return std::nullopt;
    // Four colours of three 16-bit channels: foreground, error, warning, success.
    const auto channels = values(c, trayWindow(c), trayColors, XCB_ATOM_CARDINAL);
    if (channels.size() < 12)
        return std::nullopt;
    const auto channel = [&](std::size_t i) {
        return static_cast<int>((channels[i] >> 8U) & 0xFFU);
    };
    return QColor(channel(0), channel(1), channel(2));
}

QList<QRect> panels() {
    auto* watch = isXWayland() ? nullptr : DesktopWatch::current();
    if (watch == nullptr)
        return {};
    QList<QRect> found;
    for (const QRect& panel : watch->panels())
        found.append(independentOfDevice(panel));
    return found;
}

QPoint independentOfDevice(QPoint point) {
    return independentOfDevice(QRect(point, QSize(1, 1))).topLeft();
}

bool isCompositing() {
    if (isXWayland())
        return true;
    auto* watch = DesktopWatch::current();
    return watch != nullptr && watch->hasCompositor();
}

bool isMouseButtonDown() {
    constexpr unsigned buttons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    return (pointerButtons() & buttons) != 0;
}

bool isLeftButtonAloneDown() {
    constexpr unsigned buttons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    return (pointerButtons() & buttons) == XCB_BUTTON_MASK_1;
}

bool trayBlends() {
    auto* c = connection();
    if (c == nullptr)
        return false;
    const auto visual = values(c, trayWindow(c), "_NET_SYSTEM_TRAY_VISUAL", XCB_ATOM_VISUALID);
    if (visual.empty())
        return false;
    auto* screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
    for (auto depth = xcb_screen_allowed_depths_iterator(screen); depth.rem != 0;
         xcb_depth_next(&depth)) {
        for (auto type = xcb_depth_visuals_iterator(depth.data); type.rem != 0;
             xcb_visualtype_next(&type))
            if (type.data->visual_id == visual.front())
                return depth.data->depth == 32;
    }
    return false;
}

TrayWatch::TrayWatch(Callbacks callbacks) : callbacks_(std::move(callbacks)) {
    if (auto* c = connection()) {
        managerAtom_ = atom(c, "MANAGER");
        trayAtom_ = atom(c, "_NET_SYSTEM_TRAY_S0");
        colorsAtom_ = atom(c, trayColors);
    }
    qGuiApp->installNativeEventFilter(this);
}

TrayWatch::~TrayWatch() { qGuiApp->removeNativeEventFilter(this); }

// The panel's window may be one whose place is listened to already.
void TrayWatch::listenToColors() const {
    auto* c = connection();
    if (c == nullptr)
        return;
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const auto cookie =
        xcb_change_window_attributes_checked(c, trayWindow(c), XCB_CW_EVENT_MASK, &events);
    xcb_discard_reply(c, cookie.sequence); // it may be gone by now
}

// A new owner of the tray selection announces itself to the root window, whose messages Qt's X11
// plugin receives in any case.
bool TrayWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    const auto type = event->response_type & 0x7FU;
    if (type == XCB_CLIENT_MESSAGE) {
        const auto* manager = reinterpret_cast<const xcb_client_message_event_t*>(event);
        if (manager->type == managerAtom_ && manager->data.data32[1] == trayAtom_)
            callbacks_.arrived();
    } else if (type == XCB_PROPERTY_NOTIFY) {
        if (reinterpret_cast<const xcb_property_notify_event_t*>(event)->atom == colorsAtom_)
            callbacks_.recolored();
    }
    return false;
}

} // namespace kestrel::linux_shell::x11
