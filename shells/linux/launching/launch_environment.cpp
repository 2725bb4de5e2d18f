#include "shells/linux/launching/launch_environment.h"

#include <cstdlib>

namespace kestrel::linux_shell {

void forgetStartupTokens() {
    ::unsetenv("XDG_ACTIVATION_TOKEN");
    ::unsetenv("DESKTOP_STARTUP_ID");
}

} // namespace kestrel::linux_shell
