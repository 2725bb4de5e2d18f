#include "shells/linux/desktop/status_bar.h"

#include "tests/linux/desktop/fake_watcher.h"
#include "tests/linux/desktop/private_bus.h"
#include "tests/linux/desktop/waiting.h"

#include <QDBusMessage>

#include <gmock/gmock.h>

#include <memory>
#include <optional>

namespace kestrel::linux_shell {
namespace {

/// Without an X server: the one protocol that there is, is StatusNotifierItem.
class StatusBarTest : public testing::Test {
  protected:
    ~StatusBarTest() override { qunsetenv("XDG_CURRENT_DESKTOP"); }

    void start(const char* desktop) {
        qputenv("XDG_CURRENT_DESKTOP", desktop);
        item.emplace(program, [](const Image&, int pixels) {
            return QImage(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
        });
        item->button()->setImage(std::make_shared<Image>());
        item->button()->setAction([this](StatusBarButton& button) {
            clicks.append(dynamic_cast<AnchoredButton&>(button).anchor());
        });
    }

    void call(const QString& method, int x, int y) {
        callAndWait(panel, watcher->items.last(), QStringLiteral("/StatusNotifierItem"),
                    QStringLiteral("org.kde.StatusNotifierItem"), method, {x, y});
    }

    bool waitForItem() {
        return waitUntil([&] { return !watcher->items.isEmpty(); });
    }

    PrivateBus bus;
    QDBusConnection program = bus.connect();
    QDBusConnection panel = bus.connect();
    std::unique_ptr<FakeWatcher> watcher;
    std::optional<LinuxStatusItem> item;
    QList<PopoverAnchor> clicks;
};

TEST_F(StatusBarTest, WithoutAPanelThereIsCertainlyNoneOnceTheBusHasAnswered) {
    start("XFCE");
    EXPECT_FALSE(item->isWithoutPanel());
    EXPECT_TRUE(waitUntil([&] { return item->isWithoutPanel(); }));
    EXPECT_FALSE(item->hasBeenShown());
}

TEST_F(StatusBarTest, PanelThatDoesNotFetchTheIconDoesNotShowIt) {
    watcher = std::make_unique<FakeWatcher>(panel, true);
    start("XFCE");
    ASSERT_TRUE(waitForItem());
    EXPECT_FALSE(item->isWithoutPanel());
    EXPECT_FALSE(item->hasBeenShown());
    callAndWait(panel, watcher->items.last(), QStringLiteral("/StatusNotifierItem"),
                QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"),
                {QStringLiteral("org.kde.StatusNotifierItem")});
    EXPECT_TRUE(item->hasBeenShown());
}

TEST_F(StatusBarTest, UnderGnomesShellAnItemIsOfferedWhereNoTrayTakesIcons) {
    watcher = std::make_unique<FakeWatcher>(panel, true);
    start("ubuntu:GNOME");
    EXPECT_TRUE(waitForItem());
}

TEST_F(StatusBarTest, PlasmasPanelIsBelievedWhereItWasClicked) {
    watcher = std::make_unique<FakeWatcher>(panel, true);
    start("KDE");
    ASSERT_TRUE(waitForItem());
    call(QStringLiteral("Activate"), 300, 10);
    ASSERT_EQ(clicks.size(), 1);
    EXPECT_EQ(clicks[0].kind, PopoverAnchor::Kind::panel);
    EXPECT_EQ(clicks[0].point, QPoint(300, 10));
}

TEST_F(StatusBarTest, PlaceBeyondAllScreensIsNotBelieved) {
    watcher = std::make_unique<FakeWatcher>(panel, true);
    start("KDE");
    ASSERT_TRUE(waitForItem());
    call(QStringLiteral("Activate"), 30000, 10);
    ASSERT_EQ(clicks.size(), 1);
    EXPECT_EQ(clicks[0].kind, PopoverAnchor::Kind::pointer);
}

TEST_F(StatusBarTest, OtherPanelsAreNotBelieved) {
    watcher = std::make_unique<FakeWatcher>(panel, true);
    start("XFCE");
    ASSERT_TRUE(waitForItem());
    call(QStringLiteral("Activate"), 300, 10);
    ASSERT_EQ(clicks.size(), 1);
    EXPECT_EQ(clicks[0].kind, PopoverAnchor::Kind::pointer);
    EXPECT_NE(clicks[0].point, QPoint(300, 10));
}

TEST_F(StatusBarTest, MenuThatIsWantedIsNoClick) {
    watcher = std::make_unique<FakeWatcher>(panel, true);
    start("KDE");
    ASSERT_TRUE(waitForItem());
    call(QStringLiteral("ContextMenu"), 300, 10);
    call(QStringLiteral("SecondaryActivate"), 300, 10);
    EXPECT_TRUE(clicks.isEmpty());
}

TEST_F(StatusBarTest, WithoutAClickThePlaceIsThatOfTheLastOne) {
    watcher = std::make_unique<FakeWatcher>(panel, true);
    start("KDE");
    ASSERT_TRUE(waitForItem());
    auto& button = dynamic_cast<AnchoredButton&>(*item->button());
    EXPECT_EQ(button.anchor().kind, PopoverAnchor::Kind::corner);
    call(QStringLiteral("Activate"), 300, 10);
    EXPECT_EQ(button.anchor().point, QPoint(300, 10));
}

} // namespace
} // namespace kestrel::linux_shell
