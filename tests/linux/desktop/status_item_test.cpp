#include "shells/linux/desktop/status_item.h"

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
class StatusItemTest : public testing::Test {
  protected:
    ~StatusItemTest() override { qunsetenv("XDG_CURRENT_DESKTOP"); }

    void start(const char* desktop) {
        qputenv("XDG_CURRENT_DESKTOP", desktop);
        const auto draw = [](int pixels) {
            return QImage(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
        };
        item.emplace(program, QStringLiteral("Kestrel"), draw,
                     [this] { clicks.append(item->anchor()); });
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

TEST_F(StatusItemTest, WithoutAPanelThereIsCertainlyNoneOnceTheBusHasAnswered) {
    start("XFCE");
    EXPECT_FALSE(item->isWithoutPanel());
    EXPECT_TRUE(waitUntil([&] { return item->isWithoutPanel(); }));
    EXPECT_FALSE(item->hasBeenShown());
}

TEST_F(StatusItemTest, PanelThatDoesNotFetchTheIconDoesNotShowIt) {
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

TEST_F(StatusItemTest, UnderGnomesShellAnItemIsOfferedWhereNoTrayTakesIcons) {
    watcher = std::make_unique<FakeWatcher>(panel, true);
    start("ubuntu:GNOME");
    EXPECT_TRUE(waitForItem());
}

TEST_F(StatusItemTest, PlasmasPanelIsBelievedWhereItWasClicked) {
    watcher = std::make_unique<FakeWatcher>(panel, true);
    start("KDE");
    ASSERT_TRUE(waitForItem());
    call(QStringLiteral("Activate"), 300, 10);
    ASSERT_EQ(clicks.size(), 1);
    EXPECT_EQ(clicks[0].kind, PopoverAnchor::Kind::panel);
    EXPECT_EQ(clicks[0].point, QPoint(300, 10));
}

TEST_F(StatusItemTest, PlaceBeyondAllScreensIsNotBelieved) {
    watcher = std::make_unique<FakeWatcher>(panel, true);
    start("KDE");
    ASSERT_TRUE(waitForItem());
    call(QStringLiteral("Activate"), 30000, 10);
    ASSERT_EQ(clicks.size(), 1);
    EXPECT_EQ(clicks[0].kind, PopoverAnchor::Kind::pointer);
}

TEST_F(StatusItemTest, OtherPanelsAreNotBelieved) {
    watcher = std::make_unique<FakeWatcher>(panel, true);
    start("XFCE");
    ASSERT_TRUE(waitForItem());
    call(QStringLiteral("Activate"), 300, 10);
    ASSERT_EQ(clicks.size(), 1);
    EXPECT_EQ(clicks[0].kind, PopoverAnchor::Kind::pointer);
    EXPECT_NE(clicks[0].point, QPoint(300, 10));
}

TEST_F(StatusItemTest, MenuThatIsWantedIsNoClick) {
    watcher = std::make_unique<FakeWatcher>(panel, true);
    start("KDE");
    ASSERT_TRUE(waitForItem());
    call(QStringLiteral("ContextMenu"), 300, 10);
    call(QStringLiteral("SecondaryActivate"), 300, 10);
    EXPECT_TRUE(clicks.isEmpty());
}

TEST_F(StatusItemTest, WithoutAClickThePlaceIsThatOfTheLastOne) {
    watcher = std::make_unique<FakeWatcher>(panel, true);
    start("KDE");
    ASSERT_TRUE(waitForItem());
    EXPECT_EQ(item->anchor().kind, PopoverAnchor::Kind::corner);
    call(QStringLiteral("Activate"), 300, 10);
    EXPECT_EQ(item->anchor().point, QPoint(300, 10));
}

} // namespace
} // namespace kestrel::linux_shell
