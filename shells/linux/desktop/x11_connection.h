#pragma once
// The toolkit's own connection to the X server, for the files that ask the server themselves.
// Everything here is for programs that run on X11; the connection is null elsewhere.

#include <QRect>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>
#include <xcb/xcb.h>

namespace kestrel::linux_shell::x11 {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
/// What the server has answered; null when it was an error.
template <typename T>
using Reply = std::unique_ptr<T, FreeReply>;

/// Null when the program does not run on X11.
xcb_connection_t* connection();

/// The root window of the first screen, where panels and window managers leave their properties.
xcb_window_t rootWindow(xcb_connection_t* c);

/// Asked of the server once for each name.
xcb_atom_t atom(xcb_connection_t* c, std::string_view name);

/// The window that owns a selection; XCB_WINDOW_NONE when nobody does.
xcb_window_t selectionOwner(xcb_connection_t* c, std::string_view selection);

/// The values of a window's property of 32-bit numbers; none when it has no such property.
std::vector<std::uint32_t> values(xcb_connection_t* c, xcb_window_t window,
                                  std::string_view property, xcb_atom_t type);

/// The same in two steps: what is asked before any answer is read takes the server's time but once.
xcb_get_property_cookie_t askValues(xcb_connection_t* c, xcb_window_t window,
                                    std::string_view property, xcb_atom_t type);
std::vector<std::uint32_t> values(xcb_connection_t* c, xcb_get_property_cookie_t question);

/// Where a window is on the root window, in the server's pixels; empty when it is not shown.
QRect rectOf(xcb_connection_t* c, xcb_window_t window);

/// The same in two steps.
struct RectQuestion {
    xcb_get_window_attributes_cookie_t state;
    xcb_get_geometry_cookie_t size;
    xcb_translate_coordinates_cookie_t place;
};
RectQuestion askRect(xcb_connection_t* c, xcb_window_t window);
QRect rectOf(xcb_connection_t* c, const RectQuestion& question);

/// A rectangle of the server's pixels in the toolkit's, which scales each screen about its corner.
QRect independentOfDevice(const QRect& rect);

} // namespace kestrel::linux_shell::x11
