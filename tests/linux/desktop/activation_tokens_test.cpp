#include "shells/linux/desktop/activation_tokens.h"

#include "shells/linux/desktop/kwin_tokens.h"
#include "shells/linux/desktop/startup_notification.h"

#include <QCoreApplication>
#include <QHideEvent>
#include <QKeyEvent>

#include <gmock/gmock.h>

#include <vector>

namespace kestrel::linux_shell {
namespace {

class ActivationTokensTest : public testing::Test {
  protected:
    ActivationTokensTest() { tokens.setWindow(&window); }
    ~ActivationTokensTest() override { qputenv("WAYLAND_DISPLAY", waylandDisplay); }

    /// A key of that time, which reaches some object of the program.
    static void pressKey(quint64 time) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
        event.setTimestamp(time);
        QObject receiver;
        QCoreApplication::sendEvent(&receiver, &event);
    }

    const QByteArray waylandDisplay = qgetenv("WAYLAND_DISPLAY");
    std::vector<std::uint32_t> announced;
    std::string id;
    QObject window;
    std::string ofCompositor;
    ActivationTokens tokens{[this](std::uint32_t time) {
                                announced.push_back(time);
                                return id;
                            },
                            [this] { return ofCompositor; }};
};

TEST_F(ActivationTokensTest, ThePanelsTokenIsUsedOnce) {
    tokens.provide(QStringLiteral("token"));
    EXPECT_EQ(tokens.take().token, "token");
    EXPECT_EQ(tokens.take().token, "");
}

TEST_F(ActivationTokensTest, ANewerTokenReplacesOneThatWasNotUsed) {
    tokens.provide(QStringLiteral("old"));
    tokens.provide(QStringLiteral("new"));
    EXPECT_EQ(tokens.take().token, "new");
    tokens.provide(QStringLiteral("old"));
    tokens.provide(QString());
    EXPECT_EQ(tokens.take().token, "");
}

TEST_F(ActivationTokensTest, ATokenThatNoCompositorMakesIsNone) {
    tokens.provide(QString(1024, QLatin1Char('x')));
    EXPECT_EQ(tokens.take().token.size(), 1024U);
    tokens.provide(QString(1025, QLatin1Char('x')));
    EXPECT_EQ(tokens.take().token, "");
}

TEST_F(ActivationTokensTest, TheTokenLapsesWithItsWindowAndNoOther) {
    QHideEvent hide;
    QObject another;
    tokens.provide(QStringLiteral("token"));
    QCoreApplication::sendEvent(&another, &hide);
    EXPECT_EQ(tokens.take().token, "token");
    tokens.provide(QStringLiteral("token"));
    QCoreApplication::sendEvent(&window, &hide);
    EXPECT_EQ(tokens.take().token, "");
}

TEST_F(ActivationTokensTest, AnAnnouncementHasTheTimeOfTheLastInput) {
    tokens.take();
    pressKey(5000000);
    tokens.take();
    pressKey(0);
    tokens.take();
    ASSERT_EQ(announced.size(), 3U);
    EXPECT_EQ(announced[0], 0U);
    EXPECT_GE(announced[1], 5000000U);
    EXPECT_GE(announced[2], announced[1]);
}

TEST_F(ActivationTokensTest, TheCompositorsTokenIsBetterThanThePanels) {
    ofCompositor = "compositor's";
    tokens.provide(QStringLiteral("panel's"));
    EXPECT_EQ(tokens.take().token, "compositor's");
    ofCompositor.clear();
    EXPECT_EQ(tokens.take().token, "");
    EXPECT_EQ(announced.size(), 1U);
}

TEST_F(ActivationTokensTest, ThePanelsTokenNeedsNoAnnouncement) {
    id = "id";
    tokens.provide(QStringLiteral("token"));
    EXPECT_EQ(tokens.take(), (Activation{.token = "token", .startupId = "token"}));
    EXPECT_THAT(announced, testing::IsEmpty());
}

TEST_F(ActivationTokensTest, TheIdIsTheTokenInAWaylandSessionAlone) {
    id = "id";
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    EXPECT_EQ(tokens.take(), (Activation{.token = "id", .startupId = "id"}));
    qunsetenv("WAYLAND_DISPLAY");
    EXPECT_EQ(tokens.take(), (Activation{.token = "", .startupId = "id"}));
}

TEST_F(ActivationTokensTest, WithoutX11NothingIsAnnounced) {
    EXPECT_EQ(announceLaunch(5000000), "");
    completeStartup("id");
    EXPECT_EQ(KWinTokens().take(), "");
}

} // namespace
} // namespace kestrel::linux_shell
