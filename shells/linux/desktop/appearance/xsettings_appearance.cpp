#include "shells/linux/desktop/appearance/xsettings_appearance.h"

#include "shells/linux/desktop/appearance/xsettings.h"

#include <QGuiApplication>

#include <array>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <xcb/xcb.h>

namespace kestrel::linux_shell {
namespace {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename T>
using XReply = std::unique_ptr<T, FreeReply>;

xcb_connection_t* xConnection() {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

xcb_intern_atom_cookie_t askForAtom(xcb_connection_t* c, std::string_view name) {
    return xcb_intern_atom(c, 0, static_cast<std::uint16_t>(name.size()), name.data());
}

xcb_atom_t answeredAtom(xcb_connection_t* c, xcb_intern_atom_cookie_t cookie) {
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(c, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

} // namespace

XSettingsAppearance::XSettingsAppearance() {
    auto* c = xConnection();
    if (c == nullptr)
        return;
    const std::array cookies{askForAtom(c, "_XSETTINGS_S0"), askForAtom(c, "_XSETTINGS_SETTINGS"),
                             askForAtom(c, "MANAGER")};
    selection_ = answeredAtom(c, cookies[0]);
    property_ = answeredAtom(c, cookies[1]);
    manager_ = answeredAtom(c, cookies[2]);
    qGuiApp->installNativeEventFilter(this);
    findDaemon();
}

XSettingsAppearance::~XSettingsAppearance() { qGuiApp->removeNativeEventFilter(this); }

void XSettingsAppearance::findDaemon() {
    auto* c = xConnection();
    const XReply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, selection_), nullptr));
    daemon_ = owner ? owner->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    if (daemon_ == XCB_WINDOW_NONE)
        return;
    // The toolkit reads the same window through the same connection, and there is one mask for
    // both: this is the toolkit's.
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(c, daemon_, XCB_CW_EVENT_MASK, &mask);
    read();
}

void XSettingsAppearance::read() {
    constexpr std::uint32_t most = 1 << 16; // in units of four bytes
    auto* c = xConnection();
    const auto cookie = xcb_get_property(c, 0, daemon_, property_, property_, 0, most);
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(c, cookie, nullptr));
    if (!reply || reply->format != 8)
        return;
    const auto* bytes = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
    const auto theme = stringSetting({bytes, length}, "Net/ThemeName");
    setSettings(theme ? settingsOfTheme(QString::fromStdString(*theme)) : AppearanceSettings());
}

// A daemon that starts announces itself to the root window, whose messages the toolkit's X11
// plugin receives in any case.
bool XSettingsAppearance::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    const unsigned type = event->response_type & 0x7FU;
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event);
        if (daemon_ != XCB_WINDOW_NONE && change->window == daemon_ && change->atom == property_)
            read();
    } else if (type == XCB_CLIENT_MESSAGE) {
        const auto* news = reinterpret_cast<const xcb_client_message_event_t*>(event);
        if (news->type == manager_ && news->data.data32[1] == selection_)
            findDaemon();
    }
    return false;
}

} // namespace kestrel::linux_shell
