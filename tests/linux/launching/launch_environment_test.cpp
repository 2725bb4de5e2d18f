#include "shells/linux/launching/launch_environment.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace kestrel::linux_shell {
namespace {

TEST(LaunchEnvironmentTest, WhatWasMeantForOurOwnStartIsForgotten) {
    const auto names = {"XDG_ACTIVATION_TOKEN",
                        "DESKTOP_STARTUP_ID",
                        "DESKTOP_AUTOSTART_ID",
                        "GIO_LAUNCHED_DESKTOP_FILE",
                        "GIO_LAUNCHED_DESKTOP_FILE_PID",
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
                        "MEMORY_PRESSURE_WRITE"};
    for (const char* name : names)
        ::setenv(name, "ours", 1);
    forgetOwnStart();
    for (const char* name : names)
        EXPECT_EQ(std::getenv(name), nullptr) << name;
    forgetOwnStart();
    EXPECT_EQ(std::getenv("INVOCATION_ID"), nullptr);
}

TEST(LaunchEnvironmentTest, WhatDescribesTheSessionStays) {
    for (const char* name : {"XDG_CURRENT_DESKTOP", "SESSION_MANAGER", "DBUS_SESSION_BUS_ADDRESS",
                             "XDG_SESSION_ID", "LISTEN", "CACHE_DIRECTORY"}) {
        const char* before = std::getenv(name);
        const std::string kept = before == nullptr ? "" : before;
        ::setenv(name, "the session's", 1);
        forgetOwnStart();
        EXPECT_STREQ(std::getenv(name), "the session's") << name;
        if (before == nullptr)
            ::unsetenv(name);
        else
            ::setenv(name, kept.c_str(), 1);
    }
}

} // namespace
} // namespace kestrel::linux_shell
