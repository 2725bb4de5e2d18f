#pragma once
// The application's menu bar. It is seen while the settings window is open; otherwise the program
// is an agent, and text fields find the shortcuts of Cut, Copy, Paste and their like through it.

namespace kestrel::macos_shell {

/// Gives the shared application new menus in the user's language: the application's own, Edit and
/// Window.
void installMainMenu();

} // namespace kestrel::macos_shell
