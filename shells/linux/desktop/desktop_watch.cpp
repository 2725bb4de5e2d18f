#include "shells/linux/desktop/desktop_watch.h"

#include "shells/linux/desktop/x11_connection.h"

#include <QCoreApplication>
#include <QPointer>

#include <algorithm>
#include <cstddef>
#include <xcb/xfixes.h>

namespace kestrel::linux_shell::x11 {
namespace {

struct WindowQuestion {
    xcb_window_t window;
    xcb_get_property_cookie_t types;
    RectQuestion rect;
};

} // namespace

DesktopWatch* DesktopWatch::current() {
    static QPointer<DesktopWatch> one;
    auto* c = connection();
    if (one == nullptr && c != nullptr)
        one = new DesktopWatch(c, QCoreApplication::instance());
    return one;
}

DesktopWatch::DesktopWatch(xcb_connection_t* c, QObject* application)
    : QObject(application),
      c_(c),
      clientList_(atom(c, "_NET_CLIENT_LIST")),
      compositor_(atom(c, "_NET_WM_CM_S0")) {
    QCoreApplication::instance()->installNativeEventFilter(this);
    listenToSelection();
}

void DesktopWatch::listenToSelection() {
    const auto* extension = xcb_get_extension_data(c_, &xcb_xfixes_id);
    if (extension == nullptr || extension->present == 0)
        return;
    // The extension may be used once its version was spoken of; the toolkit names the same.
    xcb_discard_reply(
        c_,
        xcb_xfixes_query_version(c_, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION).sequence);
    xcb_xfixes_select_selection_input(c_, rootWindow(c_), compositor_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    selectionEvent_ = extension->first_event + unsigned{XCB_XFIXES_SELECTION_NOTIFY};
}

bool DesktopWatch::hasCompositor() {
    if (!hasCompositor_ || selectionEvent_ == 0)
        hasCompositor_ = selectionOwner(c_, "_NET_WM_CM_S0") != XCB_WINDOW_NONE;
    return *hasCompositor_;
}

const std::vector<QRect>& DesktopWatch::panels() {
    if (!panels_)
        panels_ = askForPanels();
    return *panels_;
}

// All windows are asked about at once. A panel that has not been listened to may have moved before
// it was, so then all are asked again.
std::vector<QRect> DesktopWatch::askForPanels() {
    const auto dock = atom(c_, "_NET_WM_WINDOW_TYPE_DOCK");
    std::vector<WindowQuestion> questions;
    for (const auto window : values(c_, rootWindow(c_), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW)) {
        questions.push_back({window, askValues(c_, window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM),
                             askRect(c_, window)});
    }
    std::vector<QRect> found;
    std::vector<xcb_window_t> docks;
    for (const auto& question : questions) {
        const auto types = values(c_, question.types);
        const QRect rect = rectOf(c_, question.rect);
        if (std::ranges::find(types, dock) == types.end())
            continue;
        docks.push_back(question.window);
        if (!rect.isEmpty())
            found.push_back(rect);
    }
    return listenTo(docks) ? askForPanels() : found;
}

/// False when these are the windows that are listened to already.
bool DesktopWatch::listenTo(const std::vector<xcb_window_t>& windows) {
    const std::set<xcb_window_t> wanted(windows.begin(), windows.end());
    const bool hasNew = !std::ranges::includes(watched_, wanted);
    for (const auto window : wanted) {
        if (!watched_.contains(window)) {
            const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
            const auto cookie =
                xcb_change_window_attributes_checked(c_, window, XCB_CW_EVENT_MASK, &events);
            xcb_discard_reply(c_, cookie.sequence); // it may be gone by now
        }
    }
    watched_ = wanted;
    return hasNew;
}

bool DesktopWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType == "xcb_generic_event_t")
        noteEvent(*static_cast<const xcb_generic_event_t*>(message));
    return false;
}

void DesktopWatch::noteEvent(const xcb_generic_event_t& event) {
    const auto type = event.response_type & 0x7FU;
    if (selectionEvent_ != 0 && type == selectionEvent_) {
        const auto& told = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
        if (told.selection == compositor_)
            hasCompositor_ = told.owner != XCB_WINDOW_NONE;
        return;
    }
    switch (type) {
    case XCB_PROPERTY_NOTIFY:
        if (reinterpret_cast<const xcb_property_notify_event_t&>(event).atom == clientList_)
            panels_.reset();
        break;
    case XCB_CONFIGURE_NOTIFY:
    case XCB_MAP_NOTIFY:
    case XCB_UNMAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
    case XCB_DESTROY_NOTIFY:
        // They all begin alike, with the window that was listened to.
        static_assert(offsetof(xcb_map_notify_event_t, event) ==
                      offsetof(xcb_configure_notify_event_t, event));
        if (watched_.contains(reinterpret_cast<const xcb_map_notify_event_t&>(event).event))
            panels_.reset();
        break;
    default:
        break;
    }
}

} // namespace kestrel::linux_shell::x11
