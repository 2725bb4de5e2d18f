#pragma once
// Activation tokens from KWin itself, over a connection of our own: they work also
// for a program that is an X11 client of XWayland, and Qt 6.4 has no public call for them.

#include <string>

namespace kestrel::linux_shell {

/// A token by which the next launch may raise a window; empty where the compositor is not KWin, has
/// none for us or does not answer at once. KWin has one for programs whose installed desktop entry
/// asks for the interface of task bars (X-KDE-Wayland-Interfaces); what other compositors give is
/// worth nothing without a Wayland window that has the keyboard. Main thread only.
std::string tokenOfKWin();

} // namespace kestrel::linux_shell
