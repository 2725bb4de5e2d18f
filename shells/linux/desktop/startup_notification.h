#pragma once
// Startup notification, by which an X11 window manager knows that a window is the answer to
// something that the user has just started. Compositors of Wayland know announcements that come
// through XWayland too: GNOME's takes their ids for activation tokens.

#include <cstdint>
#include <string>

namespace kestrel::linux_shell {

/// Tells the window manager that a program is being started for the input event of the X server's
/// time `time`, in milliseconds. The id to hand to that program; empty, and nothing told, when this
/// program does not run on X11 or the time is 0. A program that never answers is given up after a
/// few seconds. Main thread only.
std::string announceLaunch(std::uint32_t time);

/// Tells the window manager that the program which was started with `id` is there. Nothing happens
/// without X11, for an empty id and for one of more than a thousand characters. Main thread only.
void completeStartup(const std::string& id);

} // namespace kestrel::linux_shell
