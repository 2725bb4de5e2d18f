#pragma once
// How the popover gets the keyboard and hears of clicks elsewhere. Each kind of session has one way
// in which both work; PopoverWindow asks for that of its session and tells it of its life.

#include <QMargins>
#include <QPoint>
#include <QRect>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

namespace kestrel::linux_shell {

/// Main thread only. Both the popover and what `close` closes outlive it.
class PopoverInput {
  public:
    /// The way of this session. `close` closes the popover; nothing when it is not shown.
    static std::unique_ptr<PopoverInput> forSession(QWidget& popover, std::function<void()> close);

    PopoverInput() = default;
    virtual ~PopoverInput() = default;
    PopoverInput(const PopoverInput&) = delete;
    PopoverInput& operator=(const PopoverInput&) = delete;

    /// The kind of window that the popover has to be.
    virtual Qt::WindowFlags windowFlags() const = 0;

    /// Does ahead of time what the first opening would otherwise spend its time on.
    virtual void prepare() {}

    /// Calls `found` once with the pointer's true position, or with nothing when that does not come
    /// to light; `end` calls it off.
    virtual void findPointer(std::function<void(std::optional<QPoint>)> found) {
        found(std::nullopt);
    }

    /// True while it looks for the pointer.
    virtual bool isSearching() const { return false; }

    /// The popover is about to be shown: `content` is what of it is not shadow, on the screen;
    /// `shadow` is the rest around it.
    virtual void begin(const QRect& content, const QMargins& shadow) {
        Q_UNUSED(content)
        Q_UNUSED(shadow)
    }

    /// The popover is shown now.
    virtual void take() = 0;

    /// The content of the popover that is shown is elsewhere on the screen from now on.
    virtual void follow(const QRect& content) { Q_UNUSED(content) }

    /// The popover is hidden, or is not going to be shown after all.
    virtual void end() {}
};

} // namespace kestrel::linux_shell
