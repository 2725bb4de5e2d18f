#pragma once
// The environment that this program was started in: what the launching folder reads of it, and what
// of it must not reach the programs that we start.

#include <string>

namespace kestrel::linux_shell {

/// Removes XDG_ACTIVATION_TOKEN and DESKTOP_STARTUP_ID from the environment. They belong to our own
/// start; a child that inherited them would claim to be the answer to it. Called by main once the
/// toolkit has read them (after the application object is built) and before anything is launched.
void forgetStartupTokens();

/// The value of a variable; empty when it is not set.
std::string environmentVariable(const char* name);

} // namespace kestrel::linux_shell
