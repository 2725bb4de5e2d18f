#include "app/app_delegate.h"

#include "tests/fakes/fake_desktop.h"
#include "tests/fakes/store_fixture.h"
#include "views/popover/menu_popover_style.h"

#include <gmock/gmock.h>

namespace kestrel::tests {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class AppDelegateTest : public StoreFixture {
  protected:
    FakeApplication application{log};
    FakeDesktop desktop{log};
    FakeOpenPanel openPanel;
    std::unique_ptr<AppDelegate> delegate =
        std::make_unique<AppDelegate>(AppPorts{ports, application, openPanel, desktop});

    void launch() {
        delegate->applicationDidFinishLaunching();
        mainQueue.runAll();
        log.calls.clear();
    }

    void addItems(int count) {
        for (int i = 0; i < count; ++i)
            delegate->itemsManager().items.append(appItem("Item"));
    }
};

TEST_F(AppDelegateTest, ConstructionMakesTheItemStoreAndNothingElse) {
    EXPECT_THAT(log.calls, ElementsAre("cloud.addExternalChangeObserver", "cloud.defaultStore",
                                       "cloudStore.synchronize", "cloud.hasIdentityToken",
                                       "defaults.dataForKey launcherItems"));
    EXPECT_EQ(desktop.popover, nullptr);
    EXPECT_FALSE(delegate->hasSettingsWindow());
}

TEST_F(AppDelegateTest, LaunchingSetsThePolicyThenTheStatusItemThenThePopoverWithTheirValues) {
    takeCalls();
    delegate->applicationDidFinishLaunching();
    EXPECT_THAT(log.calls, ElementsAre("application.setActivationPolicy 1",
                                       "desktop.makeStatusItem square.grid.2x2 'Kestrel'",
                                       "desktop.makePopover"));
}

TEST_F(AppDelegateTest, TheHeightRuleGivesTheStatedHeights) {
    const std::vector<std::pair<std::size_t, double>> table{{0, 181},  {1, 87},   {2, 121},
                                                            {5, 223},  {9, 359},  {10, 361},
                                                            {11, 361}, {20, 361}, {100'000, 361}};
    for (const auto& [count, height] : table)
        EXPECT_EQ(menu_popover_style::contentSize(count), (Size{240, height})) << count;
}

TEST_F(AppDelegateTest, WithNoItemsThePopoverOpens240By181) {
    launch();
    desktop.click();
    EXPECT_THAT(log.calls, ElementsAre("popover.show 240x181"));
}

TEST_F(AppDelegateTest, With20ItemsThePopoverOpens240By361) {
    launch();
    addItems(20);
    desktop.click();
    EXPECT_THAT(log.calls, Contains("popover.show 240x361"));
}

TEST_F(AppDelegateTest, AddingItemsWhileThePopoverIsClosedChangesItsSizeAtTheNextOpening) {
    launch();
    desktop.click();
    desktop.click();
    addItems(5);
    takeCalls();
    desktop.click();
    EXPECT_THAT(log.calls, ElementsAre("popover.show 240x223"));
}

TEST_F(AppDelegateTest, AnOpenPopoverFollowsTheHeightRuleWhenTheListChanges) {
    launch();
    desktop.click();
    takeCalls();
    addItems(5);
    mainQueue.runAll();
    EXPECT_EQ(log.calls.back(), "popover.setContentSize 240x223");
    takeCalls();
    delegate->itemsManager().items.assign({});
    mainQueue.runAll();
    EXPECT_THAT(log.calls, ElementsAre("popover.setContentSize 240x181"));
    desktop.click();
    takeCalls();
    addItems(1);
    mainQueue.runAll();
    EXPECT_THAT(log.calls, IsEmpty());
}

TEST_F(AppDelegateTest, ASecondClickOnTheIconClosesThePopover) {
    launch();
    desktop.click();
    takeCalls();
    desktop.click();
    EXPECT_THAT(log.calls, ElementsAre("popover.close"));
    EXPECT_FALSE(desktop.popover->isShown());
}

TEST_F(AppDelegateTest, StartingTheProgramAgainOpensThePopoverAndLeavesAnOpenOneOpen) {
    launch();
    delegate->applicationShouldHandleReopen();
    EXPECT_TRUE(desktop.popover->isShown());
    takeCalls();
    delegate->applicationShouldHandleReopen();
    EXPECT_TRUE(desktop.popover->isShown());
    EXPECT_THAT(log.calls, IsEmpty());
}

TEST_F(AppDelegateTest, LaunchingAnItemClosesThePopoverOneTurnLater) {
    launch();
    addItems(1);
    desktop.click();
    takeCalls();
    desktop.popover->view->row(0).onTap();
    EXPECT_THAT(log.calls, ElementsAre("workspace.openApplication /apps/one"));
    mainQueue.runTurn();
    EXPECT_THAT(log.calls, ElementsAre("workspace.openApplication /apps/one", "popover.close"));
}

TEST_F(AppDelegateTest, QuitTerminatesTheApplication) {
    launch();
    desktop.popover->view->quitClicked();
    EXPECT_THAT(log.calls, ElementsAre("application.terminate"));
}

TEST_F(AppDelegateTest, SettingsClosesThePopoverAndMakesTheWindow) {
    launch();
    desktop.click();
    takeCalls();
    desktop.popover->view->settingsClicked();
    EXPECT_THAT(log.calls, ElementsAre("popover.close", "application.setActivationPolicy 0",
                                       "application.activate", "desktop.makeSettingsWindow 520x420",
                                       "window.bringForward"));
}

TEST_F(AppDelegateTest, ChoosingSettingsTwiceYieldsOneWindowBroughtToTheFrontBothTimes) {
    launch();
    delegate->openSettings();
    takeCalls();
    delegate->openSettings();
    EXPECT_THAT(log.calls, ElementsAre("popover.close", "application.setActivationPolicy 0",
                                       "application.activate", "window.bringForward"));
}

TEST_F(AppDelegateTest, ClosingTheWindowForgetsItAndGoesBackToAnAgent) {
    launch();
    delegate->openSettings();
    takeCalls();
    desktop.closeWindow();
    EXPECT_THAT(log.calls, ElementsAre("window.destroyed", "application.setActivationPolicy 1"));
    EXPECT_FALSE(delegate->hasSettingsWindow());
}

TEST_F(AppDelegateTest, ANewWindowAfterAClosedOneHasNothingSelected) {
    launch();
    addItems(1);
    delegate->openSettings();
    desktop.window->view->setSelectedID(delegate->itemsManager().items[0].id);
    desktop.window->view->addClicked();
    desktop.closeWindow();
    takeCalls();
    delegate->openSettings();
    EXPECT_THAT(log.calls, Contains("desktop.makeSettingsWindow 520x420"));
    EXPECT_EQ(desktop.window->view->selectedID(), std::nullopt);
    EXPECT_EQ(desktop.window->view->committedID(), std::nullopt);
    EXPECT_FALSE(desktop.window->view->showAddSheet());
}

TEST_F(AppDelegateTest, AfterTheWindowClosesTheProgramIsAnAgentAndRegularWhileItIsOpen) {
    launch();
    delegate->openSettings();
    EXPECT_THAT(log.calls, Contains("application.setActivationPolicy 0"));
    takeCalls();
    desktop.closeWindow();
    EXPECT_THAT(log.calls, Contains("application.setActivationPolicy 1"));
}

TEST_F(AppDelegateTest, AMinimisedWindowIsKeptAndSettingsBringsItBack) {
    launch();
    delegate->openSettings();
    FakeWindow* const window = desktop.window;
    // Minimising is told to nobody; the window must still be the one that comes forward.
    takeCalls();
    delegate->openSettings();
    EXPECT_EQ(desktop.window, window);
    EXPECT_THAT(log.calls, Contains("window.bringForward"));
}

TEST_F(AppDelegateTest, CallbacksThatOutliveTheDelegateDoNothing) {
    launch();
    addItems(1);
    delegate->openSettings();
    const ItemRowView row = desktop.popover->view->row(0);
    row.onTap();
    delegate.reset();
    log.calls.clear();
    mainQueue.runAll();
    row.onTap();
    cloud.postExternalChange();
    mainQueue.runAll();
    desktop.click();
    desktop.closeWindow();
    EXPECT_THAT(log.calls, IsEmpty());
}

TEST_F(AppDelegateTest, TheDelegateDiesWithItsWindowOpen) {
    launch();
    delegate->openSettings();
    takeCalls();
    delegate.reset();
    EXPECT_THAT(log.calls, ElementsAre("window.destroyed"));
}

} // namespace
} // namespace kestrel::tests
