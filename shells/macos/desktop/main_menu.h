#pragma once
// The application's menu. An agent's menu bar is never seen while no window is open, but text
// fields find the shortcuts of Cut, Copy, Paste and their like only through it.

#import <AppKit/AppKit.h>

namespace kestrel::macos_shell {

/// A new menu with Quit, Edit and Close, in the user's language.
NSMenu* makeMainMenu();

} // namespace kestrel::macos_shell
