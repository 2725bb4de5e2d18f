#include "shells/linux/desktop/x11_connection.h"

#include <QGuiApplication>
#include <QScreen>

#include <map>
#include <string>

namespace kestrel::linux_shell::x11 {

xcb_connection_t* connection() {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

xcb_window_t rootWindow(xcb_connection_t* c) {
    return xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
}

xcb_atom_t atom(xcb_connection_t* c, std::string_view name) {
    static std::map<std::string, xcb_atom_t, std::less<>> known;
    if (const auto found = known.find(name); found != known.end())
        return found->second;
    const auto cookie = xcb_intern_atom(c, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(c, cookie, nullptr));
    if (!reply)
        return XCB_ATOM_NONE;
    return known.emplace(name, reply->atom).first->second;
}

xcb_window_t selectionOwner(xcb_connection_t* c, std::string_view selection) {
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, atom(c, selection)), nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

xcb_get_property_cookie_t askValues(xcb_connection_t* c, xcb_window_t window,
                                    std::string_view property, xcb_atom_t type) {
    constexpr std::uint32_t most = 4096;
    return xcb_get_property(c, 0, window, atom(c, property), type, 0, most);
}

std::vector<std::uint32_t> values(xcb_connection_t* c, xcb_get_property_cookie_t question) {
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(c, question, nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

std::vector<std::uint32_t> values(xcb_connection_t* c, xcb_window_t window,
                                  std::string_view property, xcb_atom_t type) {
    return values(c, askValues(c, window, property, type));
}

RectQuestion askRect(xcb_connection_t* c, xcb_window_t window) {
    return {xcb_get_window_attributes(c, window), xcb_get_geometry(c, window),
            xcb_translate_coordinates(c, window, rootWindow(c), 0, 0)};
}

QRect rectOf(xcb_connection_t* c, const RectQuestion& question) {
    const Reply<xcb_get_window_attributes_reply_t> state(
        xcb_get_window_attributes_reply(c, question.state, nullptr));
    const Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(c, question.size, nullptr));
    const Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(c, question.place, nullptr));
    if (!state || !size || !place || state->map_state != XCB_MAP_STATE_VIEWABLE)
        return {};
    return {place->dst_x, place->dst_y, size->width, size->height};
}

QRect rectOf(xcb_connection_t* c, xcb_window_t window) { return rectOf(c, askRect(c, window)); }

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

} // namespace kestrel::linux_shell::x11
