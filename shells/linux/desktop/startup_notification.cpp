#include "shells/linux/desktop/startup_notification.h"

#include "shells/linux/desktop/x11_connection.h"

#include <QGuiApplication>
#include <QTimer>

#include <chrono>
#include <memory>

#define SN_API_NOT_YET_FROZEN // the library's own condition for its use
#include <libsn/sn.h>

namespace kestrel::linux_shell {
namespace {

// GNOME shows a busy pointer for as long, also for a launch that is called silent, unless the
// program answers. One that runs, which alone needs the id to come to the front, does within this.
constexpr std::chrono::seconds answerTime{5};

// The library knows screens by their number; Qt's X11 plugin has all its own on the first.
constexpr int firstScreen = 0;

// Characters. Every twenty of an id are a message to the server, and no launcher's has more.
constexpr std::size_t longestId = 1024;

struct StartupRelease {
    void operator()(SnDisplay* display) const { sn_display_unref(display); }
    void operator()(SnLauncherContext* context) const { sn_launcher_context_unref(context); }
    void operator()(SnLauncheeContext* context) const { sn_launchee_context_unref(context); }
};
template <typename T>
using StartupPtr = std::unique_ptr<T, StartupRelease>;

// Qt reports errors of the X server and goes on: there is nothing to keep from the library.
void noErrorTrap(SnDisplay*, xcb_connection_t*) {}

StartupPtr<SnDisplay> startupDisplay(xcb_connection_t* connection) {
    return StartupPtr<SnDisplay>(sn_xcb_display_new(connection, noErrorTrap, noErrorTrap));
}

/// Returns once the server has passed on all that it was told: what we start next may speak to the
/// window manager by another way.
void waitForServer(xcb_connection_t* connection) {
    const auto cookie = xcb_get_input_focus(connection);
    const x11::Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, cookie, nullptr));
}

} // namespace

std::string announceLaunch(std::uint32_t time) {
    auto* connection = x11::connection();
    if (connection == nullptr || time == 0)
        return {};
    const auto display = startupDisplay(connection);
    const StartupPtr<SnLauncherContext> context(
        sn_launcher_context_new(display.get(), firstScreen));
    sn_launcher_context_set_name(context.get(), "Kestrel");
    // Which program answers, and whether any does, is not known here: no bouncing icon.
    sn_launcher_context_set_extra_property(context.get(), "SILENT", "1");
    sn_launcher_context_initiate(context.get(), "kestrel", "launch", time);
    waitForServer(connection);
    std::string id = sn_launcher_context_get_startup_id(context.get());
    QTimer::singleShot(answerTime, qGuiApp, [id] { completeStartup(id); });
    return id;
}

void completeStartup(const std::string& id) {
    auto* connection = x11::connection();
    if (connection == nullptr || id.empty() || id.size() > longestId)
        return;
    const auto display = startupDisplay(connection);
    const StartupPtr<SnLauncheeContext> context(
        sn_launchee_context_new(display.get(), firstScreen, id.c_str()));
    sn_launchee_context_complete(context.get());
    xcb_flush(connection);
}

} // namespace kestrel::linux_shell
