#pragma once
// The environment of this process, and what the user's account says where that is silent. Any
// thread may ask, as long as none changes the environment.

#include <string>

namespace kestrel::linux_shell {

/// The value of a variable; empty when it is not set.
std::string environmentVariable(const char* name);

/// The absolute path of the user's home folder: $HOME, or that of the account where $HOME is not
/// absolute; empty when there is none.
std::string homeFolder();

/// The absolute path of the user's shell: $SHELL, or the login shell where $SHELL is not absolute,
/// or /bin/sh.
std::string userShell();

} // namespace kestrel::linux_shell
