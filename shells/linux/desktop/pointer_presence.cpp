#include "shells/linux/desktop/pointer_presence.h"

#include <QEvent>

#include <chrono>

namespace kestrel::linux_shell {
namespace {

constexpr std::chrono::milliseconds longestCrossing{100};

} // namespace

PointerPresence::PointerPresence(const std::function<void()>& left) {
    away_.setSingleShot(true);
    away_.setInterval(longestCrossing);
    connect(&away_, &QTimer::timeout, this, left);
}

bool PointerPresence::eventFilter(QObject* watched, QEvent* event) {
    const auto* window = static_cast<const QWidget*>(watched);
    if (event->type() == QEvent::Enter)
        away_.stop();
    else if (event->type() == QEvent::Leave && window->isVisible())
        away_.start();
    return false;
}

} // namespace kestrel::linux_shell
