// From the entry to the icon in the bar.
#include "shells/macos/foundation/text.h"
#include "tests/macos/views_support.h"
#include "tests/macos_standins/app_fixture.h"

// The entry itself, under a name of its own: the tests have a main function already.
#define main kestrelMain
#include "shells/macos/main.mm"
#undef main

namespace kestrel::tests {
namespace {

const Lines startUpCalls{"NSUbiquitousKeyValueStore ",
                         "NSApplication setActivationPolicy:",
                         "NSStatusBar ",
                         "NSImage imageWithSystemSymbolName:accessibilityDescription: "
                         "square.grid.2x2 Kestrel",
                         "NSImageSymbolConfiguration ",
                         "NSImage imageWithSymbolConfiguration: 14 0",
                         "NSImage setTemplate:",
                         "NSStatusBarButton ",
                         "KSTMenuPopoverViewController ",
                         "NSPopover "};

class StartUpTest : public AppFixture {
  protected:
    ~StartUpTest() override { ::delegate = nil; }
};

TEST_F(StartUpTest, TheEntryRunsTheApplicationWithItsDelegate) {
    __block id delegateWhileRunning = nil;
    __block NSUInteger statusItems = 0;
    __block NSMenu* mainMenu = nil;
    __block Lines calls;
    dispatch_async(dispatch_get_main_queue(), ^{
        delegateWhileRunning = NSApp.delegate;
        statusItems = recording::statusItems().count;
        mainMenu = NSApp.mainMenu;
        calls = linesOf(startUpCalls);
        stopApplication();
    });
    EXPECT_EQ(kestrelMain(), 0);
    EXPECT_TRUE([delegateWhileRunning isKindOfClass:[KSTAppDelegate class]]);
    EXPECT_EQ(statusItems, 1U);
    EXPECT_EQ(mainMenu.numberOfItems, 3);
    EXPECT_EQ(calls,
              (Lines{"NSUbiquitousKeyValueStore synchronize",
                     "NSApplication setActivationPolicy: 1", "NSStatusBar statusItemWithLength: -2",
                     "NSImageSymbolConfiguration configurationWithPointSize:weight: 14 0",
                     "NSImage imageWithSystemSymbolName:accessibilityDescription: "
                     "square.grid.2x2 Kestrel",
                     "NSImage imageWithSymbolConfiguration: 14 0",
                     "NSStatusBarButton setImage: square.grid.2x2", "NSImage setTemplate: 1",
                     "NSStatusBarButton setTarget: KSTAppDelegate",
                     "NSStatusBarButton setAction: statusBarButtonClicked:",
                     "NSStatusBarButton sendActionOn: 4",
                     "KSTMenuPopoverViewController setPreferredContentSize: 240 181",
                     "NSPopover setContentViewController: KSTMenuPopoverViewController",
                     "NSPopover setContentSize: 240 181", "NSPopover setBehavior: 1",
                     "NSPopover setAnimates: 1"}));
}

TEST_F(StartUpTest, ConstructionMakesTheStoreAndSetsNoPolicy) {
    makeDelegate();
    EXPECT_EQ(linesOf(startUpCalls), Lines{"NSUbiquitousKeyValueStore synchronize"});
    EXPECT_EQ(recording::statusItems().count, 0U);
}

TEST_F(StartUpTest, TheIconIsATemplateWithADescriptionAndItsActionGoesToTheDelegate) {
    launch();
    ASSERT_TRUE(button() != nil);
    EXPECT_EQ(recording::statusItems().firstObject.length, -2);
    EXPECT_TRUE([recording::symbolName(button().image) isEqualToString:@"square.grid.2x2"]);
    EXPECT_TRUE([button().image.accessibilityDescription isEqualToString:@"Kestrel"]);
    EXPECT_TRUE(recording::isTemplate(button().image));
    EXPECT_EQ(button().target, delegate);
    EXPECT_TRUE([NSStringFromSelector((SEL _Nonnull)button().action)
        isEqualToString:@"statusBarButtonClicked:"]);
    EXPECT_EQ(recording::actionMask(button()), 4U);
}

TEST_F(StartUpTest, AMissingSymbolLeavesTheButtonWithItsAction) {
    recording::hideSymbol(@"square.grid.2x2");
    launch();
    EXPECT_EQ(button().image, nil);
    EXPECT_EQ(linesOf({"NSImage setTemplate:", "NSStatusBarButton "}),
              (Lines{"NSStatusBarButton setTarget: KSTAppDelegate",
                     "NSStatusBarButton setAction: statusBarButtonClicked:",
                     "NSStatusBarButton sendActionOn: 4"}));
    EXPECT_TRUE(recording::click(button()));
    EXPECT_TRUE(recording::shownPopover() != nil);
}

TEST_F(StartUpTest, AnItemWithoutButtonIsTolerated) {
    recording::makeNextStatusItemWithoutButton();
    EXPECT_NO_THROW(launch());
    EXPECT_EQ(recording::statusItems().count, 1U);
    EXPECT_EQ(button(), nil);
    EXPECT_EQ(linesOf({"NSImage", "NSStatusBarButton "}), Lines{});
    EXPECT_EQ(recording::count("NSPopover setContentViewController:"), 1);
    recording::reset();
    EXPECT_TRUE([delegate applicationShouldHandleReopen:NSApp hasVisibleWindows:NO]);
    EXPECT_EQ(recording::shownPopover(), nil);
    EXPECT_EQ(linesOf({"NSPopover ", "KSTMenuPopoverViewController ", "NSWindow "}), Lines{});
}

TEST_F(StartUpTest, AStoredListArrivesOneTurnAfterConstruction) {
    [NSUserDefaults.standardUserDefaults setObject:macos_shell::toNSData(listOf("Stored"))
                                            forKey:@"launcherItems"];
    makeDelegate();
    EXPECT_TRUE(manager().items.empty());
    runMainQueue();
    ASSERT_EQ(manager().items.size(), 1U);
    EXPECT_EQ(manager().items[0].title, "Stored");
}

} // namespace
} // namespace kestrel::tests
