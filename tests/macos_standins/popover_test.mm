// The icon's click and the popover.
#include "shells/macos/foundation/text.h"
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

TEST_F(PopoverTest, APressElsewhereMayCloseItAndOneOnTheIconMayNot) {
    launch();
    recording::click(button());
    NSPopover* const popover = recording::shownPopover();
    const id<NSPopoverDelegate> popoverDelegate = popover.delegate;
    const NSRect icon = button().window.frame;
    recording::setPressedMouseButtons(1);
    recording::setMouseLocation(NSMakePoint(icon.origin.x - 5, icon.origin.y + 5));
    EXPECT_TRUE([popoverDelegate popoverShouldClose:popover]);
    recording::setMouseLocation(NSMakePoint(icon.origin.x + 5, icon.origin.y + 5));
    EXPECT_FALSE([popoverDelegate popoverShouldClose:popover]);
    recording::setPressedMouseButtons(0);
    EXPECT_TRUE([popoverDelegate popoverShouldClose:popover]);
}

TEST_F(PopoverTest, TheProgramMayCloseItWhileTheIconIsPressed) {
    launch();
    recording::click(button());
    recording::setPressedMouseButtons(1);
    delegate.core->openSettings();
    EXPECT_EQ(recording::shownPopover(), nil);
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
