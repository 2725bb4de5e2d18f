#include "shells/linux/desktop/x11_windows.h"

#include "shells/linux/desktop/x11_connection.h"

#include <algorithm>
#include <array>
#include <xcb/xinput.h>

namespace kestrel::linux_shell::x11 {
namespace {

xcb_window_t idOf(WId window) { return static_cast<xcb_window_t>(window); }

template <std::size_t count>
void setProperty(xcb_connection_t* c, WId window, std::string_view name, xcb_atom_t type,
                 const std::array<std::uint32_t, count>& numbers) {
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, idOf(window), atom(c, name), type, 32, count,
                        numbers.data());
}

xcb_client_message_event_t message(xcb_connection_t* c, WId window, std::string_view type) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = idOf(window);
    event.type = atom(c, type);
    return event;
}

void send(xcb_connection_t* c, xcb_window_t to, std::uint32_t mask,
          const xcb_client_message_event_t& event) {
    xcb_send_event(c, 0, to, mask, reinterpret_cast<const char*>(&event));
    xcb_flush(c);
}

} // namespace

QRect rectOnScreen(WId window) {
    auto* c = connection();
    const QRect rect = c != nullptr ? rectOf(c, idOf(window)) : QRect();
    return rect.isEmpty() ? QRect() : independentOfDevice(rect);
}

void requestDock(WId window) {
    auto* c = connection();
    const auto tray = c != nullptr ? selectionOwner(c, "_NET_SYSTEM_TRAY_S0")
                                   : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    if (tray == XCB_WINDOW_NONE)
        return;
    // The protocol's version, and that the window is to be shown once it is in the panel.
    setProperty<2>(c, window, "_XEMBED_INFO", atom(c, "_XEMBED_INFO"), {0, 1});
    constexpr std::uint32_t requestDockCode = 0;
    auto request = message(c, tray, "_NET_SYSTEM_TRAY_OPCODE");
    request.data.data32[0] = XCB_TIME_CURRENT_TIME;
    request.data.data32[1] = requestDockCode;
    request.data.data32[2] = idOf(window);
    send(c, tray, XCB_EVENT_MASK_NO_EVENT, request);
}

void inheritBackground(WId window) {
    if (auto* c = connection()) {
        const std::uint32_t pixmap = XCB_BACK_PIXMAP_PARENT_RELATIVE;
        xcb_change_window_attributes(c, idOf(window), XCB_CW_BACK_PIXMAP, &pixmap);
        xcb_clear_area(c, 0, idOf(window), 0, 0, 0, 0);
    }
}

// A menu of a window is of the types that no window manager decorates, animates or moves into its
// work area.
void beUnlisted(WId window, const QMargins& shadow) {
    auto* c = connection();
    if (c == nullptr)
        return;
    setProperty<1>(c, window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM,
                   {atom(c, "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU")});
    setProperty<4>(c, window, "_NET_WM_STATE", XCB_ATOM_ATOM,
                   {atom(c, "_NET_WM_STATE_SKIP_TASKBAR"), atom(c, "_NET_WM_STATE_SKIP_PAGER"),
                    atom(c, "_KDE_NET_WM_STATE_SKIP_SWITCHER"), atom(c, "_NET_WM_STATE_ABOVE")});
    const auto side = [](int length) { return static_cast<std::uint32_t>(length); };
    setProperty<4>(
        c, window, "_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL,
        {side(shadow.left()), side(shadow.right()), side(shadow.top()), side(shadow.bottom())});
}

bool canBeUnlisted() {
    auto* c = connection();
    if (c == nullptr)
        return false;
    const auto supported = values(c, rootWindow(c), "_NET_SUPPORTED", XCB_ATOM_ATOM);
    return std::ranges::find(supported, atom(c, "_NET_WM_STATE_SKIP_TASKBAR")) != supported.end();
}

// The click was on something of the desktop's, not of the program's: the time of the last event
// here is that of an earlier one, and would count as older than what the user did elsewhere.
void activate(WId window) {
    auto* c = connection();
    if (c == nullptr)
        return;
    constexpr std::uint32_t fromPanel = 2;
    auto request = message(c, window, "_NET_ACTIVE_WINDOW");
    request.data.data32[0] = fromPanel;
    request.data.data32[1] = XCB_TIME_CURRENT_TIME;
    send(c, rootWindow(c),
         XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT, request);
}

WId activeWindow() {
    auto* c = connection();
    if (c == nullptr)
        return 0;
    const auto active = values(c, rootWindow(c), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW);
    return active.empty() ? 0 : active.front();
}

// By XInput 2, as the toolkit does it, which does not read whether it was refused: the server takes
// a grab by the core protocol for somebody else's, and what happens under such a one is lost.
bool grabPointer(WId window) {
    auto* c = connection();
    if (c == nullptr)
        return false;
    const Reply<xcb_input_xi_get_client_pointer_reply_t> pointer(
        xcb_input_xi_get_client_pointer_reply(
            c, xcb_input_xi_get_client_pointer(c, XCB_WINDOW_NONE), nullptr));
    if (!pointer)
        return false;
    constexpr std::uint32_t events = XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS |
                                     XCB_INPUT_XI_EVENT_MASK_BUTTON_RELEASE |
                                     XCB_INPUT_XI_EVENT_MASK_MOTION;
    const auto cookie = xcb_input_xi_grab_device(
        c, idOf(window), XCB_TIME_CURRENT_TIME, XCB_CURSOR_NONE, pointer->deviceid,
        XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_OWNER_OWNER, 1,
        &events);
    const Reply<xcb_input_xi_grab_device_reply_t> reply(
        xcb_input_xi_grab_device_reply(c, cookie, nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

} // namespace kestrel::linux_shell::x11
