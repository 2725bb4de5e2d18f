#include "shells/linux/desktop/appearance/settings_portal.h"

#include "tests/linux/desktop/appearance/fake_portal.h"
#include "tests/linux/desktop/private_bus.h"
#include "tests/linux/desktop/waiting.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>

namespace kestrel::linux_shell {
namespace {

constexpr AppearanceSettings dark{.scheme = ColorScheme::dark};
constexpr AppearanceSettings light{.scheme = ColorScheme::light};

class SettingsPortalTest : public testing::Test {
  protected:
    void startPortal(const QVariantMap& settings) {
        portal = std::make_unique<FakePortal>(service);
        portal->settings = settings;
    }

    /// Starts the program's side and waits until the portal has been asked and was heard.
    void startProgram() {
        source.emplace(program);
        if (portal) {
            ASSERT_TRUE(waitUntil([&] { return portal->calls >= 1; }));
            hearAll();
        }
    }

    /// Waits until the program has received all that was sent to it before.
    void hearAll() {
        callAndWait(program, QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                    QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
        settle();
    }

    static QVariantMap scheme(const QVariant& value) {
        return {{QStringLiteral("color-scheme"), value}};
    }

    bool becomes(const AppearanceSettings& settings) {
        return waitUntil([&] { return source->settings() == settings; });
    }

    PrivateBus bus;
    QDBusConnection program = bus.connect();
    QDBusConnection service = bus.connect();
    std::unique_ptr<FakePortal> portal;
    std::optional<SettingsPortal> source;
};

TEST_F(SettingsPortalTest, DarkIsKnownAfterTheStart) {
    startPortal(scheme(1U));
    startProgram();
    EXPECT_TRUE(becomes(dark));
}

TEST_F(SettingsPortalTest, FollowsTheSwitchWhileRunning) {
    startPortal(scheme(1U));
    startProgram();
    ASSERT_TRUE(becomes(dark));
    portal->set(QStringLiteral("color-scheme"), 2U);
    EXPECT_TRUE(becomes(light));
    portal->set(QStringLiteral("color-scheme"), 0U);
    EXPECT_TRUE(becomes({}));
    portal->set(QStringLiteral("contrast"), 1U);
    EXPECT_TRUE(becomes({.scheme = std::nullopt, .contrast = Contrast::high}));
}

TEST_F(SettingsPortalTest, PortalThatComesLateIsHeard) {
    startProgram();
    EXPECT_EQ(source->settings(), AppearanceSettings());
    startPortal(scheme(1U));
    EXPECT_TRUE(becomes(dark));
}

TEST_F(SettingsPortalTest, PortalThatLeavesLeavesItsLastWordUntilItIsBack) {
    startPortal(scheme(1U));
    startProgram();
    ASSERT_TRUE(becomes(dark));
    portal.reset();
    hearAll();
    EXPECT_EQ(source->settings(), dark);
    startPortal(scheme(2U));
    EXPECT_TRUE(becomes(light));
}

TEST_F(SettingsPortalTest, ValuesOfAnotherTypeOrUnknownOnesAreNoPreference) {
    const QList<QVariant> values{QStringLiteral("1"), 1,  1.0,        true,
                                 QVariantList{1U},    3U, 0xFFFFFFFFU};
    for (const QVariant& value : values) {
        startPortal({{QStringLiteral("color-scheme"), value}, {QStringLiteral("contrast"), value}});
        startProgram();
        EXPECT_EQ(source->settings(), AppearanceSettings()) << value.typeName();
        portal.reset();
        hearAll();
    }
}

TEST_F(SettingsPortalTest, PortalThatNeverAnswersIsAskedAndNotWaitedFor) {
    startPortal(scheme(1U));
    portal->answers = false;
    startProgram();
    EXPECT_EQ(source->settings(), AppearanceSettings());
    portal->answers = true;
    portal->set(QStringLiteral("color-scheme"), 1U);
    EXPECT_TRUE(becomes(dark));
}

TEST_F(SettingsPortalTest, SignalOfAnotherProgramChangesNothingThatThePortalSays) {
    startPortal(scheme(1U));
    startProgram();
    ASSERT_TRUE(becomes(dark));
    const auto stranger = bus.connect();
    auto forged = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
                                             QStringLiteral("org.freedesktop.portal.Settings"),
                                             QStringLiteral("SettingChanged"));
    forged << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme")
           << QVariant::fromValue(QDBusVariant(2U));
    const int before = portal->calls;
    stranger.send(forged);
    ASSERT_TRUE(waitUntil([&] { return portal->calls > before; }));
    hearAll();
    EXPECT_EQ(source->settings(), dark);
}

TEST(SettingsPortalWithoutABusTest, StatesNoPreference) {
    const SettingsPortal source{QDBusConnection(QStringLiteral("no such connection"))};
    EXPECT_EQ(source.settings(), AppearanceSettings());
}

} // namespace
} // namespace kestrel::linux_shell
