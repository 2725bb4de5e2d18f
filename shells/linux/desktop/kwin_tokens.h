#pragma once
// Activation tokens from KWin itself, over a connection of our own: they work also for a program
// that is an X11 client of XWayland, and Qt 6.4 has no public call for them.

#include <memory>
#include <string>

namespace kestrel::linux_shell {

/// Main thread only.
class KWinTokens {
  public:
    /// Opens the connection, without waiting for its first answer: KWin may look through all
    /// desktop entries for it, which takes some tenths of a second.
    KWinTokens();
    ~KWinTokens();
    KWinTokens(const KWinTokens&) = delete;
    KWinTokens& operator=(const KWinTokens&) = delete;

    /// A token by which the next launch may raise a window; empty where the compositor is not KWin,
    /// has none for us or does not answer at once. It has one for programs whose installed desktop
    /// entry asks for the interface of task bars (X-KDE-Wayland-Interfaces); what other compositors
    /// give is worth nothing without a Wayland window that has the keyboard.
    std::string take();

  private:
    struct Connection;

    std::unique_ptr<Connection> connection_; ///< null when there is none, or none any longer
};

} // namespace kestrel::linux_shell
