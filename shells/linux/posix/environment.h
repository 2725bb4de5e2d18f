#pragma once
// The environment of this process.

#include <string>

namespace kestrel::linux_shell {

/// The value of a variable; empty when it is not set. Any thread, as long as none changes the
/// environment.
std::string environmentVariable(const char* name);

} // namespace kestrel::linux_shell
