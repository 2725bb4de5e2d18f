// The popover's view controller with its views, driven as AppKit drives them.

#include "shells/macos/views/kit/centered_column_view.h"
#include "shells/macos/views/kit/face_button.h"
#include "shells/macos/views/kit/rounded_fill_view.h"
#include "shells/macos/views/kit/symbol_view.h"
#include "shells/macos/views/menu_popover_view_controller.h"
#include "shells/macos/views/popover_list_view.h"
#include "tests/macos/views_support.h"

#include <macos-check/recording.h>
#include "views/popover/menu_popover_style.h"

#include <memory>

namespace kestrel::tests {
namespace {

namespace popover_style = menu_popover_style;

class MacPopoverViewTest : public MacViewsFixture {
  protected:
    void SetUp() override {
        MacViewsFixture::SetUp();
        recording::reset();
        show();
    }

    void TearDown() override {
        window_.reset();
        controller_ = nil;
    }

    /// Makes the controller anew for what the store holds now.
    void show() {
        window_.reset();
        MenuPopoverView::Callbacks callbacks{.onOpenSettings = [this] { log.add("settings"); },
                                             .onQuit = [this] { log.add("quit"); },
                                             .onClose = [this] { log.add("close"); }};
        auto view =
            std::make_unique<MenuPopoverView>(manager, mainQueue, clock, std::move(callbacks));
        view_ = view.get();
        controller_ =
            [[KSTMenuPopoverViewController alloc] initWithMenuPopoverView:std::move(view)];
        window_ = std::make_unique<ShownWindow>(controller_);
        [controller_ viewWillAppear];
    }

    KSTPopoverListView* list() { return findView<KSTPopoverListView>(controller_.view); }
    KSTPopoverRowView* row(NSUInteger position) { return list().rows[position]; }
    NSScrollView* scrollView() { return findView<NSScrollView>(controller_.view); }

    NSButton* button(const std::string& name) { return buttonWith(controller_.view, name); }

    std::vector<std::string> shownTitles() {
        std::vector<std::string> result;
        for (KSTPopoverRowView* row in list().rows)
            result.push_back(textOf(findView<NSTextField>(row).stringValue));
        return result;
    }

    /// The row whose highlight can be seen; -1 when none can.
    long highlightedRow() {
        long result = -1;
        for (KSTPopoverRowView* row in list().rows) {
            if (!findView<KSTRoundedFillView>(row).hidden) {
                EXPECT_EQ(result, -1) << "two rows are highlighted";
                result = static_cast<long>(row.position);
            }
        }
        return result;
    }

    MenuPopoverView* view_ = nullptr;
    KSTMenuPopoverViewController* controller_ = nil;
    std::unique_ptr<ShownWindow> window_;
};

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
    [row(1) mouseEntered:[[NSEvent alloc] init]];
    redraw();
    EXPECT_EQ(highlightedRow(), 1);
    [row(2) mouseEntered:[[NSEvent alloc] init]];
    [row(1) mouseExited:[[NSEvent alloc] init]];
    redraw();
    EXPECT_EQ(highlightedRow(), 2);
    [row(2) mouseExited:[[NSEvent alloc] init]];
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

TEST_F(MacPopoverViewTest, EachRowTracksThePointerInItsVisiblePart) {
    [row(0) updateTrackingAreas];
    [row(0) updateTrackingAreas];
    NSArray<NSTrackingArea*>* const areas = row(0).trackingAreas;
    ASSERT_EQ(areas.count, 1U);
    EXPECT_EQ(areas.firstObject.owner, row(0));
}

TEST_F(MacPopoverViewTest, ScrollingTakesTheHighlightFromARowThatMovesAway) {
    [row(1) mouseEntered:[[NSEvent alloc] init]];
    redraw();
    ASSERT_EQ(highlightedRow(), 1);
    // The pointer is far away from the window here.
    [window_->get() setFrameOrigin:NSMakePoint(4000, 4000)];
    [NSNotificationCenter.defaultCenter postNotificationName:NSScrollViewDidLiveScrollNotification
                                                      object:scrollView()];
    redraw();
    EXPECT_EQ(highlightedRow(), -1);
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

TEST_F(MacPopoverViewTest, ARowIsFoundByThePointInsideIt) {
    EXPECT_EQ([list() rowAtPoint:NSMakePoint(120, 6)], row(0));
    EXPECT_EQ([list() rowAtPoint:NSMakePoint(120, 6 + 34)], row(1));
    EXPECT_TRUE([list() rowAtPoint:NSMakePoint(120, 3)] == nil) << "the padding is no row";
    EXPECT_TRUE([list() rowAtPoint:NSMakePoint(120, 6 + 3 * 34)] == nil);
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
    [row(1) mouseEntered:[[NSEvent alloc] init]];
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

TEST_F(MacPopoverViewTest, TheFooterButtonsCallBack) {
    click(buttonWith(controller_.view, "Settings"));
    click(buttonWith(controller_.view, "Quit"));
    EXPECT_EQ(log.calls, (std::vector<std::string>{"settings", "quit"}));
}

TEST_F(MacPopoverViewTest, ArrowsHomeAndEndMoveTheHighlight) {
    struct {
        unichar key;
        long row;
    } const steps[] = {
        {NSDownArrowFunctionKey, 0},
        {NSDownArrowFunctionKey, 1},
        {NSUpArrowFunctionKey, 0},
        {NSUpArrowFunctionKey, 0},
    };
    for (const auto& step : steps) {
        [controller_ keyDown:keyPress(step.key)];
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
    [controller_ keyDown:keyPress(NSDownArrowFunctionKey)];
    [controller_ keyDown:keyPress('\r')];
    EXPECT_EQ(log.calls, std::vector<std::string>{"workspace.openApplication /apps/one"});
}

TEST_F(MacPopoverViewTest, SpaceLaunchesTheHighlightedRow) {
    [controller_ keyDown:keyPress(' ')];
    EXPECT_TRUE(log.calls.empty()) << "no row is highlighted";
    [controller_ keyDown:keyPress(NSDownArrowFunctionKey)];
    [controller_ keyDown:keyPress(NSDownArrowFunctionKey)];
    [controller_ keyDown:keyPress(' ')];
    EXPECT_EQ(log.calls, std::vector<std::string>{"terminal.runInNewWindow ls"});
    mainQueue.runAll();
    EXPECT_EQ(log.calls.back(), "close");
}

TEST_F(MacPopoverViewTest, TypingHighlightsTheRowThatItNames) {
    [controller_ keyDown:keyPress('t')];
    redraw();
    EXPECT_EQ(highlightedRow(), 2);
    [controller_ keyDown:keyPress(' ')];
    EXPECT_TRUE(log.calls.empty()) << "a space belongs to the name that is being typed";
}

TEST_F(MacPopoverViewTest, TheHighlightYieldsToAButtonWithTheKeysAndComesBack) {
    [controller_ viewDidAppear];
    [controller_ keyDown:keyPress(NSDownArrowFunctionKey)];
    redraw();
    ASSERT_EQ(highlightedRow(), 0);
    for (const char* const name : {"Settings", "Quit"}) {
        ASSERT_TRUE([window_->get() makeFirstResponder:button(name)]);
        redraw();
        EXPECT_EQ(highlightedRow(), -1) << name;
    }
    [window_->get() makeFirstResponder:controller_.view];
    redraw();
    EXPECT_EQ(highlightedRow(), 0);
}

TEST_F(MacPopoverViewTest, TheMarkGoesWhereTheUserActs) {
    [controller_ viewDidAppear];
    NSWindow* const window = window_->get();
    [window makeFirstResponder:button("Quit")];
    [row(1) mouseEntered:[[NSEvent alloc] init]];
    redraw();
    EXPECT_EQ(window.firstResponder, controller_.view);
    EXPECT_EQ(highlightedRow(), 1);
    [window makeFirstResponder:button("Quit")];
    [controller_ keyDown:keyPress(NSDownArrowFunctionKey)];
    redraw();
    EXPECT_EQ(window.firstResponder, controller_.view);
    EXPECT_EQ(highlightedRow(), 2);
    [window makeFirstResponder:button("Quit")];
    [controller_ keyDown:keyPress('f')];
    redraw();
    EXPECT_EQ(window.firstResponder, controller_.view);
    EXPECT_EQ(highlightedRow(), 0);
}

TEST_F(MacPopoverViewTest, SpaceAndReturnPressTheButtonWithTheKeys) {
    [controller_ viewDidAppear];
    [row(1) mouseEntered:[[NSEvent alloc] init]];
    for (const char* const name : {"Settings", "Quit"})
        for (const unichar key : {unichar(' '), unichar('\r'), unichar(NSEnterCharacter)}) {
            [window_->get() makeFirstResponder:button(name)];
            [button(name) keyDown:keyPress(key)];
        }
    mainQueue.runAll();
    EXPECT_EQ(log.calls, (std::vector<std::string>{"settings", "settings", "settings", "quit",
                                                   "quit", "quit"}))
        << "and no row is launched";
}

TEST_F(MacPopoverViewTest, TabGoesRoundTheListAndTheButtons) {
    [controller_ viewDidAppear];
    NSWindow* const window = window_->get();
    NSView* const views[] = {button("Settings"), button("Quit"), controller_.view};
    for (NSView* view : views) {
        [controller_ keyDown:keyPress('\t')];
        EXPECT_EQ(window.firstResponder, view);
    }
    command(@selector(insertBacktab:), controller_);
    EXPECT_EQ(window.firstResponder, button("Quit"));
}

TEST_F(MacPopoverViewTest, ClosingLeavesNoMarkOnAButton) {
    [controller_ viewDidAppear];
    [window_->get() makeFirstResponder:button("Quit")];
    // A window that is made anew for the next opening asks no button to let go of the keys.
    [controller_ viewDidDisappear];
    [controller_ viewWillAppear];
    view_->pointerEntered(1);
    redraw();
    EXPECT_EQ(highlightedRow(), 1);
}

TEST_F(MacPopoverViewTest, AButtonWithTheKeysHasARingAroundItsFace) {
    KSTFaceButton* const settings = (KSTFaceButton*)button("Settings");
    const NSRect ring = settings.focusRingMaskBounds;
    EXPECT_TRUE(NSContainsRect(ring, settings.symbol.frame));
    EXPECT_TRUE(NSContainsRect(ring, settings.label.frame));
    EXPECT_TRUE(NSContainsRect(settings.bounds, ring));
    EXPECT_LT(ring.size.height, settings.bounds.size.height) << "of the face, not of the footer";
}

TEST_F(MacPopoverViewTest, TheTextsAreInTheUsersLanguage) {
    recording::translate(@"Settings", @"Einstellungen");
    recording::translate(@"Quit", @"Beenden");
    recording::translate(@"No items yet", @"Noch keine Einträge");
    recording::translate(@"Open Settings to add items.", @"Nur in den Einstellungen.");
    setItems({});
    show();
    NSButton* const quit = button("Beenden");
    ASSERT_TRUE(button("Einstellungen") && quit);
    EXPECT_EQ(textOf(((KSTFaceButton*)quit).label.stringValue), "Beenden");
    EXPECT_EQ(quit.frame.origin.x + quit.frame.size.width, 240 - 14);
    EXPECT_TRUE(fieldWith(controller_.view, "Noch keine Einträge") != nil);
    EXPECT_TRUE(fieldWith(controller_.view, "Nur in den Einstellungen.") != nil);
}

TEST_F(MacPopoverViewTest, OpeningAndClosingTakeTheHighlightAway) {
    [row(1) mouseEntered:[[NSEvent alloc] init]];
    redraw();
    [controller_ viewDidDisappear];
    redraw();
    EXPECT_EQ(highlightedRow(), -1);
    [row(1) mouseEntered:[[NSEvent alloc] init]];
    [controller_ viewWillAppear];
    EXPECT_EQ(highlightedRow(), -1);
}

TEST_F(MacPopoverViewTest, AppearingTakesTheKeys) {
    [controller_ viewDidAppear];
    EXPECT_EQ(window_->get().firstResponder, controller_.view);
    EXPECT_TRUE(controller_.view.acceptsFirstResponder);
}

TEST_F(MacPopoverViewTest, NothingHappensAfterTheViewWasDiscarded) {
    KSTPopoverRowView* const second = row(1);
    [second mouseEntered:[[NSEvent alloc] init]];
    [controller_ discardView];
    redraw();
    manager.items.remove({0});
    redraw();
    EXPECT_EQ(shownTitles().size(), 3U) << "what was drawn stays";
    [second mouseExited:[[NSEvent alloc] init]];
    EXPECT_TRUE([second accessibilityPerformPress]);
    [controller_ keyDown:keyPress(NSDownArrowFunctionKey)];
    [controller_ keyDown:keyPress('\r')];
    [controller_ keyDown:keyPress('t')];
    [controller_ viewWillAppear];
    [controller_ viewDidDisappear];
    click(buttonWith(controller_.view, "Quit"));
    mainQueue.runAll();
    EXPECT_TRUE(log.calls.empty());
}

TEST_F(MacPopoverViewTest, ARedrawThatIsDueEndsWithTheController) {
    __weak KSTMenuPopoverViewController* weakController = nil;
    @autoreleasepool {
        weakController = controller_;
        manager.items.remove({0});
        window_.reset();
        controller_ = nil;
    }
    EXPECT_TRUE(weakController == nil) << "nothing may keep the controller alive";
    redraw();
    manager.items.remove({0});
    redraw();
    EXPECT_EQ(titles(manager.items), std::vector<std::string>{"Third"});
}

} // namespace
} // namespace kestrel::tests
