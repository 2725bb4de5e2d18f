#include "shells/linux/desktop/x11.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>
#include <xcb/xcb.h>

namespace kestrel::linux_shell::x11 {
namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Reply = std::unique_ptr<T, Free>;

xcb_connection_t* connection() {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

xcb_atom_t atom(xcb_connection_t* c, std::string_view name) {
    const auto cookie = xcb_intern_atom(c, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(c, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

xcb_window_t selectionOwner(xcb_connection_t* c, std::string_view selection) {
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, atom(c, selection)), nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

xcb_window_t trayWindow(xcb_connection_t* c) { return selectionOwner(c, "_NET_SYSTEM_TRAY_S0"); }

xcb_window_t rootWindow(xcb_connection_t* c) {
    return xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
}

/// The values of a window's property of 32-bit numbers; none when it has no such property.
std::vector<std::uint32_t> values(xcb_connection_t* c, xcb_window_t window,
                                  std::string_view property, xcb_atom_t type) {
    constexpr std::uint32_t most = 4096;
    const auto cookie = xcb_get_property(c, 0, window, atom(c, property), type, 0, most);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(c, cookie, nullptr));
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

/// Where a window is on the root window; empty when it is not shown.
QRect rectOf(xcb_connection_t* c, xcb_window_t window) {
    const auto root = rootWindow(c);
    const auto stateCookie = xcb_get_window_attributes(c, window);
    const auto sizeCookie = xcb_get_geometry(c, window);
    const auto placeCookie = xcb_translate_coordinates(c, window, root, 0, 0);
    const Reply<xcb_get_window_attributes_reply_t> state(
        xcb_get_window_attributes_reply(c, stateCookie, nullptr));
    const Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(c, sizeCookie, nullptr));
    const Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(c, placeCookie, nullptr));
    if (!state || !size || !place || state->map_state != XCB_MAP_STATE_VIEWABLE) {
        return {};
    }
    return {place->dst_x, place->dst_y, size->width, size->height};
}

/// A rectangle of the server's pixels in the toolkit's, which scales each screen about its corner.
QRect independentOfDevice(const QRect& rect) {
    const auto screens = QGuiApplication::screens();
    for (const auto* screen : screens) {
        const QPoint corner = screen->geometry().topLeft();
        const qreal scale = screen->devicePixelRatio();
        if (QRectF(corner, QSizeF(screen->size()) * scale).contains(rect.center())) {
            return QRectF(corner + QPointF(rect.topLeft() - corner) / scale,
                          QSizeF(rect.size()) / scale)
                .toRect();
        }
    }
    return rect;
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
    if (c == nullptr) {
        return std::nullopt;
    }
    // Four colours of three 16-bit channels: foreground, error, warning, success.
    const auto channels = values(c, trayWindow(c), "_NET_SYSTEM_TRAY_COLORS", XCB_ATOM_CARDINAL);
    if (channels.size() < 12) {
        return std::nullopt;
    }
    const auto channel = [&](std::size_t i) {
        return static_cast<int>((channels[i] >> 8U) & 0xFFU);
    };
    return QColor(channel(0), channel(1), channel(2));
}

QList<QRect> panels() {
    auto* c = connection();
    if (c == nullptr || isXWayland()) {
        return {};
    }
    QList<QRect> found;
    const auto dock = atom(c, "_NET_WM_WINDOW_TYPE_DOCK");
    for (const auto window : values(c, rootWindow(c), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW)) {
        const auto types = values(c, window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM);
        const QRect rect = rectOf(c, window);
        if (std::ranges::find(types, dock) != types.end() && !rect.isEmpty()) {
            found.append(independentOfDevice(rect));
        }
    }
    return found;
}

bool isCompositing() {
    auto* c = connection();
    return c != nullptr && (isXWayland() || selectionOwner(c, "_NET_WM_CM_S0") != XCB_WINDOW_NONE);
}

bool isMouseButtonDown() {
    auto* c = connection();
    if (c == nullptr) {
        return false;
    }
    const Reply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(c, xcb_query_pointer(c, rootWindow(c)), nullptr));
    constexpr unsigned buttons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    return reply && (reply->mask & buttons) != 0;
}

TrayArrivals::TrayArrivals(std::function<void()> arrived) : arrived_(std::move(arrived)) {
    if (auto* c = connection()) {
        managerAtom_ = atom(c, "MANAGER");
        trayAtom_ = atom(c, "_NET_SYSTEM_TRAY_S0");
    }
    qGuiApp->installNativeEventFilter(this);
}

TrayArrivals::~TrayArrivals() { qGuiApp->removeNativeEventFilter(this); }

// A new owner of the tray selection announces itself to the root window, whose messages Qt's X11
// plugin receives in any case.
bool TrayArrivals::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7FU) != XCB_CLIENT_MESSAGE) {
        return false;
    }
    const auto* manager = reinterpret_cast<const xcb_client_message_event_t*>(event);
    if (manager->type == managerAtom_ && manager->data.data32[1] == trayAtom_) {
        arrived_();
    }
    return false;
}

} // namespace kestrel::linux_shell::x11
