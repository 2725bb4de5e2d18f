#pragma once
// What the user's account says: the environment first, as the session has set it, then the
// password database.

#include <string>

namespace kestrel::linux_shell {

/// The absolute path of the user's home folder: $HOME, or that of the account where $HOME is not
/// absolute; empty when there is none.
std::string homeFolder();

/// The absolute path of the user's shell: $SHELL, or the login shell where $SHELL is not absolute,
/// or /bin/sh.
std::string userShell();

} // namespace kestrel::linux_shell
