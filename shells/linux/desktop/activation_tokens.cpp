#include "shells/linux/desktop/activation_tokens.h"

#include "shells/linux/desktop/kwin_tokens.h"
#include "shells/linux/desktop/startup_notification.h"

#include <QCoreApplication>
#include <QInputEvent>

#include <memory>
#include <utility>

namespace kestrel::linux_shell {
namespace {

// Characters. Compositors' own have some dozens; one that fills the environment of what is launched
// would keep it from starting.
constexpr qsizetype longestToken = 1024;

bool isWaylandSession() { return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"); }

} // namespace

ActivationTokens::ActivationTokens()
    : ActivationTokens(announceLaunch,
                       [kwin = std::make_shared<KWinTokens>()] { return kwin->take(); }) {}

ActivationTokens::ActivationTokens(Announcement announce, CompositorToken askCompositor)
    : announce_(std::move(announce)), askCompositor_(std::move(askCompositor)) {
    qApp->installEventFilter(this);
}

void ActivationTokens::provide(const QString& token) {
    token_ = token.size() <= longestToken ? token.toStdString() : std::string();
}

Activation ActivationTokens::take() {
    // KWin forgets the panel's as soon as the popover has the keyboard.
    const std::string panels = std::exchange(token_, {});
    const std::string own = askCompositor_();
    // GTK up to 4.8, and applications behind GLib up to 2.74, look at the start-up id alone, on
    // Wayland too, so both are the same there.
    if (const std::string& token = own.empty() ? panels : own; !token.empty())
        return {.token = token, .startupId = token};
    const std::string id = announce_(serverTime());
    return {.token = isWaylandSession() ? id : std::string(), .startupId = id};
}

bool ActivationTokens::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        // On X11 this is the server's time; events that we make ourselves have none.
        if (const auto time = static_cast<const QInputEvent*>(event)->timestamp(); time != 0) {
            lastInput_ = static_cast<std::uint32_t>(time);
            sinceInput_.start();
        }
        break;
    case QEvent::Hide:
        if (watched == window_)
            token_.clear();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

// A row may also be pressed by assistive technology, which sends no event: then the user has acted
// elsewhere since the last one, and its time would be too old.
std::uint32_t ActivationTokens::serverTime() const {
    return lastInput_ == 0 ? 0 : lastInput_ + static_cast<std::uint32_t>(sinceInput_.elapsed());
}

} // namespace kestrel::linux_shell
