#pragma once
// What of our own start must not reach the programs that we start.

namespace kestrel::linux_shell {

/// Removes XDG_ACTIVATION_TOKEN and DESKTOP_STARTUP_ID from the environment. They belong to our own
/// start; a child that inherited them would claim to be the answer to it. Called by main once the
/// toolkit has read them (after the application object is built) and before anything is launched.
void forgetStartupTokens();

} // namespace kestrel::linux_shell
