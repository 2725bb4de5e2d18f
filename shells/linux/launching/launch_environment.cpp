#include "shells/linux/launching/launch_environment.h"

#include <cstdlib>

namespace kestrel::linux_shell {

void forgetStartupTokens() {
    ::unsetenv("XDG_ACTIVATION_TOKEN");
    ::unsetenv("DESKTOP_STARTUP_ID");
}

std::string environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

} // namespace kestrel::linux_shell
