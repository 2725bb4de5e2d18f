#include "shells/linux/desktop/pointer_catcher.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QWindow>

#include <chrono>
#include <utility>

namespace kestrel::linux_shell {
namespace {

constexpr std::chrono::milliseconds lookInterval{5};
constexpr int longestSearch = 800; // milliseconds

// A compositor that was busy with a held button when the window came looks again when it comes
// anew.
constexpr int patience = 200; // milliseconds

// An icon clicked again is clicked about where it was before; the pointer need not move then.
constexpr int samePlace = 24;

} // namespace

PointerCatcher::PointerCatcher(std::function<void()> clicked) : clicked_(std::move(clicked)) {
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint |
                   Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setMouseTracking(true);
    looking_.setInterval(lookInterval);
    connect(&looking_, &QTimer::timeout, this, &PointerCatcher::look);
}

void PointerCatcher::cover() {
    QRect everything;
    const auto screens = QGuiApplication::screens();
    for (const auto* screen : screens) {
        everything |= screen->geometry();
    }
    setGeometry(everything);
    show();
}

// The server first repeats its stale idea of the pointer, in an enter event too; the true one
// comes when the compositor moves its pointer onto the new window.
void PointerCatcher::find(std::function<void(QPoint)> found) {
    found_ = std::move(found);
    stalePosition_ = QCursor::pos();
    sinceStart_.start();
    sinceShown_.start();
    looking_.start();
    cover();
}

void PointerCatcher::look() {
    const QPoint position = QCursor::pos();
    const bool isWhereItWas =
        lastFound_ && (stalePosition_ - *lastFound_).manhattanLength() < samePlace;
    if (position == stalePosition_ && !isWhereItWas && !sinceStart_.hasExpired(longestSearch)) {
        comeAnew();
        return;
    }
    looking_.stop();
    lastFound_ = position;
    std::exchange(found_, nullptr)(position);
}

void PointerCatcher::comeAnew() {
    if (sinceShown_.hasExpired(patience)) {
        sinceShown_.start();
        windowHandle()->hide();
        windowHandle()->show();
    }
}

void PointerCatcher::mouseReleaseEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton) {
        clicked_();
    }
}

void PointerCatcher::hideEvent(QHideEvent* event) {
    looking_.stop();
    found_ = nullptr;
    QWidget::hideEvent(event);
}

} // namespace kestrel::linux_shell
