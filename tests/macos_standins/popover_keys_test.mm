// The popover's keys as the system hands them on, its buttons with the keys, and the rest of its
// view controller that can only be seen through the stand-ins.

#include "shells/macos/views/kit/face_button.h"
#include "tests/macos/popover_fixture.h"

#include <macos-check/recording.h>

namespace kestrel::tests {
namespace {

constexpr unichar escape = 0x1B;

class MacPopoverKeysTest : public MacPopoverFixture {
  protected:
    void SetUp() override {
        recording::reset();
        MacPopoverFixture::SetUp();
    }

    void TearDown() override {
        MacPopoverFixture::TearDown();
        setKeyboardNavigation(false);
    }

    /// The system's setting.
    static void setKeyboardNavigation(bool isOn) {
        [NSUserDefaults.standardUserDefaults setInteger:isOn ? 2 : 0 forKey:@"AppleKeyboardUIMode"];
    }
};

TEST_F(MacPopoverKeysTest, TheHighlightYieldsToAButtonWithTheKeysAndComesBack) {
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

TEST_F(MacPopoverKeysTest, TheMarkGoesWhereTheUserActs) {
    [controller_ viewDidAppear];
    NSWindow* const window = window_->get();
    [window makeFirstResponder:button("Quit")];
    pointAt(1);
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

TEST_F(MacPopoverKeysTest, SpaceAndReturnPressTheButtonWithTheKeys) {
    [controller_ viewDidAppear];
    pointAt(1);
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

TEST_F(MacPopoverKeysTest, TabGoesRoundTheListAndTheButtons) {
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

TEST_F(MacPopoverKeysTest, ClosingLeavesNoMarkOnAButton) {
    [controller_ viewDidAppear];
    [window_->get() makeFirstResponder:button("Quit")];
    // A window that is made anew for the next opening asks no button to let go of the keys.
    [controller_ viewDidDisappear];
    [controller_ viewWillAppear];
    view_->pointerEntered(1);
    redraw();
    EXPECT_EQ(highlightedRow(), 1);
}

TEST_F(MacPopoverKeysTest, EveryKeyIsReadAsTheSystemBindsIt) {
    [controller_ viewDidAppear];
    NSResponder* const keys = window_->get().firstResponder;
    [keys keyDown:keyPress(NSDownArrowFunctionKey)];
    [keys keyDown:keyPress('t')];
    redraw();
    EXPECT_EQ(highlightedRow(), 2);
    [keys keyDown:keyPress('\r')];
    EXPECT_EQ(log.calls, std::vector<std::string>{"workspace.openApplication /apps/three"});
    log.calls.clear();
    [keys keyDown:keyPress(escape)];
    EXPECT_EQ(log.calls, std::vector<std::string>{"close"});
}

TEST_F(MacPopoverKeysTest, KeysThatAButtonHasNoUseForStillArrive) {
    [controller_ viewDidAppear];
    for (const char* const name : {"Settings", "Quit"}) {
        log.calls.clear();
        NSWindow* const window = window_->get();
        [window makeFirstResponder:button(name)];
        [window.firstResponder keyDown:keyPress(escape)];
        EXPECT_EQ(log.calls, std::vector<std::string>{"close"}) << name;
        [window.firstResponder keyDown:keyPress('s')];
        redraw();
        EXPECT_EQ(highlightedRow(), 1) << name;
        [window makeFirstResponder:button(name)];
        [window.firstResponder keyDown:keyPress(NSUpArrowFunctionKey)];
        redraw();
        EXPECT_EQ(highlightedRow(), 0) << name;
        [controller_ viewWillAppear];
    }
}

TEST_F(MacPopoverKeysTest, WithoutItemsTheKeysGoToSettingsForThoseWhoGoThroughButtons) {
    setItems({});
    for (const bool goesThroughButtons : {false, true}) {
        setKeyboardNavigation(goesThroughButtons);
        show();
        [controller_ viewDidAppear];
        NSResponder* const expected = goesThroughButtons ? button("Settings") : controller_.view;
        EXPECT_EQ(window_->get().firstResponder, expected);
    }
    setItems({first});
    show();
    [controller_ viewDidAppear];
    EXPECT_EQ(window_->get().firstResponder, controller_.view);
}

TEST_F(MacPopoverKeysTest, TheTextsAreInTheUsersLanguage) {
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

TEST_F(MacPopoverKeysTest, ARedrawThatIsDueEndsWithTheController) {
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
