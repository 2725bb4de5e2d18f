#pragma once
// Which desktop the program runs on, by the names that the session gives itself.

#include <QStringView>

namespace kestrel::linux_shell {

/// True when XDG_CURRENT_DESKTOP has `name` among its names, in whatever case: "GNOME" is one of
/// Ubuntu's too.
bool currentDesktopIs(QStringView name);

} // namespace kestrel::linux_shell
