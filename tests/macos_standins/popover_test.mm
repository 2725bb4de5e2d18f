// The icon's click and the popover.
#include "shells/macos/foundation/text.h"
#include "tests/macos/views_support.h"
#include "tests/macos_standins/app_fixture.h"

namespace kestrel::tests {
namespace {

class PopoverTest : public AppFixture {
  protected:
    static NSSize contentSize() { return recording::shownPopover().contentSize; }
    static NSSize preferredSize() {
        return recording::shownPopover().contentViewController.preferredContentSize;
    }
};

TEST_F(PopoverTest, AClickShowsItUnderTheIconAndMakesItsWindowKey) {
    launch();
    recording::reset();
    ASSERT_TRUE(recording::click(button()));
    NSPopover* const popover = recording::shownPopover();
    ASSERT_TRUE(popover != nil);
    EXPECT_EQ(popover.behavior, NSPopoverBehaviorTransient);
    EXPECT_TRUE(popover.animates);
    EXPECT_TRUE(NSEqualRects(popover.positioningRect, button().bounds));
    EXPECT_EQ(linesOf({"NSPopover ", "KSTMenuPopoverViewController ", "NSWindow makeKey",
                       "NSApplication "}),
              (Lines{"NSPopover setContentSize: 240 181",
                     "KSTMenuPopoverViewController setPreferredContentSize: 240 181",
                     "NSPopover showRelativeToRect:ofView:preferredEdge: NSStatusBarButton 1",
                     "NSWindow makeKeyWindow"}));
}

TEST_F(PopoverTest, ItsSizesFollowTheNumberOfItemsAtEachOpening) {
    launch();
    recording::click(button());
    EXPECT_TRUE(NSEqualSizes(contentSize(), NSMakeSize(240, 181)));
    EXPECT_TRUE(NSEqualSizes(preferredSize(), NSMakeSize(240, 181)));
    recording::click(button());
    addItems(5);
    recording::click(button());
    EXPECT_TRUE(NSEqualSizes(contentSize(), NSMakeSize(240, 223)));
    EXPECT_TRUE(NSEqualSizes(preferredSize(), NSMakeSize(240, 223)));
    recording::click(button());
    addItems(15);
    recording::click(button());
    EXPECT_TRUE(NSEqualSizes(contentSize(), NSMakeSize(240, 361)));
}

TEST_F(PopoverTest, ItFollowsTheNumberOfItemsWhileItIsOpen) {
    launch();
    recording::click(button());
    NSPopover* const popover = recording::shownPopover();
    recording::reset();
    manager().items.assign(std::vector<LauncherItem>(5, {.title = "Item", .path = "/a.app"}));
    runMainQueue();
    EXPECT_TRUE(NSEqualSizes(contentSize(), NSMakeSize(240, 223)));
    EXPECT_TRUE(NSEqualSizes(preferredSize(), NSMakeSize(240, 223)));
    EXPECT_EQ(recording::shownPopover(), popover);
    // Neither shown anew nor its animation switched: the system moves it to the new size.
    EXPECT_TRUE(popover.animates);
    EXPECT_EQ(linesOf({"NSPopover ", "KSTMenuPopoverViewController "}),
              (Lines{"NSPopover setContentSize: 240 223",
                     "KSTMenuPopoverViewController setPreferredContentSize: 240 223"}));
}

TEST_F(PopoverTest, ASecondClickClosesItWithTheButtonAsSender) {
    launch();
    recording::click(button());
    ASSERT_TRUE(recording::shownPopover() != nil);
    recording::reset();
    ASSERT_TRUE(recording::click(button()));
    EXPECT_EQ(recording::shownPopover(), nil);
    EXPECT_EQ(linesOf({"NSPopover "}),
              (Lines{"NSPopover performClose: NSStatusBarButton", "NSPopover close"}));
    recording::click(button());
    EXPECT_TRUE(recording::shownPopover() != nil);
}

TEST_F(PopoverTest, ARightClickDoesNothing) {
    launch();
    EXPECT_FALSE(recording::click(button(), NSEventTypeRightMouseUp));
    EXPECT_EQ(recording::shownPopover(), nil);
    recording::click(button());
    EXPECT_FALSE(recording::click(button(), NSEventTypeRightMouseUp));
    EXPECT_TRUE(recording::shownPopover() != nil);
}

TEST_F(PopoverTest, APressOnTheIconLeavesItShownUntilTheRelease) {
    launch();
    recording::click(button());
    NSPopover* const popover = recording::shownPopover();
    recording::reset();
    recording::press(button());
    EXPECT_EQ(recording::shownPopover(), popover);
    ASSERT_TRUE(recording::release(button()));
    EXPECT_EQ(recording::shownPopover(), nil);
    EXPECT_EQ(linesOf({"NSPopover "}),
              (Lines{"NSPopover performClose: NSStatusBarButton", "NSPopover close"}));
}

TEST_F(PopoverTest, ATapOnTheIconClosesItAsASlowPressDoes) {
    launch();
    ASSERT_TRUE(recording::tap(button()));
    ASSERT_TRUE(recording::shownPopover() != nil);
    recording::reset();
    ASSERT_TRUE(recording::tap(button()));
    EXPECT_EQ(recording::shownPopover(), nil);
    EXPECT_EQ(linesOf({"NSPopover "}),
              (Lines{"NSPopover performClose: NSStatusBarButton", "NSPopover close"}));
    recording::tap(button());
    EXPECT_TRUE(recording::shownPopover() != nil);
}

TEST_F(PopoverTest, AClickThatBeganWhileItWasShownNeverOpensItAgainWhateverClosedIt) {
    launch();
    recording::click(button());
    recording::press(button());
    [recording::shownPopover() close];
    recording::reset();
    recording::release(button());
    EXPECT_EQ(linesOf({"NSPopover "}), Lines{});
    recording::click(button());
    EXPECT_TRUE(recording::shownPopover() != nil) << "the next click is a new one";
}

TEST_F(PopoverTest, ATapIsHeardOfAfterItHasClosedIt) {
    launch();
    recording::tap(button());
    recording::tap(button(), [] { [recording::shownPopover() close]; });
    EXPECT_EQ(recording::shownPopover(), nil);
    recording::tap(button());
    EXPECT_TRUE(recording::shownPopover() != nil);
}

TEST_F(PopoverTest, AClickAfterItHasClosedOpensIt) {
    launch();
    recording::click(button());
    [recording::shownPopover() performClose:nil]; // as Escape or a click elsewhere does
    ASSERT_EQ(recording::shownPopover(), nil);
    recording::click(button());
    EXPECT_TRUE(recording::shownPopover() != nil);
    [recording::shownPopover() performClose:nil];
    recording::tap(button());
    EXPECT_TRUE(recording::shownPopover() != nil);
}

TEST_F(PopoverTest, AnActionWithoutAClickTogglesIt) {
    launch();
    for (int round = 0; round < 2; ++round) {
        recording::sendAction(button());
        EXPECT_TRUE(recording::shownPopover() != nil);
        recording::sendAction(button());
        EXPECT_EQ(recording::shownPopover(), nil);
    }
    recording::click(button());
    recording::press(button());
    [recording::shownPopover() close];
    recording::release(button());
    recording::sendAction(button());
    EXPECT_TRUE(recording::shownPopover() != nil) << "that press was another click's";
}

TEST_F(PopoverTest, APressInsideItIsNoPressOnTheIcon) {
    launch();
    recording::click(button());
    NSWindow* const inside = recording::shownPopover().contentViewController.view.window;
    recording::setCurrentEvent(mouseEvent(NSEventTypeLeftMouseDown, NSMakePoint(1, 1), inside));
    [recording::shownPopover() performClose:nil];
    EXPECT_EQ(recording::shownPopover(), nil);
}

TEST_F(PopoverTest, APressInASettingsWindowMayCloseIt) {
    launch();
    delegate.core->openSettings();
    recording::click(button());
    NSWindow* const settings = ordinaryWindows().firstObject;
    ASSERT_TRUE(recording::shownPopover() != nil && settings != nil);
    recording::setCurrentEvent(mouseEvent(NSEventTypeLeftMouseDown, NSMakePoint(1, 1), settings));
    [recording::shownPopover() performClose:nil];
    EXPECT_EQ(recording::shownPopover(), nil);
}

TEST_F(PopoverTest, TheProgramMayCloseItWhileTheIconIsPressed) {
    launch();
    recording::click(button());
    recording::press(button());
    delegate.core->openSettings();
    EXPECT_EQ(recording::shownPopover(), nil);
    recording::release(button());
    EXPECT_EQ(recording::shownPopover(), nil);
}

TEST_F(PopoverTest, AHiddenProgramComesBackWithItButIsNotActivated) {
    launch();
    recording::hideApplication();
    recording::click(button());
    EXPECT_TRUE(recording::shownPopover() != nil);
    EXPECT_EQ(linesOf({"NSApplication u", "NSApplication activate"}),
              Lines{"NSApplication unhideWithoutActivation"});
}

TEST_F(PopoverTest, StartingTheProgramAgainShowsItAndLeavesItShown) {
    launch();
    EXPECT_TRUE([delegate applicationShouldHandleReopen:NSApp hasVisibleWindows:NO]);
    EXPECT_TRUE(recording::shownPopover() != nil);
    [delegate applicationShouldHandleReopen:NSApp hasVisibleWindows:NO];
    EXPECT_TRUE(recording::shownPopover() != nil);
}

TEST_F(PopoverTest, ItIsMadeOnceAndShownAgain) {
    launch();
    recording::click(button());
    NSPopover* const first = recording::shownPopover();
    NSViewController* const content = first.contentViewController;
    recording::click(button());
    recording::click(button());
    EXPECT_EQ(recording::shownPopover(), first);
    EXPECT_EQ(recording::shownPopover().contentViewController, content);
}

} // namespace
} // namespace kestrel::tests
