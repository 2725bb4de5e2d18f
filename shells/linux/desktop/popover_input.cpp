#include "shells/linux/desktop/popover_input.h"

#include "shells/linux/desktop/active_window_watch.h"
#include "shells/linux/desktop/input_shield.h"
#include "shells/linux/desktop/pointer_presence.h"
#include "shells/linux/desktop/x11.h"
#include "shells/linux/desktop/x11_windows.h"

#include <QTimer>
#include <QWindow>

#include <chrono>
#include <utility>

namespace kestrel::linux_shell {
namespace {

constexpr auto popup = Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint;

/// On X11: a popup, which no window manager touches, with a grab of pointer and keyboard. A panel
/// that reports the press of a button holds the pointer until its release, and a shell holds both
/// while it shows something of its own: the toolkit does not notice that its grab was refused, and
/// without one neither a key nor a click elsewhere is ever seen. So it is tried until it is
/// granted.
class GrabbedInput : public PopoverInput {
  public:
    explicit GrabbedInput(QWidget& popover) : popover_(popover) {
        constexpr std::chrono::milliseconds interval{20};
        retry_.setInterval(interval);
        QObject::connect(&retry_, &QTimer::timeout, &popover, [this] { grab(); });
    }

    Qt::WindowFlags windowFlags() const override { return popup; }
    void take() override { retry_.start(); }
    void end() override { retry_.stop(); }

  private:
    void grab() {
        auto* window = popover_.windowHandle();
        if (window == nullptr || x11::isMouseButtonDown() || !x11::grabPointer(popover_.winId()))
            return;
        // A shell may give back the pointer before the keyboard.
        window->setMouseGrabEnabled(true);
        if (window->setKeyboardGrabEnabled(true))
            retry_.stop();
    }

    QWidget& popover_;
    QTimer retry_;
};

/// In a Wayland session whose compositor treats X11 windows as a popup's: it has the keyboard by
/// being shown, over a window that catches the clicks elsewhere.
class ShieldedInput final : public GrabbedInput {
  public:
    ShieldedInput(QWidget& popover, std::function<void()> close)
        : GrabbedInput(popover), shield_(std::move(close)) {}

    void prepare() override { shield_.prepare(); }
    void findPointer(std::function<void(std::optional<QPoint>)> found) override {
        shield_.find(std::move(found));
    }
    bool isSearching() const override { return shield_.isVisible(); }
    void begin(const QRect&, const QMargins&) override { shield_.cover(QRect()); }
    void end() override {
        GrabbedInput::end();
        shield_.hide();
    }

  private:
    InputShield shield_;
};

/// In a Wayland session whose compositor manages X11 windows like its own: it gives the keyboard to
/// none but a window that it manages and that asked for it, and it tells such a window when
/// another window gets it. What takes no focus, a panel or the bare desktop, is seen by a window
/// over everything, with a hole where the popover is; what is over everything, by the pointer's
/// leaving both.
class ActivatedInput final : public PopoverInput {
  public:
    ActivatedInput(QWidget& popover, std::function<void()> close)
        : popover_(popover),
          close_(std::move(close)),
          shield_(close_),
          presence_(close_),
          watch_([this] { look(); }) {
        presence_.watch(popover_);
        presence_.watch(shield_);
        // A shell that shows something of its own takes no notice of a window that asks.
        constexpr std::chrono::milliseconds interval{200};
        ask_.setInterval(interval);
        QObject::connect(&ask_, &QTimer::timeout, &popover, [this] { look(); });
    }

    Qt::WindowFlags windowFlags() const override {
        return Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
               Qt::NoDropShadowWindowHint;
    }
    void prepare() override {
        shield_.prepare();
        x11::beUnlisted(popover_.winId(), {}); // the server has given numbers to all names then
    }
    void findPointer(std::function<void(std::optional<QPoint>)> found) override {
        shield_.find(std::move(found));
    }
    bool isSearching() const override { return shield_.isVisible(); }

    void begin(const QRect& content, const QMargins& shadow) override {
        x11::beUnlisted(popover_.winId(), shadow * popover_.devicePixelRatio());
        shield_.cover(content);
    }
    void follow(const QRect& content) override { shield_.cover(content); }
    void take() override {
        wasActive_ = false;
        watch_.start();
        ask_.start();
        x11::activate(popover_.winId());
    }
    void end() override {
        ask_.stop();
        watch_.stop();
        presence_.stop();
        shield_.hide();
    }

  private:
    // Qt's isActiveWindow() is not asked: it follows focus events, which XWayland sends on its own
    // account. Once the window was active it is not activated again: a click elsewhere must not be
    // undone.
    void look() {
        const bool isActive = x11::activeWindow() == popover_.winId();
        if (isActive) {
            wasActive_ = true;
            ask_.stop();
        } else if (wasActive_) {
            close_();
        } else {
            x11::activate(popover_.winId());
        }
    }

    QWidget& popover_;
    std::function<void()> close_;
    InputShield shield_;
    PointerPresence presence_;
    x11::ActiveWindowWatch watch_;
    QTimer ask_;
    bool wasActive_ = false;
};

/// As a Wayland program: what the compositor makes of a popup.
class NativeInput final : public PopoverInput {
  public:
    explicit NativeInput(QWidget& popover) : popover_(popover) {}

    Qt::WindowFlags windowFlags() const override { return popup; }
    void take() override { popover_.activateWindow(); }

  private:
    QWidget& popover_;
};

} // namespace

std::unique_ptr<PopoverInput> PopoverInput::forSession(QWidget& popover,
                                                       std::function<void()> close) {
    if (!x11::isAvailable())
        return std::make_unique<NativeInput>(popover);
    if (!x11::isXWayland())
        return std::make_unique<GrabbedInput>(popover);
    if (x11::canBeUnlisted())
        return std::make_unique<ActivatedInput>(popover, std::move(close));
    return std::make_unique<ShieldedInput>(popover, std::move(close));
}

} // namespace kestrel::linux_shell
