#include "shells/linux/launching/launch_environment.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace kestrel::linux_shell {
namespace {

TEST(LaunchEnvironmentTest, TheTokensOfOurOwnStartAreForgotten) {
    ::setenv("XDG_ACTIVATION_TOKEN", "token", 1);
    ::setenv("DESKTOP_STARTUP_ID", "id", 1);
    forgetStartupTokens();
    EXPECT_EQ(std::getenv("XDG_ACTIVATION_TOKEN"), nullptr);
    EXPECT_EQ(std::getenv("DESKTOP_STARTUP_ID"), nullptr);
    forgetStartupTokens();
    EXPECT_EQ(std::getenv("DESKTOP_STARTUP_ID"), nullptr);
}

} // namespace
} // namespace kestrel::linux_shell
