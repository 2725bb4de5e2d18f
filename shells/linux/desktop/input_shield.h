#pragma once
// A transparent window over all screens, for X11 windows inside a Wayland session. There the X
// server does not know where the pointer is while it is over a Wayland window, nor does it see
// clicks on one; over this window it does both.

#include <QElapsedTimer>
#include <QPoint>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <optional>

namespace kestrel::linux_shell {

/// Main thread only.
class InputShield final : public QWidget {
    Q_OBJECT

  public:
    explicit InputShield(std::function<void()> clicked);

    /// Does ahead of time what the first covering would otherwise spend its time on.
    void prepare();

    /// Covers the screens but for `hole`, in device-independent pixels, which may be empty: every
    /// click on them is the window's from now on, until it is hidden.
    void cover(const QRect& hole);

    /// Covers the screens and calls `found` once: with the pointer's true position, or with nothing
    /// when it is not known within a second. Hiding the window calls it off.
    void find(std::function<void(std::optional<QPoint>)> found);

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void look();

    std::function<void()> clicked_;
    std::function<void(std::optional<QPoint>)> found_;
    QTimer looking_;
    QElapsedTimer sinceStart_;
    QPoint falsePosition_;
    QRect hole_;
};

} // namespace kestrel::linux_shell
