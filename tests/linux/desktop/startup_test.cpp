#include "shells/linux/desktop/startup.h"

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

class StartupTest : public testing::Test {
  protected:
    StartupTest() { clear(); }
    ~StartupTest() override { clear(); }

    static void clear() {
        qunsetenv("DESKTOP_STARTUP_ID");
        qunsetenv("XDG_ACTIVATION_TOKEN");
    }
};

TEST_F(StartupTest, WithTheSessionNothingIsSaid) {
    const auto startup = startupOfThisProcess();
    EXPECT_FALSE(startup.isByHand());
    EXPECT_TRUE(startup.platformData().isEmpty());
}

TEST_F(StartupTest, StartupIdMeansByHand) {
    qputenv("DESKTOP_STARTUP_ID", "id_TIME1");
    const auto startup = startupOfThisProcess();
    EXPECT_TRUE(startup.isByHand());
    const QVariantMap data{{QStringLiteral("desktop-startup-id"), QStringLiteral("id_TIME1")}};
    EXPECT_EQ(startup.platformData(), data);
}

TEST_F(StartupTest, ActivationTokenMeansByHand) {
    qputenv("XDG_ACTIVATION_TOKEN", "token");
    const auto startup = startupOfThisProcess();
    EXPECT_TRUE(startup.isByHand());
    const QVariantMap data{{QStringLiteral("activation-token"), QStringLiteral("token")}};
    EXPECT_EQ(startup.platformData(), data);
}

TEST_F(StartupTest, IsReadFromPlatformData) {
    const Startup startup{.id = QStringLiteral("id"), .activationToken = QStringLiteral("token")};
    const auto same = Startup::fromPlatformData(startup.platformData());
    EXPECT_EQ(same.id, startup.id);
    EXPECT_EQ(same.activationToken, startup.activationToken);
}

TEST_F(StartupTest, PlatformDataOfAnotherKindIsNone) {
    const auto startup = Startup::fromPlatformData(
        {{QStringLiteral("desktop-startup-id"), 7},
         {QStringLiteral("activation-token"), QString(1025, QLatin1Char('x'))}});
    EXPECT_FALSE(startup.isByHand());
}

} // namespace
} // namespace kestrel::linux_shell
