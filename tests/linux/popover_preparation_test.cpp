// What the popover has done ahead of an opening, told by the icons that it asks for: each row in
// sight asks for its own when it is first painted.

#include "shells/linux/linux_desktop.h"
#include "tests/fakes/store_fixture.h"
#include "tests/linux/desktop/waiting.h"
#include "views/popover/menu_popover_style.h"

#include <QApplication>

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace kestrel::linux_shell {
namespace {

using testing::IsEmpty;

class PopoverPreparationTest : public tests::StoreFixture {
  protected:
    /// So many rows of a list of more are in sight.
    static constexpr std::size_t rowsInSight = 10;

    ItemsManager manager{ports};
    std::vector<std::string> iconsAsked;
    FileIconSource icons{[this](const std::string& path) {
        iconsAsked.push_back(path);
        return QIcon();
    }};
    LinuxDesktop desktop{QDBusConnection(QStringLiteral("no such connection")), icons};
    std::unique_ptr<StatusItem> statusItem;
    std::unique_ptr<Popover> popover;

    void SetUp() override {
        mainQueue.runAll();
        statusItem = desktop.makeStatusItem("square.grid.2x2", "Kestrel", [] {});
        popover = desktop.makePopover(std::make_unique<MenuPopoverView>(
            manager, mainQueue, clock, MenuPopoverView::Callbacks{}));
    }

    /// The list holds so many items of other paths than before.
    void setItems(std::size_t count, const std::string& folder) {
        std::vector<LauncherItem> items;
        for (std::size_t i = 0; i < count; ++i)
            items.push_back(tests::appItem("Item", folder + std::to_string(i)));
        manager.items.assign(std::move(items));
    }

    static std::vector<std::string> firstPaths(const std::string& folder) {
        std::vector<std::string> paths;
        for (std::size_t i = 0; i < rowsInSight; ++i)
            paths.push_back(folder + std::to_string(i));
        return paths;
    }

    void open() {
        popover->show(menu_popover_style::contentSize(manager.items.size()));
        desktop.popover()->repaint();
        settle();
    }

    /// Whether exactly these icons come to be asked for, and none again by an opening.
    void expectPrepared(const std::vector<std::string>& paths) {
        EXPECT_TRUE(waitUntil([&] { return iconsAsked.size() >= paths.size(); }));
        EXPECT_EQ(iconsAsked, paths);
        iconsAsked.clear();
        open();
        EXPECT_THAT(iconsAsked, IsEmpty());
    }
};

TEST_F(PopoverPreparationTest, OpeningThatNothingPreparedAsksForTheIconsOfTheRowsInSight) {
    setItems(20, "/apps/");
    open();
    EXPECT_EQ(iconsAsked, firstPaths("/apps/"));
}

TEST_F(PopoverPreparationTest, FirstOpeningOfAListThatHasArrivedAsksForNoIcon) {
    setItems(20, "/apps/");
    expectPrepared(firstPaths("/apps/"));
}

TEST_F(PopoverPreparationTest, OpeningAfterAChangeOfTheListAsksForNoIcon) {
    setItems(3, "/apps/");
    EXPECT_TRUE(waitUntil([&] { return iconsAsked.size() >= 3; }));
    iconsAsked.clear();
    setItems(20, "/others/");
    expectPrepared(firstPaths("/others/"));
}

TEST_F(PopoverPreparationTest, ChangeWhileThePopoverIsShownIsPreparedOnceItIsClosed) {
    setItems(3, "/apps/");
    open();
    setItems(20, "/others/");
    EXPECT_TRUE(waitUntil([&] { return iconsAsked.size() > 3; }));
    popover->close();
    EXPECT_TRUE(waitUntil([&] { return iconsAsked.back() == "/others/9"; }));
    iconsAsked.clear();
    open();
    EXPECT_THAT(iconsAsked, IsEmpty());
}

TEST_F(PopoverPreparationTest, OpeningAfterAChangeOfTheDesktopsColoursAsksForNoIcon) {
    setItems(20, "/apps/");
    EXPECT_TRUE(waitUntil([&] { return iconsAsked.size() >= rowsInSight; }));
    iconsAsked.clear();
    QApplication::setPalette(QPalette(Qt::darkBlue));
    expectPrepared(firstPaths("/apps/"));
    QApplication::setPalette(QPalette());
}

} // namespace
} // namespace kestrel::linux_shell
