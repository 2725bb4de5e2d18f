#include "shells/linux/desktop/kwin_tokens.h"

#include "shells/linux/desktop/current_desktop.h"
#include "xdg-activation-v1-client-protocol.h"

#include <poll.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>
#include <memory>
#include <string_view>
#include <utility>
#include <wayland-client.h>

namespace kestrel::linux_shell {
namespace wayland {

struct Release {
    void operator()(wl_display* display) const { wl_display_disconnect(display); }
    void operator()(wl_registry* registry) const { wl_registry_destroy(registry); }
    void operator()(wl_seat* seat) const { wl_seat_destroy(seat); }
    void operator()(wl_callback* callback) const { wl_callback_destroy(callback); }
    void operator()(xdg_activation_v1* activation) const { xdg_activation_v1_destroy(activation); }
    void operator()(xdg_activation_token_v1* token) const {
        xdg_activation_token_v1_destroy(token);
    }
};
template <typename T>
using Ptr = std::unique_ptr<T, Release>;

/// What the compositor offers of what is needed here.
struct Globals {
    Ptr<wl_seat> seat;
    Ptr<xdg_activation_v1> activation;
};

} // namespace wayland

namespace {

using namespace wayland;

using Clock = std::chrono::steady_clock;

/// For all answers of one taking: a click waits for them.
constexpr std::chrono::milliseconds longestWait{200};

void globalAdded(void* data, wl_registry* registry, std::uint32_t name, const char* interface,
                 std::uint32_t) {
    auto& globals = *static_cast<Globals*>(data);
    const std::string_view kind(interface);
    if (kind == wl_seat_interface.name && !globals.seat) {
        globals.seat.reset(
            static_cast<wl_seat*>(wl_registry_bind(registry, name, &wl_seat_interface, 1)));
    } else if (kind == xdg_activation_v1_interface.name && !globals.activation) {
        globals.activation.reset(static_cast<xdg_activation_v1*>(
            wl_registry_bind(registry, name, &xdg_activation_v1_interface, 1)));
    }
}

void globalRemoved(void*, wl_registry*, std::uint32_t) {}

void tokenDone(void* data, xdg_activation_token_v1*, const char* token) {
    *static_cast<std::string*>(data) = token;
}

void answered(void* data, wl_callback*, std::uint32_t) { *static_cast<bool*>(data) = true; }

/// Handles what arrives next. False when nothing does in time, or the connection is lost.
bool dispatchNext(wl_display* display, Clock::time_point deadline) {
    if (wl_display_prepare_read(display) != 0)
        return wl_display_dispatch_pending(display) >= 0;
    wl_display_flush(display);
    pollfd ready{wl_display_get_fd(display), POLLIN, 0};
    const auto rest = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    if (::poll(&ready, 1, std::max(static_cast<int>(rest.count()), 0)) <= 0) {
        wl_display_cancel_read(display);
        return false;
    }
    return wl_display_read_events(display) == 0 && wl_display_dispatch_pending(display) >= 0;
}

/// As the library's own round trip, which has no limit.
bool roundTrip(wl_display* display, Clock::time_point deadline) {
    constexpr wl_callback_listener listener{.done = answered};
    bool isDone = false;
    const Ptr<wl_callback> callback(wl_display_sync(display));
    wl_callback_add_listener(callback.get(), &listener, &isDone);
    while (!isDone)
        if (!dispatchNext(display, deadline))
            return false;
    return true;
}

} // namespace

struct KWinTokens::Connection {
    wayland::Ptr<wl_display> display;
    wayland::Globals globals;
    wayland::Ptr<wl_registry> registry;
};

KWinTokens::KWinTokens() {
    static constexpr wl_registry_listener listener{.global = globalAdded,
                                                   .global_remove = globalRemoved};
    Ptr<wl_display> display(currentDesktopIs(u"KDE") ? wl_display_connect(nullptr) : nullptr);
    if (!display)
        return;
    connection_ = std::make_unique<Connection>();
    connection_->display = std::move(display);
    connection_->registry.reset(wl_display_get_registry(connection_->display.get()));
    wl_registry_add_listener(connection_->registry.get(), &listener, &connection_->globals);
    wl_display_flush(connection_->display.get());
}

KWinTokens::~KWinTokens() = default;

std::string KWinTokens::take() {
    constexpr xdg_activation_token_v1_listener listener{.done = tokenDone};
    if (!connection_)
        return {};
    const auto deadline = Clock::now() + longestWait;
    auto* display = connection_->display.get();
    const Globals& globals = connection_->globals;
    if (!roundTrip(display, deadline) || !globals.activation || !globals.seat) {
        if (wl_display_get_error(display) != 0)
            connection_.reset();
        return {};
    }
    std::string result;
    const Ptr<xdg_activation_token_v1> token(
        xdg_activation_v1_get_activation_token(globals.activation.get()));
    xdg_activation_token_v1_add_listener(token.get(), &listener, &result);
    // The token lapses when a window is activated that was used after this serial, as the one
    // beneath the popover may be. A connection without windows has seen no serial; this one is
    // later than all.
    xdg_activation_token_v1_set_serial(token.get(), std::numeric_limits<std::uint32_t>::max(),
                                       globals.seat.get());
    // Without an application's name there is no bouncing icon.
    xdg_activation_token_v1_commit(token.get());
    const bool isGranted = roundTrip(display, deadline) && !result.starts_with("not-granted");
    return isGranted ? result : std::string();
}

} // namespace kestrel::linux_shell
