// What the stand-ins keep of a view, for a test to look at.
#import <AppKit/AppKit.h>
#import <QuartzCore/QuartzCore.h>
#include <gtest/gtest.h>
#include <macos-check/recording.h>

namespace {

NSWindow* windowWith(NSWindowStyleMask style) {
    NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 40, 20)
                                                   styleMask:style
                                                     backing:NSBackingStoreBuffered
                                                       defer:YES];
    window.releasedWhenClosed = NO;
    return window;
}

} // namespace

TEST(ViewsTest, ALayerKeepsItsCorners) {
    NSView* view = [[NSView alloc] initWithFrame:NSZeroRect];
    EXPECT_TRUE(view.layer == nil);
    view.wantsLayer = YES;
    view.layer.cornerRadius = 5;
    view.layer.cornerCurve = kCACornerCurveContinuous;
    EXPECT_EQ(view.layer.cornerRadius, 5);
    EXPECT_TRUE([view.layer.cornerCurve isEqualToString:kCACornerCurveContinuous]);
}

TEST(ViewsTest, ATrackingAreaKeepsTheOptionsOfAMac) {
    const NSTrackingAreaOptions options =
        NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways | NSTrackingInVisibleRect;
    NSView* view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 40, 20)];
    NSTrackingArea* area = [[NSTrackingArea alloc] initWithRect:NSZeroRect
                                                        options:options
                                                          owner:view
                                                       userInfo:nil];
    [view addTrackingArea:area];
    ASSERT_EQ(view.trackingAreas.count, 1u);
    NSTrackingArea* kept = view.trackingAreas.firstObject;
    EXPECT_EQ(kept.options, options);
    EXPECT_EQ(kept.owner, view);
    [view removeTrackingArea:area];
    EXPECT_EQ(view.trackingAreas.count, 0u);
}

TEST(ViewsTest, AWindowKeepsItsStyleMask) {
    for (const NSWindowStyleMask style :
         {NSWindowStyleMask{NSWindowStyleMaskBorderless},
          NSWindowStyleMask{NSWindowStyleMaskTitled},
          NSWindowStyleMaskTitled | NSWindowStyleMaskClosable,
          NSWindowStyleMaskTitled | NSWindowStyleMaskFullSizeContentView})
        EXPECT_EQ(windowWith(style).styleMask, style);
}

TEST(ViewsTest, AWindowWithoutATitleBarCannotBecomeKey) {
    EXPECT_FALSE(windowWith(NSWindowStyleMaskBorderless).canBecomeKeyWindow);
    EXPECT_TRUE(windowWith(NSWindowStyleMaskTitled).canBecomeKeyWindow);
    EXPECT_TRUE(windowWith(NSWindowStyleMaskResizable).canBecomeKeyWindow);
}

TEST(ViewsTest, AWindowHoldsUpTerminationWhileModalUnlessItIsToldOtherwise) {
    NSWindow* window = windowWith(NSWindowStyleMaskTitled);
    EXPECT_TRUE(window.preventsApplicationTerminationWhenModal);
    window.preventsApplicationTerminationWhenModal = NO;
    EXPECT_FALSE(window.preventsApplicationTerminationWhenModal);
}

TEST(ViewsTest, AWindowKeepsItsDefaultButton) {
    NSWindow* window = windowWith(NSWindowStyleMaskTitled);
    EXPECT_TRUE(window.defaultButtonCell == nil);
    NSButton* button = [NSButton buttonWithTitle:@"Done" target:nil action:nil];
    [window.contentView addSubview:button];
    window.defaultButtonCell = (NSButtonCell*)button.cell;
    EXPECT_EQ(window.defaultButtonCell, button.cell);
}

TEST(ViewsTest, AViewNeedsDisplayUntilItIsDrawn) {
    NSWindow* window = windowWith(NSWindowStyleMaskTitled);
    NSView* view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 40, 20)];
    window.contentView = view;
    [window orderFront:nil];
    [view displayIfNeeded];
    EXPECT_FALSE(view.needsDisplay);
    view.needsDisplay = YES;
    EXPECT_TRUE(view.needsDisplay);
    [window close];
}
