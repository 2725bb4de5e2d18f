#pragma once
// When a widget draws the state of its view again. A view's signal fires before the change, so the
// redraw waits for the next turn of the event loop - but not longer than to the user's next key,
// click or scroll: what follows at once, as after a moment in which the program was busy, must meet
// what the user has brought about and not the picture from before.

#include <QObject>

#include <functional>

namespace kestrel::linux_shell {

/// A member of the widget, which it does not outlive. Main thread only.
class RedrawSchedule final : public QObject {
    Q_OBJECT

  public:
    explicit RedrawSchedule(std::function<void()> redraw) : redraw_(std::move(redraw)) {}

    /// Any number of requests until the redraw make one.
    void request();

    /// The redraw that is due, now.
    void catchUp();

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    std::function<void()> redraw_;
    bool isDue_ = false;
};

} // namespace kestrel::linux_shell
