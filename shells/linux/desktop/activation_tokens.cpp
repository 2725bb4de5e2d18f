#include "shells/linux/desktop/activation_tokens.h"

#include <QCoreApplication>
#include <QInputEvent>

#include <utility>

namespace kestrel::linux_shell {

ActivationTokens::ActivationTokens(Announcement announce) : announce_(std::move(announce)) {
    qApp->installEventFilter(this);
}

void ActivationTokens::provide(const QString& token) { token_ = token.toStdString(); }

Activation ActivationTokens::take() {
    Activation activation{.token = std::exchange(token_, {}), .startupId = announce_(serverTime())};
    if (activation.token.empty() && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        activation.token = activation.startupId;
    }
    return activation;
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
        if (watched == window_) {
            token_.clear();
        }
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
