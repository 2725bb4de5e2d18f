#include "shells/linux/desktop/status_notifier_item.h"

#include "shells/linux/desktop/status_notifier_adaptor.h"
#include "tests/linux/desktop/fake_watcher.h"
#include "tests/linux/desktop/private_bus.h"
#include "tests/linux/desktop/waiting.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <gmock/gmock.h>

#include <memory>
#include <optional>

namespace kestrel::linux_shell {
namespace {

class StatusNotifierItemTest : public testing::Test {
  protected:
    void startPanel(bool hasHost = true) {
        watcher = std::make_unique<FakeWatcher>(panel, hasHost);
    }

    void startItem() {
        item.emplace(program, QStringLiteral("Kestrel"));
        QObject::connect(&*item, &StatusNotifierItem::activated, &*item,
                         [this](QPoint place) { activations.append(place); });
        QObject::connect(&*item, &StatusNotifierItem::menuWanted, &*item,
                         [this](QPoint place) { menus.append(place); });
        QObject::connect(&*item, &StatusNotifierItem::shown, &*item, [this] { wasShown = true; });
        item->setOffered(true);
    }

    QVariant property(const QString& name) {
        const auto reply =
            callAndWait(panel, watcher->items.last(), QStringLiteral("/StatusNotifierItem"),
                        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                        {QStringLiteral("org.kde.StatusNotifierItem"), name});
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

    void call(const QString& method, const QVariantList& arguments) {
        callAndWait(panel, watcher->items.last(), QStringLiteral("/StatusNotifierItem"),
                    QStringLiteral("org.kde.StatusNotifierItem"), method, arguments);
    }

    bool waitForItems(qsizetype count) {
        return waitUntil([&] { return watcher->items.size() == count; });
    }

    PrivateBus bus;
    QDBusConnection program = bus.connect();
    QDBusConnection panel = bus.connect();
    std::unique_ptr<FakeWatcher> watcher;
    std::optional<StatusNotifierItem> item;
    QList<QPoint> activations;
    QList<QPoint> menus;
    bool wasShown = false;
};

TEST_F(StatusNotifierItemTest, RegistersWithThePanelThatIsThere) {
    startPanel();
    startItem();
    EXPECT_TRUE(waitForItems(1));
    EXPECT_TRUE(waitUntil([&] { return item->hasHost(); }));
}

TEST_F(StatusNotifierItemTest, RegistersWithAPanelThatComesLater) {
    startItem();
    EXPECT_FALSE(item->hasHost());
    startPanel();
    EXPECT_TRUE(waitForItems(1));
    EXPECT_TRUE(waitUntil([&] { return item->hasHost(); }));
}

TEST_F(StatusNotifierItemTest, RegistersAnewAfterThePanelsRestart) {
    startPanel();
    startItem();
    ASSERT_TRUE(waitUntil([&] { return item->hasHost(); }));
    watcher.reset();
    ASSERT_TRUE(waitUntil([&] { return !item->hasHost(); }));
    startPanel();
    EXPECT_TRUE(waitForItems(1));
    EXPECT_TRUE(waitUntil([&] { return item->hasHost(); }));
}

TEST_F(StatusNotifierItemTest, WatcherWithoutAHostIsNoPanelUntilTheHostComes) {
    startPanel(false);
    startItem();
    ASSERT_TRUE(waitForItems(1));
    EXPECT_FALSE(item->hasHost());
    watcher->setHost(true);
    EXPECT_TRUE(waitUntil([&] { return item->hasHost(); }));
    watcher->setHost(false);
    EXPECT_TRUE(waitUntil([&] { return !item->hasHost(); }));
}

TEST_F(StatusNotifierItemTest, LeavesTheBusWhenItDies) {
    startPanel();
    startItem();
    ASSERT_TRUE(waitForItems(1));
    const auto isOnTheBus = [&] {
        return callAndWait(panel, QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                           QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"),
                           {watcher->items.last()})
            .arguments()
            .value(0)
            .toBool();
    };
    EXPECT_TRUE(isOnTheBus());
    item.reset();
    EXPECT_FALSE(isOnTheBus());
}

TEST_F(StatusNotifierItemTest, AnswersForImagesThatItDoesNotHave) {
    startPanel();
    startItem();
    ASSERT_TRUE(waitForItems(1));
    for (const auto* name : {"IconThemePath", "OverlayIconName", "OverlayIconPixmap",
                             "AttentionIconName", "AttentionIconPixmap", "AttentionMovieName"})
        EXPECT_TRUE(property(QString::fromLatin1(name)).isValid()) << name;
}

TEST_F(StatusNotifierItemTest, TellsItsNameAndThatItHasNoMenu) {
    startPanel();
    startItem();
    ASSERT_TRUE(waitForItems(1));
    EXPECT_EQ(property(QStringLiteral("Id")).toString(), QStringLiteral("app.kestrel.Kestrel"));
    EXPECT_EQ(property(QStringLiteral("Title")).toString(), QStringLiteral("Kestrel"));
    EXPECT_EQ(property(QStringLiteral("Category")).toString(), QStringLiteral("ApplicationStatus"));
    EXPECT_EQ(property(QStringLiteral("Status")).toString(), QStringLiteral("Active"));
    EXPECT_EQ(property(QStringLiteral("IconAccessibleDesc")).toString(), QStringLiteral("Kestrel"));
    EXPECT_FALSE(property(QStringLiteral("ItemIsMenu")).toBool());
    EXPECT_FALSE(property(QStringLiteral("Menu")).isValid());
}

TEST_F(StatusNotifierItemTest, UnderGnomesShellNamesTheMenuThatIsNone) {
    qputenv("XDG_CURRENT_DESKTOP", "GNOME");
    startPanel();
    startItem();
    qunsetenv("XDG_CURRENT_DESKTOP");
    ASSERT_TRUE(waitForItems(1));
    EXPECT_EQ(property(QStringLiteral("Menu")).value<QDBusObjectPath>().path(),
              QStringLiteral("/NO_DBUSMENU"));
    EXPECT_EQ(property(QStringLiteral("Title")).toString(), QStringLiteral("Kestrel"));
    call(QStringLiteral("Activate"), {1, 2});
    EXPECT_EQ(activations.size(), 1);
}

TEST_F(StatusNotifierItemTest, PassesOnThePanelsActivationToken) {
    startPanel();
    startItem();
    ASSERT_TRUE(waitForItems(1));
    QString provided;
    QObject::connect(&*item, &StatusNotifierItem::activationTokenProvided, &*item,
                     [&provided](const QString& token) { provided = token; });
    call(QStringLiteral("ProvideXdgActivationToken"), {QStringLiteral("token")});
    EXPECT_EQ(provided, QStringLiteral("token"));
    EXPECT_TRUE(activations.isEmpty());
}

TEST_F(StatusNotifierItemTest, OnlyActivateActivates) {
    startPanel();
    startItem();
    ASSERT_TRUE(waitForItems(1));
    call(QStringLiteral("SecondaryActivate"), {10, 20});
    call(QStringLiteral("ContextMenu"), {10, 20});
    call(QStringLiteral("Scroll"), {1, QStringLiteral("vertical")});
    EXPECT_TRUE(activations.isEmpty());
    call(QStringLiteral("Activate"), {30, 40});
    EXPECT_EQ(activations, QList{QPoint(30, 40)});
    EXPECT_EQ(menus, QList{QPoint(10, 20)});
}

TEST_F(StatusNotifierItemTest, IsNotOnTheBusWhileItIsNotOffered) {
    startPanel();
    startItem();
    ASSERT_TRUE(waitForItems(1));
    item->setOffered(false);
    EXPECT_EQ(callAndWait(panel, watcher->items.last(), QStringLiteral("/StatusNotifierItem"),
                          QStringLiteral("org.kde.StatusNotifierItem"), QStringLiteral("Activate"),
                          {1, 2})
                  .type(),
              QDBusMessage::ErrorMessage);
    EXPECT_TRUE(item->hasHost()) << "it still knows of the panel";
    item->setOffered(true);
    EXPECT_TRUE(waitForItems(2));
}

TEST_F(StatusNotifierItemTest, IsShownOnceThePanelHasFetchedTheIcon) {
    startPanel();
    startItem();
    ASSERT_TRUE(waitForItems(1));
    property(QStringLiteral("Id"));
    EXPECT_FALSE(wasShown);
    property(QStringLiteral("IconPixmap"));
    EXPECT_TRUE(wasShown);
}

TEST_F(StatusNotifierItemTest, KnowsWhetherThereIsAPanelOnceTheBusHasAnswered) {
    startItem();
    EXPECT_FALSE(item->knowsHost());
    EXPECT_TRUE(waitUntil([&] { return item->knowsHost(); }));
    EXPECT_FALSE(item->hasHost());
}

TEST_F(StatusNotifierItemTest, ThemeNameIsOfferedNextToTheImages) {
    startPanel();
    startItem();
    ASSERT_TRUE(waitForItems(1));
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixelColor(0, 0, QColor(0x11, 0x22, 0x33, 0x44));
    image.setPixelColor(1, 0, Qt::transparent);
    item->setIcon({image}, QStringLiteral("some-symbolic"));
    EXPECT_EQ(property(QStringLiteral("IconName")).toString(), QStringLiteral("some-symbolic"));
    const auto argument = property(QStringLiteral("IconPixmap")).value<QDBusArgument>();
    StatusNotifierImages images;
    argument >> images;
    ASSERT_EQ(images.size(), 1);
    EXPECT_EQ(images[0].width, 2);
    EXPECT_EQ(images[0].height, 1);
    EXPECT_EQ(images[0].pixels, QByteArray::fromHex("4411223300000000"));
}

TEST(StatusNotifierItemWithoutABusTest, HasNeverAHost) {
    const StatusNotifierItem item{QDBusConnection(QStringLiteral("no such connection")), {}};
    EXPECT_FALSE(item.hasHost());
    EXPECT_TRUE(item.knowsHost());
}

} // namespace
} // namespace kestrel::linux_shell
