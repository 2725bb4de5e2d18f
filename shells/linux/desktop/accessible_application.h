#pragma once
// The root of the program's accessible tree.

namespace kestrel::linux_shell {

/// From now on the accessible tree lists the popover too. Qt's own root leaves out popup windows,
/// which would hide the whole launcher from a screen reader. Call once, before the first window.
void installAccessibleApplication();

} // namespace kestrel::linux_shell
