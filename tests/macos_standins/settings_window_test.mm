// Opening and closing the settings window, and what the desktop sees of the program meanwhile.
#include "tests/macos_standins/app_fixture.h"

#include <algorithm>

namespace kestrel::tests {
namespace {

class SettingsWindowTest : public AppFixture {
  protected:
    void SetUp() override {
        launch();
        recording::reset();
    }

    static NSWindow* window() { return ordinaryWindows().firstObject; }

    /// What the system was asked while the settings opened.
    Lines calls;

    void openSettings() {
        recording::reset();
        @autoreleasepool {
            delegate.core->openSettings();
        }
        calls = linesOf({"NSPopover ", "NSApplication ",
                         "NSWindow initWithContentRect:styleMask:backing:defer: 0 0 5",
                         "NSWindow setTitle:", "NSWindow setContentViewController:",
                         "NSWindow setReleasedWhenClosed:", "NSWindow center",
                         "NSWindow setDelegate:", "NSWindow makeKeyAndOrderFront:"});
        // What comes after is how the stand-in for the system orders a window to the front.
        const auto last = std::ranges::find(calls, "NSWindow makeKeyAndOrderFront: nil");
        if (last != calls.end())
            calls.erase(last + 1, calls.end());
        runMainQueue();
    }

    static void closeWindow() {
        @autoreleasepool {
            [window() performClose:nil];
        }
        runMainQueue();
    }

    void tellOfTheClosingOf(id object) {
        [delegate windowWillClose:[NSNotification notificationWithName:NSWindowWillCloseNotification
                                                                object:object]];
    }
};

TEST_F(SettingsWindowTest, OpeningClosesThePopoverSetsThePolicyActivatesAndBuildsTheWindow) {
    recording::click(button());
    openSettings();
    EXPECT_EQ(
        calls,
        (Lines{"NSPopover performClose: nil", "NSPopover close",
               "NSApplication setActivationPolicy: 0", "NSApplication activateIgnoringOtherApps: 1",
               "NSWindow initWithContentRect:styleMask:backing:defer: 0 0 520 420 15 2 0",
               "NSWindow setTitle: Kestrel",
               "NSWindow setContentViewController: KSTSettingsViewController",
               "NSWindow setReleasedWhenClosed: 0", "NSWindow center",
               "NSWindow setDelegate: KSTAppDelegate", "NSWindow makeKeyAndOrderFront: nil"}));
    EXPECT_EQ(recording::activationPolicy(), NSApplicationActivationPolicyRegular);
}

TEST_F(SettingsWindowTest, TheWindowIsAsStated) {
    openSettings();
    ASSERT_EQ(ordinaryWindows().count, 1U);
    EXPECT_TRUE([window().title isEqualToString:@"Kestrel"]);
    EXPECT_FALSE(window().releasedWhenClosed);
    EXPECT_FALSE(window().restorable);
    EXPECT_EQ(window().delegate, delegate);
    EXPECT_TRUE(window().contentViewController != nil);
    const NSRect content = [window() contentRectForFrameRect:window().frame];
    EXPECT_TRUE(NSEqualSizes(content.size, NSMakeSize(520, 420)))
        << content.size.width << " x " << content.size.height;
}

TEST_F(SettingsWindowTest, OpeningTwiceBringsTheOneWindowForward) {
    openSettings();
    NSWindow* const first = window();
    openSettings();
    EXPECT_EQ(ordinaryWindows().count, 1U);
    EXPECT_EQ(window(), first);
    EXPECT_EQ(calls, (Lines{"NSPopover performClose: nil", "NSApplication setActivationPolicy: 0",
                            "NSApplication activateIgnoringOtherApps: 1",
                            "NSWindow makeKeyAndOrderFront: nil"}));
}

TEST_F(SettingsWindowTest, ClosingForgetsTheWindowAndMakesTheProgramAnAgentAgain) {
    openSettings();
    ASSERT_TRUE(delegate.core->hasSettingsWindow());
    EXPECT_TRUE(NSApp.active);
    recording::reset();
    recording::setActive(true);
    closeWindow();
    EXPECT_FALSE(delegate.core->hasSettingsWindow());
    EXPECT_EQ(ordinaryWindows().count, 0U);
    EXPECT_EQ(linesOf({"NSApplication "}),
              (Lines{"NSApplication setActivationPolicy: 1", "NSApplication deactivate"}));
}

TEST_F(SettingsWindowTest, AClosingInTheBackgroundActivatesNothing) {
    openSettings();
    recording::reset();
    recording::setActive(false);
    closeWindow();
    EXPECT_EQ(linesOf({"NSApplication "}), Lines{"NSApplication setActivationPolicy: 1"});
}

TEST_F(SettingsWindowTest, AClosedWindowIsLetGoOf) {
    openSettings();
    __weak NSWindow* weak = nil;
    @autoreleasepool {
        weak = window();
        EXPECT_TRUE(weak != nil);
        closeWindow();
    }
    EXPECT_TRUE(recording::runUntil([&] { return weak == nil; }));
}

TEST_F(SettingsWindowTest, AfterAnotherOpeningTheWindowAndItsViewAreNew) {
    openSettings();
    NSViewController* const first = window().contentViewController;
    closeWindow();
    openSettings();
    ASSERT_EQ(ordinaryWindows().count, 1U);
    EXPECT_NE(window().contentViewController, first);
    EXPECT_TRUE(std::ranges::count(calls, "NSWindow center"));
    EXPECT_EQ(recording::activationPolicy(), NSApplicationActivationPolicyRegular);
}

TEST_F(SettingsWindowTest, TheClosingOfAnotherWindowChangesNothing) {
    openSettings();
    recording::reset();
    NSWindow* const other = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 9, 9)
                                                        styleMask:NSWindowStyleMaskTitled
                                                          backing:NSBackingStoreBuffered
                                                            defer:YES];
    other.releasedWhenClosed = NO;
    tellOfTheClosingOf(other);
    tellOfTheClosingOf(@"no window");
    tellOfTheClosingOf(nil);
    EXPECT_TRUE(delegate.core->hasSettingsWindow());
    EXPECT_EQ(linesOf({"NSApplication "}), Lines{});
}

TEST_F(SettingsWindowTest, NoWindowAndNoSettingsWindowCountAsTheSame) {
    openSettings();
    NSWindow* const closed = window();
    closeWindow();
    recording::reset();
    tellOfTheClosingOf(closed);
    EXPECT_EQ(linesOf({"NSApplication "}), Lines{});
    tellOfTheClosingOf(nil);
    tellOfTheClosingOf(@"no window");
    EXPECT_EQ(linesOf({"NSApplication "}), (Lines{"NSApplication setActivationPolicy: 1",
                                                  "NSApplication setActivationPolicy: 1"}));
}

TEST_F(SettingsWindowTest, AClosingBeforeTheFirstSettingsWindowChangesNothing) {
    tellOfTheClosingOf(nil);
    EXPECT_EQ(linesOf({"NSApplication "}), Lines{});
}

TEST_F(SettingsWindowTest, AClickOnTheDockIconLeavesTheWindowToTheSystem) {
    openSettings();
    EXPECT_TRUE([delegate applicationShouldHandleReopen:NSApp hasVisibleWindows:YES]);
    EXPECT_EQ(recording::shownPopover(), nil);
}

} // namespace
} // namespace kestrel::tests
