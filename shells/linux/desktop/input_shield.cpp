#include "shells/linux/desktop/input_shield.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>

#include <chrono>
#include <utility>

namespace kestrel::linux_shell {
namespace {

constexpr std::chrono::milliseconds lookInterval{5};
constexpr int longestSearch = 1000; // milliseconds

} // namespace

InputShield::InputShield(std::function<void()> clicked) : clicked_(std::move(clicked)) {
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint |
                   Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setMouseTracking(true);
    looking_.setInterval(lookInterval);
    connect(&looking_, &QTimer::timeout, this, &InputShield::look);
}

void InputShield::prepare() {
    ensurePolished();
    winId();
}

void InputShield::cover(const QRect& hole) {
    QRect everything;
    const auto screens = QGuiApplication::screens();
    for (const auto* screen : screens)
        everything |= screen->geometry();
    setGeometry(everything);
    hole_ = hole;
    if (hole.isEmpty()) {
        clearMask();
    } else {
        const QPoint origin = everything.topLeft();
        setMask(QRegion(everything.translated(-origin)) - hole.translated(-origin));
    }
    show();
}

// The server is told that the pointer is in a corner, which moves nothing on the screen. It first
// repeats that, in an enter event too; the truth comes when the compositor moves its pointer onto
// the new window: at once, or when the button is released or the pointer moves.
void InputShield::find(std::function<void(std::optional<QPoint>)> found) {
    found_ = std::move(found);
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomLeft());
    falsePosition_ = QCursor::pos();
    sinceStart_.start();
    looking_.start();
    cover(QRect());
}

void InputShield::look() {
    const QPoint position = QCursor::pos();
    const bool isFound = position != falsePosition_;
    if (isFound || sinceStart_.hasExpired(longestSearch)) {
        looking_.stop();
        std::exchange(found_, nullptr)(isFound ? std::optional(position) : std::nullopt);
    }
}

// A compositor may take a moment to know of the hole: what was clicked there was not elsewhere.
void InputShield::mouseReleaseEvent(QMouseEvent* event) {
    const bool isInHole = hole_.contains(event->globalPosition().toPoint());
    if (event->buttons() == Qt::NoButton && !isInHole)
        clicked_();
}

void InputShield::hideEvent(QHideEvent* event) {
    looking_.stop();
    found_ = nullptr;
    QWidget::hideEvent(event);
}

} // namespace kestrel::linux_shell
