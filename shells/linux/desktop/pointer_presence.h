#pragma once
// Tells when the pointer has left windows that together cover the whole screen: then something that
// is no window has it, a shell's overview for one.

#include <QObject>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace kestrel::linux_shell {

/// Main thread only. The windows are told apart from each other: the pointer may go from one to the
/// other, which takes a moment. Nothing is told before the pointer has been seen on one of them.
class PointerPresence final : public QObject {
    Q_OBJECT

  public:
    explicit PointerPresence(const std::function<void()>& left);

    void watch(QWidget& window) { window.installEventFilter(this); }

    /// The windows are hidden: the pointer's leaving them means nothing.
    void stop() { away_.stop(); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QTimer away_;
};

} // namespace kestrel::linux_shell
