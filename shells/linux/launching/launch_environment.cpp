#include "shells/linux/launching/launch_environment.h"

#include <array>
#include <cstdlib>

namespace kestrel::linux_shell {

namespace {

constexpr std::array ownStart = {
    // The launcher's, for the first window.
    "XDG_ACTIVATION_TOKEN",
    "DESKTOP_STARTUP_ID",
    // The session manager's, for a client that it has started itself.
    "DESKTOP_AUTOSTART_ID",
    // GIO's, for the program of a desktop entry. It gives children that it starts their own.
    "GIO_LAUNCHED_DESKTOP_FILE",
    "GIO_LAUNCHED_DESKTOP_FILE_PID",
    // systemd's, for a service and what belongs to it.
    "NOTIFY_SOCKET",
    "FDSTORE",
    "LISTEN_PID",
    "LISTEN_PIDFDID",
    "LISTEN_FDS",
    "LISTEN_FDNAMES",
    "WATCHDOG_PID",
    "WATCHDOG_USEC",
    "MAINPID",
    "MAINPIDFDID",
    "MANAGERPID",
    "MANAGERPIDFDID",
    "SYSTEMD_EXEC_PID",
    "INVOCATION_ID",
    "JOURNAL_STREAM",
    "MEMORY_PRESSURE_WATCH",
    "MEMORY_PRESSURE_WRITE",
};

} // namespace

void forgetOwnStart() {
    for (const char* name : ownStart)
        ::unsetenv(name);
}

} // namespace kestrel::linux_shell
