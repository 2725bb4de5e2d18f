#pragma once
// What this shell asks of the X server about single windows, because Qt has no call for it: docking
// in a panel, being a popover under a window manager, having the keyboard. Each does nothing, and
// answers "no", when the program does not run on X11.

#include <QMargins>
#include <QRect>
#include <qwindowdefs.h>

namespace kestrel::linux_shell::x11 {

/// Where a window of the program is on the screen, whatever window it is in, in device-independent
/// pixels; empty while it is not shown.
QRect rectOnScreen(WId window);

/// Asks the panel that takes icons to take `window` in, which is not shown yet. It answers by
/// making the window a child of its own.
void requestDock(WId window);

/// Makes the panel the background of a docked window: until something is painted on it, the window
/// shows what is behind it.
void inheritBackground(WId window);

/// Makes a window that is not shown one that stands where it is put and is in no list of windows:
/// `shadow` is the part of it, in the server's pixels, that is not to be kept on the screen. To be
/// said before each time that it is shown.
void beUnlisted(WId window, const QMargins& shadow);

/// True where a window manager can keep a window out of its lists.
bool canBeUnlisted();

/// Asks the window manager to give `window` the keyboard, as its user's own wish.
void activate(WId window);

/// The window that the window manager says has the keyboard; 0 when it names none.
WId activeWindow();

/// Has all of the pointer's buttons and movements told to the program, those elsewhere to `window`,
/// which is shown. False when somebody else holds the pointer. The toolkit may grab it anew at any
/// time, by the same protocol.
bool grabPointer(WId window);

} // namespace kestrel::linux_shell::x11
