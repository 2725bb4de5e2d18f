// The popover's view controller with its views, driven as AppKit drives them.

#include "shells/macos/views/kit/centered_column_view.h"
#include "shells/macos/views/kit/face_button.h"
#include "shells/macos/views/kit/symbol_view.h"
#include "tests/macos/popover_fixture.h"

namespace kestrel::tests {
namespace {

class MacPopoverViewTest : public MacPopoverFixture {};

TEST_F(MacPopoverViewTest, ShowsTheItemsInTheirOrder) {
    EXPECT_EQ(shownTitles(), (std::vector<std::string>{"First", "Second", "Third"}));
    EXPECT_FALSE(scrollView().hidden);
    EXPECT_TRUE(findView<KSTCenteredColumnView>(controller_.view).hidden);
}

TEST_F(MacPopoverViewTest, TheSizesAreTheStatedOnes) {
    const NSSize size = controller_.view.frame.size;
    EXPECT_EQ(size.width, 240);
    EXPECT_EQ(size.height, 3 * 34 + 12 + 41);
    EXPECT_EQ(scrollView().frame.size.height, 3 * 34 + 12);
    EXPECT_EQ(list().frame.size.height, 3 * 34 + 12);
    EXPECT_TRUE(NSEqualPoints(list().frame.origin, NSZeroPoint));
    EXPECT_FALSE(scrollView().hasVerticalScroller);
    EXPECT_FALSE(scrollView().hasHorizontalScroller);

    for (KSTPopoverRowView* row in list().rows) {
        EXPECT_EQ(row.frame.origin.y, 6 + 34 * static_cast<double>(row.position));
        EXPECT_EQ(row.frame.size.height, 34);
        EXPECT_EQ(row.frame.size.width, 240);
        const NSRect highlight = findView<KSTRoundedFillView>(row).frame;
        EXPECT_EQ(highlight.origin.x, 4);
        EXPECT_EQ(highlight.size.width, 232);
        EXPECT_EQ(highlight.size.height, 34);
        const NSRect picture = findView<KSTItemPictureView>(row).frame;
        EXPECT_EQ(picture.origin.x, 12);
        EXPECT_EQ(picture.origin.y, 8);
        EXPECT_EQ(picture.size.width, 18);
        EXPECT_EQ(picture.size.height, 18);
        EXPECT_EQ(findView<NSTextField>(row).frame.origin.x, 12 + 18 + 10);
    }
}

TEST_F(MacPopoverViewTest, AFullListIsCappedAndScrolls) {
    setItems(std::vector<LauncherItem>(10, first));
    show();
    EXPECT_EQ(controller_.view.frame.size.height, 320 + 41);
    EXPECT_EQ(scrollView().frame.size.height, 320);
    EXPECT_EQ(list().frame.size.height, 352);
    command(@selector(scrollToEndOfDocument:), controller_);
    EXPECT_EQ(scrollView().documentVisibleRect.origin.y, 32) << "the padding below shows as well";
}

TEST_F(MacPopoverViewTest, WithoutItemsTheEmptyStateShows) {
    setItems({});
    show();
    EXPECT_EQ(controller_.view.frame.size.height, 181);
    EXPECT_TRUE(scrollView().hidden);
    KSTCenteredColumnView* const state = findView<KSTCenteredColumnView>(controller_.view);
    EXPECT_FALSE(state.hidden);
    EXPECT_EQ(state.frame.size.height, 140);
    NSTextField* const title = fieldWith(state, "No items yet");
    NSTextField* const hint = fieldWith(state, "Open Settings to add items.");
    ASSERT_TRUE(title && hint);
    EXPECT_EQ(hint.frame.origin.y - title.frame.origin.y - title.frame.size.height, 8);
    EXPECT_NEAR(title.frame.origin.x + title.frame.size.width / 2, 120, 1);
}

TEST_F(MacPopoverViewTest, TheEmptyStateGoesWithTheFirstItem) {
    setItems({});
    show();
    manager.items.append(first);
    redraw();
    EXPECT_FALSE(scrollView().hidden);
    EXPECT_TRUE(findView<KSTCenteredColumnView>(controller_.view).hidden);
    EXPECT_EQ(shownTitles(), std::vector<std::string>{"First"});
}

TEST_F(MacPopoverViewTest, TheFooterStandsAtTheBottomWhenThePopoverGrows) {
    setItems({});
    show();
    [controller_.view setFrameSize:NSMakeSize(240, 255)];
    NSButton* const settings = buttonWith(controller_.view, "Settings");
    NSButton* const quit = buttonWith(controller_.view, "Quit");
    EXPECT_EQ(settings.frame.origin.y, 0);
    EXPECT_EQ(settings.frame.size.height, 40);
    EXPECT_EQ(settings.frame.origin.x, 14);
    EXPECT_EQ(quit.frame.origin.x + quit.frame.size.width, 240 - 14);
    EXPECT_EQ(scrollView().frame.origin.y, 41);
    EXPECT_EQ(scrollView().frame.size.height, 255 - 41);
}

TEST_F(MacPopoverViewTest, AChangeOfTheListIsDrawnInTheMainQueuesNextTurn) {
    manager.items.remove({1});
    EXPECT_EQ(shownTitles().size(), 3U) << "the signal comes before the change";
    redraw();
    EXPECT_EQ(shownTitles(), (std::vector<std::string>{"First", "Third"}));
    EXPECT_EQ(list().frame.size.height, 2 * 34 + 12);
}

TEST_F(MacPopoverViewTest, ThePointerHighlightsTheRowThatItIsIn) {
    EXPECT_EQ(highlightedRow(), -1);
    pointAt(1);
    redraw();
    EXPECT_EQ(highlightedRow(), 1);
    pointAt(2);
    redraw();
    EXPECT_EQ(highlightedRow(), 2);
    pointElsewhere();
    redraw();
    EXPECT_EQ(highlightedRow(), -1);
}

TEST_F(MacPopoverViewTest, TheHighlightHasSmoothCornersAndIsFaint) {
    KSTRoundedFillView* const highlight = findView<KSTRoundedFillView>(row(0));
    EXPECT_EQ(highlight.radius, 5);
    EXPECT_TRUE([highlight.color isEqual:NSColor.labelColor]);
    EXPECT_NEAR(highlight.alphaValue, 0.08, 1e-6);
    [highlight updateLayer];
    EXPECT_TRUE(highlight.wantsUpdateLayer);
    EXPECT_EQ(highlight.layer.cornerRadius, 5);
    EXPECT_TRUE([highlight.layer.cornerCurve isEqualToString:kCACornerCurveContinuous]);
}

TEST_F(MacPopoverViewTest, TheListHearsOfThePointerWhoeverHasTheKeys) {
    NSArray<NSTrackingArea*>* const areas = hoverAreas(list());
    ASSERT_EQ(areas.count, 1U);
    EXPECT_EQ(areas.firstObject.options, NSTrackingMouseEnteredAndExited | NSTrackingMouseMoved |
                                             NSTrackingActiveAlways | NSTrackingInVisibleRect);
    [controller_ discardView];
    EXPECT_EQ(hoverAreas(list()).count, 0U);
}

TEST_F(MacPopoverViewTest, ThePointerHighlightsNothingBesideTheRows) {
    pointAt(0);
    window_->movePointer(NSMakePoint(120, 3), list(), list());
    redraw();
    EXPECT_EQ(highlightedRow(), -1) << "the padding is no row";
    pointAt(2);
    window_->movePointer(NSMakePoint(120, 6 + 3 * 34), list(), list());
    redraw();
    EXPECT_EQ(highlightedRow(), -1);
    window_->movePointer(NSMakePoint(120, 6 + 34), list(), list());
    redraw();
    EXPECT_EQ(highlightedRow(), 1);
}

TEST_F(MacPopoverViewTest, ScrollingHighlightsTheRowThatComesUnderThePointer) {
    setItems(std::vector<LauncherItem>(10, first));
    show();
    window_->movePointer(NSMakePoint(120, 6 + 34 + 30), list(), list());
    redraw();
    ASSERT_EQ(highlightedRow(), 1);
    [scrollView().contentView scrollToPoint:NSMakePoint(0, 32)];
    redraw();
    EXPECT_EQ(highlightedRow(), 2);
    window_->placePointer(NSMakePoint(-100, -100), list());
    [scrollView().contentView scrollToPoint:NSZeroPoint];
    redraw();
    EXPECT_EQ(highlightedRow(), -1);
}

TEST_F(MacPopoverViewTest, TheKeysKeepTheirRowWhenTheListScrollsUnderThePointer) {
    setItems(std::vector<LauncherItem>(10, appItem("Long")));
    show();
    window_->movePointer(NSMakePoint(120, 6 + 34 + 30), list(), list());
    command(@selector(scrollToEndOfDocument:), controller_);
    ASSERT_EQ(scrollView().documentVisibleRect.origin.y, 32);
    redraw();
    EXPECT_EQ(highlightedRow(), 9);
    type(@"l");
    ASSERT_EQ(scrollView().documentVisibleRect.origin.y, 0);
    redraw();
    EXPECT_EQ(highlightedRow(), 0);
    window_->movePointer(NSMakePoint(120, 6 + 3 * 34 + 10), list(), list());
    redraw();
    EXPECT_EQ(highlightedRow(), 3) << "the pointer acts again when it moves";
}

TEST_F(MacPopoverViewTest, ThePointerReportsItselfAgainAfterAChangeOfTheList) {
    pointAt(1);
    manager.items.assign({second, first});
    redraw();
    EXPECT_EQ(highlightedRow(), -1);
    pointAt(1);
    redraw();
    EXPECT_EQ(highlightedRow(), 1);
}

TEST_F(MacPopoverViewTest, ATooltipShowsATitleThatIsCut) {
    EXPECT_TRUE(row(0).toolTip == nil);
    const std::string title = "A title that is far too long for one row of the popover";
    setItems({appItem(title), second});
    redraw();
    EXPECT_EQ(textOf(row(0).toolTip), title);
    EXPECT_TRUE(row(1).toolTip == nil);
    setItems({first, second});
    redraw();
    EXPECT_TRUE(row(0).toolTip == nil);
}

TEST_F(MacPopoverViewTest, AClickAnywhereInARowLaunchesItAndThenCloses) {
    KSTPopoverRowView* const second = row(1);
    const NSPoint atTheEnd = [second convertPoint:NSMakePoint(235, 17) toView:nil];
    [second mouseDown:mouseEvent(NSEventTypeLeftMouseDown, atTheEnd, window_->get())];
    [second mouseUp:mouseEvent(NSEventTypeLeftMouseUp, atTheEnd, window_->get())];
    EXPECT_EQ(log.calls, std::vector<std::string>{"terminal.runInNewWindow ls"});
    mainQueue.runAll();
    EXPECT_EQ(log.calls.back(), "close");
}

TEST_F(MacPopoverViewTest, AButtonLetGoOutsideTheRowLaunchesNothing) {
    const NSPoint outside = [row(1) convertPoint:NSMakePoint(100, 50) toView:nil];
    [row(1) mouseUp:mouseEvent(NSEventTypeLeftMouseUp, outside, window_->get())];
    mainQueue.runAll();
    EXPECT_TRUE(log.calls.empty());
}

TEST_F(MacPopoverViewTest, TheWholeRowTakesClicks) {
    const NSRect frame = row(0).frame;
    const NSPoint onTheTitle = NSMakePoint(frame.origin.x + 60, frame.origin.y + 17);
    EXPECT_EQ([row(0) hitTest:onTheTitle], row(0));
    EXPECT_TRUE([row(0) acceptsFirstMouse:nil]);
}

TEST_F(MacPopoverViewTest, OnlyAChangeOfTheListShowsTheRowsAnew) {
    NSTextField* const title = findView<NSTextField>(row(0));
    title.stringValue = @"as it was drawn";
    pointAt(1);
    redraw();
    ASSERT_EQ(highlightedRow(), 1);
    EXPECT_EQ(textOf(title.stringValue), "as it was drawn");
    manager.items.assign({first, second, third});
    redraw();
    EXPECT_EQ(textOf(title.stringValue), "First");
}

TEST_F(MacPopoverViewTest, AssistiveProgramsSeeANamedListOfButtonsWithTheTitles) {
    EXPECT_TRUE([list().accessibilityRole isEqualToString:NSAccessibilityListRole]);
    EXPECT_EQ(textOf(list().accessibilityLabel), "Items");
    EXPECT_TRUE([row(0).accessibilityRole isEqualToString:NSAccessibilityButtonRole]);
    EXPECT_EQ(textOf(row(0).accessibilityLabel), "First");
    EXPECT_TRUE([row(0) accessibilityPerformPress]);
    EXPECT_EQ(log.calls, std::vector<std::string>{"workspace.openApplication /apps/one"});
}

TEST_F(MacPopoverViewTest, AssistiveProgramsDoNotMeetThePartsOfARow) {
    for (NSControl* part : {(NSControl*)findView<KSTItemPictureView>(row(0)),
                            (NSControl*)findView<NSTextField>(row(0))}) {
        EXPECT_FALSE(part.accessibilityElement);
        NSCell* const cell = part.cell;
        EXPECT_FALSE(cell.accessibilityElement);
    }
}

TEST_F(MacPopoverViewTest, TheFooterButtonsCallBack) {
    click(buttonWith(controller_.view, "Settings"));
    click(buttonWith(controller_.view, "Quit"));
    EXPECT_EQ(log.calls, (std::vector<std::string>{"settings", "quit"}));
}

TEST_F(MacPopoverViewTest, ArrowsHomeAndEndMoveTheHighlight) {
    struct {
        SEL key;
        long row;
    } const steps[] = {
        {@selector(moveDown:), 0},
        {@selector(moveDown:), 1},
        {@selector(moveUp:), 0},
        {@selector(moveUp:), 0},
    };
    for (const auto& step : steps) {
        command(step.key, controller_);
        redraw();
        EXPECT_EQ(highlightedRow(), step.row);
    }
    command(@selector(scrollToEndOfDocument:), controller_);
    redraw();
    EXPECT_EQ(highlightedRow(), 2);
    command(@selector(scrollToBeginningOfDocument:), controller_);
    redraw();
    EXPECT_EQ(highlightedRow(), 0);
    command(@selector(scrollPageDown:), controller_);
    redraw();
    EXPECT_EQ(highlightedRow(), 2);
    command(@selector(scrollPageUp:), controller_);
    redraw();
    EXPECT_EQ(highlightedRow(), 0);
}

TEST_F(MacPopoverViewTest, ReturnLaunchesTheHighlightedRow) {
    command(@selector(moveDown:), controller_);
    command(@selector(insertNewline:), controller_);
    EXPECT_EQ(log.calls, std::vector<std::string>{"workspace.openApplication /apps/one"});
}

TEST_F(MacPopoverViewTest, EscapeClosesThePopoverAndLaunchesNothing) {
    command(@selector(moveDown:), controller_);
    command(@selector(cancelOperation:), controller_);
    EXPECT_EQ(log.calls, std::vector<std::string>{"close"});
}

TEST_F(MacPopoverViewTest, SpaceLaunchesTheHighlightedRow) {
    type(@" ");
    EXPECT_TRUE(log.calls.empty()) << "no row is highlighted";
    command(@selector(moveDown:), controller_);
    command(@selector(moveDown:), controller_);
    type(@" ");
    EXPECT_EQ(log.calls, std::vector<std::string>{"terminal.runInNewWindow ls"});
    mainQueue.runAll();
    EXPECT_EQ(log.calls.back(), "close");
}

TEST_F(MacPopoverViewTest, TypingHighlightsTheRowThatItNames) {
    type(@"t");
    redraw();
    EXPECT_EQ(highlightedRow(), 2);
    type(@" ");
    EXPECT_TRUE(log.calls.empty()) << "a space belongs to the name that is being typed";
}

TEST_F(MacPopoverViewTest, AButtonWithTheKeysHasARingAroundItsFace) {
    KSTFaceButton* const settings = (KSTFaceButton*)button("Settings");
    const NSRect ring = settings.focusRingMaskBounds;
    EXPECT_TRUE(NSContainsRect(ring, settings.symbol.frame));
    EXPECT_TRUE(NSContainsRect(ring, settings.label.frame));
    EXPECT_TRUE(NSContainsRect(settings.bounds, ring));
    EXPECT_LT(ring.size.height, settings.bounds.size.height) << "of the face, not of the footer";
}

TEST_F(MacPopoverViewTest, OpeningAndClosingTakeTheHighlightAway) {
    pointAt(1);
    redraw();
    [controller_ viewDidDisappear];
    redraw();
    EXPECT_EQ(highlightedRow(), -1);
    pointAt(1);
    [controller_ viewWillAppear];
    EXPECT_EQ(highlightedRow(), -1);
    [controller_ viewDidDisappear];
    pointAt(1);
    redraw();
    EXPECT_EQ(highlightedRow(), 1) << "the pointer moves in the same row after the next opening";
}

TEST_F(MacPopoverViewTest, AppearingTakesTheKeys) {
    [controller_ viewDidAppear];
    EXPECT_EQ(window_->get().firstResponder, controller_.view);
    EXPECT_TRUE(controller_.view.acceptsFirstResponder);
}

TEST_F(MacPopoverViewTest, TheBackgroundOfARowIsDrawnAgainWhenTheAppearanceChanges) {
    KSTRoundedFillView* const highlight = findView<KSTRoundedFillView>(row(0));
    highlight.needsDisplay = NO;
    [highlight viewDidChangeEffectiveAppearance];
    EXPECT_TRUE(highlight.needsDisplay);
}

TEST_F(MacPopoverViewTest, NothingHappensAfterTheViewWasDiscarded) {
    KSTPopoverRowView* const second = row(1);
    second.underPointer = YES;
    [controller_ discardView];
    redraw();
    manager.items.remove({0});
    redraw();
    EXPECT_EQ(shownTitles().size(), 3U) << "what was drawn stays";
    second.underPointer = NO;
    EXPECT_TRUE([second accessibilityPerformPress]);
    command(@selector(moveDown:), controller_);
    command(@selector(insertNewline:), controller_);
    command(@selector(cancelOperation:), controller_);
    type(@"t");
    [controller_ viewWillAppear];
    [controller_ viewDidDisappear];
    click(buttonWith(controller_.view, "Quit"));
    mainQueue.runAll();
    EXPECT_TRUE(log.calls.empty());
}

} // namespace
} // namespace kestrel::tests
