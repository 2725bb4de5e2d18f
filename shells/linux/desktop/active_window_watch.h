#pragma once
// Tells when the window manager gives the keyboard to another window.

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <cstdint>
#include <functional>

namespace kestrel::linux_shell::x11 {

/// Main thread only. Calls `changed`, from the event loop, each time that the window manager names
/// another active window or the same one again; never while it is stopped, as it is at first.
class ActiveWindowWatch final : private QAbstractNativeEventFilter {
  public:
    explicit ActiveWindowWatch(std::function<void()> changed) : changed_(std::move(changed)) {}
    ~ActiveWindowWatch() override { stop(); }
    ActiveWindowWatch(const ActiveWindowWatch&) = delete;
    ActiveWindowWatch& operator=(const ActiveWindowWatch&) = delete;

    void start();
    void stop();

  private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

    std::function<void()> changed_;
    QObject context_;            ///< of what is still to be told
    std::uint32_t property_ = 0; ///< while it is started
};

} // namespace kestrel::linux_shell::x11
