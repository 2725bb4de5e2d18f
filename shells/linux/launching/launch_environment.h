#pragma once
// What of the environment that this program was started in must not reach the programs that it
// starts.

namespace kestrel::linux_shell {

/// Removes from the environment what was meant for this process alone, or for the service that it
/// was started in: the marks of our own start, sockets that a service manager hands over or listens
/// at, a watchdog's times. A child that inherited them would claim to be us, answer in our place or
/// tell the session that we had ended. Called once the toolkit has read them (after the application
/// object is built) and before anything is launched.
void forgetOwnStart();

} // namespace kestrel::linux_shell
