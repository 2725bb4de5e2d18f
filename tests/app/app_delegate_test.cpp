#include "app/app_delegate.h"

#include "tests/fakes/fake_shell.h"
#include "tests/fakes/store_fixture.h"
#include "views/popover/menu_popover_style.h"

#include <gmock/gmock.h>

namespace kestrel::tests {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class AppDelegateTest : public StoreFixture {
  protected:
    FakeApplication application{log};
    FakeShell shell{log};
    FakeOpenPanel openPanel;
    std::unique_ptr<AppDelegate> delegate = std::make_unique<AppDelegate>(
        AppPorts{ports, application, shell, shell, shell, openPanel, shell});

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
    EXPECT_EQ(shell.button, nullptr);
    EXPECT_FALSE(delegate->hasSettingsWindow());
}

TEST_F(AppDelegateTest, LaunchingSetsThePolicyThenTheStatusItemThenThePopoverWithTheirValues) {
    takeCalls();
    delegate->applicationDidFinishLaunching();
    EXPECT_THAT(log.calls, ElementsAre("application.setActivationPolicy 1",
                                       "statusBar.statusItemWithLength -2",
                                       "symbols.named square.grid.2x2 'Kestrel'",
                                       "button.setImage square.grid.2x2 'Kestrel' at 14 regular",
                                       "button.setImageIsTemplate yes", "button.setAction",
                                       "button.sendActionOn 4", "hosts.hostMenuPopoverView",
                                       "popoverController.setPreferredContentSize 240x181",
                                       "hosts.makePopover", "popover.setContentViewController",
                                       "popover.setContentSize 240x181", "popover.setBehavior 1",
                                       "popover.setAnimates yes"));
}

TEST_F(AppDelegateTest, AMissingSymbolLeavesTheButtonWithoutImageButWithItsAction) {
    takeCalls();
    shell.hasSymbol = false;
    delegate->applicationDidFinishLaunching();
    EXPECT_THAT(log.calls, Not(Contains("button.setImageIsTemplate yes")));
    EXPECT_THAT(log.calls, Contains("button.setAction"));
    EXPECT_THAT(log.calls, Contains("button.sendActionOn 4"));
}

TEST_F(AppDelegateTest, AMissingButtonIsToleratedAndThePopoverIsStillMade) {
    takeCalls();
    shell.hasButton = false;
    delegate->applicationDidFinishLaunching();
    EXPECT_THAT(log.calls, Not(Contains("symbols.named square.grid.2x2 'Kestrel'")));
    EXPECT_NE(shell.popover, nullptr);
    delegate->applicationShouldHandleReopen();
    EXPECT_FALSE(shell.popover->isShown());
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
    shell.button->click();
    EXPECT_THAT(log.calls, ElementsAre("popover.setContentSize 240x181",
                                       "popoverController.setPreferredContentSize 240x181",
                                       "popover.showRelativeTo button edge 1",
                                       "popoverController.makeWindowKey"));
}

TEST_F(AppDelegateTest, With20ItemsThePopoverOpens240By361) {
    launch();
    addItems(20);
    shell.button->click();
    EXPECT_EQ(shell.popover->contentSize, (Size{240, 361}));
    EXPECT_TRUE(shell.popover->isShown());
}

TEST_F(AppDelegateTest, AddingItemsWhileThePopoverIsClosedChangesItsSizeAtTheNextOpening) {
    launch();
    shell.button->click();
    shell.button->click();
    addItems(5);
    EXPECT_EQ(shell.popover->contentSize, (Size{240, 181}));
    shell.button->click();
    EXPECT_EQ(shell.popover->contentSize, (Size{240, 223}));
}

TEST_F(AppDelegateTest, ASecondClickOnTheIconClosesThePopover) {
    launch();
    shell.button->click();
    takeCalls();
    shell.button->click();
    EXPECT_THAT(log.calls, ElementsAre("popover.performClose"));
    EXPECT_FALSE(shell.popover->isShown());
}

TEST_F(AppDelegateTest, ARightClickSendsNoActionBecauseOnlyLeftMouseUpDoes) {
    takeCalls();
    delegate->applicationDidFinishLaunching();
    EXPECT_THAT(log.calls, Contains("button.sendActionOn 4"));
    EXPECT_EQ(static_cast<unsigned>(EventMask::leftMouseUp), 4U);
}

TEST_F(AppDelegateTest, StartingTheProgramAgainOpensThePopoverAndLeavesAnOpenOneOpen) {
    launch();
    delegate->applicationShouldHandleReopen();
    EXPECT_TRUE(shell.popover->isShown());
    takeCalls();
    delegate->applicationShouldHandleReopen();
    EXPECT_TRUE(shell.popover->isShown());
    EXPECT_THAT(log.calls, IsEmpty());
}

TEST_F(AppDelegateTest, LaunchingAnItemClosesThePopoverOneTurnLater) {
    launch();
    addItems(1);
    shell.button->click();
    takeCalls();
    shell.menuPopoverView->row(0).onTap();
    EXPECT_THAT(log.calls, ElementsAre("workspace.openApplication /apps/one"));
    mainQueue.runTurn();
    EXPECT_THAT(log.calls,
                ElementsAre("workspace.openApplication /apps/one", "popover.performClose"));
}

TEST_F(AppDelegateTest, QuitTerminatesTheApplication) {
    launch();
    shell.menuPopoverView->quitClicked();
    EXPECT_THAT(log.calls, ElementsAre("application.terminate"));
}

TEST_F(AppDelegateTest, SettingsClosesThePopoverAndBuildsTheWindowWithItsValues) {
    launch();
    shell.button->click();
    takeCalls();
    shell.menuPopoverView->settingsClicked();
    EXPECT_THAT(log.calls,
                ElementsAre("popover.performClose", "application.setActivationPolicy 0",
                            "application.activateIgnoringOtherApps", "hosts.hostSettingsView",
                            "windows.makeWindow 0,0 520x420 style 15 backing 2 not deferred",
                            "window.setTitle Kestrel", "window.setContentViewController",
                            "window.setReleasedWhenClosed no", "window.center",
                            "window.setDelegate", "window.makeKeyAndOrderFront"));
}

TEST_F(AppDelegateTest, ChoosingSettingsTwiceYieldsOneWindowBroughtToTheFrontBothTimes) {
    launch();
    delegate->openSettings();
    takeCalls();
    delegate->openSettings();
    EXPECT_THAT(log.calls, ElementsAre("popover.performClose", "application.setActivationPolicy 0",
                                       "application.activateIgnoringOtherApps",
                                       "window.makeKeyAndOrderFront"));
}

TEST_F(AppDelegateTest, ClosingTheWindowForgetsItAndGoesBackToAnAgent) {
    launch();
    delegate->openSettings();
    takeCalls();
    shell.window->close();
    EXPECT_THAT(log.calls, ElementsAre("window.destroyed", "application.setActivationPolicy 1"));
    EXPECT_FALSE(delegate->hasSettingsWindow());
}

TEST_F(AppDelegateTest, ANewWindowAfterAClosedOneIsCentredWithNothingSelected) {
    launch();
    addItems(1);
    delegate->openSettings();
    shell.settingsView->setSelectedID(delegate->itemsManager().items[0].id);
    shell.settingsView->addClicked();
    shell.window->close();
    takeCalls();
    delegate->openSettings();
    EXPECT_THAT(log.calls,
                Contains("windows.makeWindow 0,0 520x420 style 15 backing 2 not deferred"));
    EXPECT_THAT(log.calls, Contains("window.center"));
    EXPECT_EQ(shell.settingsView->selectedID(), std::nullopt);
    EXPECT_EQ(shell.settingsView->committedID(), std::nullopt);
    EXPECT_FALSE(shell.settingsView->showAddSheet());
}

TEST_F(AppDelegateTest, AfterTheWindowClosesTheProgramIsAnAgentAndRegularWhileItIsOpen) {
    launch();
    delegate->openSettings();
    EXPECT_THAT(log.calls, Contains("application.setActivationPolicy 0"));
    takeCalls();
    shell.window->close();
    EXPECT_THAT(log.calls, Contains("application.setActivationPolicy 1"));
}

TEST_F(AppDelegateTest, AMinimisedWindowIsKeptAndSettingsBringsItBack) {
    launch();
    delegate->openSettings();
    FakeWindow* const window = shell.window;
    // Minimising tells the delegate nothing; the window must still be the one that comes forward.
    takeCalls();
    delegate->openSettings();
    EXPECT_EQ(shell.window, window);
    EXPECT_THAT(log.calls, Contains("window.makeKeyAndOrderFront"));
}

TEST_F(AppDelegateTest, TheClosingOfAnotherWindowChangesNothing) {
    launch();
    delegate->openSettings();
    FakeWindow other(log);
    takeCalls();
    shell.window->delegate()->windowWillClose(&other);
    EXPECT_THAT(log.calls, IsEmpty());
    EXPECT_TRUE(delegate->hasSettingsWindow());
    shell.window->delegate()->windowWillClose(nullptr);
    EXPECT_TRUE(delegate->hasSettingsWindow());
}

TEST_F(AppDelegateTest, NoWindowAndNoSettingsWindowCountAsTheSame) {
    launch();
    delegate->openSettings();
    WindowDelegate* const windowDelegate = shell.window->delegate();
    shell.window->close();
    takeCalls();
    windowDelegate->windowWillClose(nullptr);
    EXPECT_THAT(log.calls, ElementsAre("application.setActivationPolicy 1"));
}

TEST_F(AppDelegateTest, CallbacksThatOutliveTheDelegateDoNothing) {
    launch();
    addItems(1);
    const ItemRowView row = shell.menuPopoverView->row(0);
    row.onTap();
    delegate.reset();
    log.calls.clear();
    mainQueue.runAll();
    row.onTap();
    cloud.postExternalChange();
    mainQueue.runAll();
    EXPECT_THAT(log.calls, IsEmpty());
}

TEST_F(AppDelegateTest, TheDelegateDiesWithItsWindowOpenAndIsNotCalledAgain) {
    launch();
    delegate->openSettings();
    takeCalls();
    delegate.reset();
    EXPECT_THAT(log.calls, ElementsAre("window.setDelegate none", "window.destroyed"));
}

} // namespace
} // namespace kestrel::tests
