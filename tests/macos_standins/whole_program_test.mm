// The program as the user drives it: icon, popover, settings window and sheet together.
#include "shells/macos/foundation/text.h"
#include "shells/macos/views/kit/face_button.h"
#include "shells/macos/views/popover_list_view.h"
#include "tests/macos/views_support.h"
#include "tests/macos_standins/app_fixture.h"

namespace kestrel::tests {
namespace {

class WholeProgramTest : public AppFixture {
  protected:
    void SetUp() override {
        launch();
        manager().items.assign(
            {{.title = "Editor", .type = ItemType::app, .path = "/Applications/Editor.app"},
             {.title = "Deploy", .type = ItemType::commandFile, .path = "/tmp/deploy.command"},
             {.title = "List", .type = ItemType::inlineCommand, .command = "ls \"a b\""}});
        runMainQueue();
        recording::click(button());
        recording::reset();
    }

    static NSView* popoverView() { return recording::shownPopover().contentViewController.view; }

    static void clickRow(NSUInteger position) {
        KSTPopoverRowView* const row = findView<KSTPopoverListView>(popoverView()).rows[position];
        NSWindow* const window = row.window;
        const NSPoint point = [row convertPoint:NSMakePoint(20, 10) toView:nil];
        [row mouseDown:mouseEvent(NSEventTypeLeftMouseDown, point, window)];
        [row mouseUp:mouseEvent(NSEventTypeLeftMouseUp, point, window)];
    }

    static NSWindow* settingsWindow() { return ordinaryWindows().firstObject; }
};

TEST_F(WholeProgramTest, AClickOnAnItemLaunchesItAndThenClosesThePopover) {
    const Lines launches{
        "NSWorkspace openApplicationAtURL:configuration:completionHandler: "
        "file:///Applications/Editor.app default configuration, no handler",
        "NSWorkspace openURL: file:///tmp/deploy.command",
        "NSTask launchAndReturnError: /usr/bin/osascript -e tell application \"Terminal\"\n"
        "    activate\n    do script \"ls \\\"a b\\\"\"\nend tell"};
    for (NSUInteger position = 0; position < launches.size(); ++position) {
        if (!recording::shownPopover())
            recording::click(button());
        recording::reset();
        clickRow(position);
        EXPECT_TRUE(recording::shownPopover() != nil) << "it closes one turn later";
        runMainQueue();
        EXPECT_EQ(recording::shownPopover(), nil);
        EXPECT_EQ(linesOf({"NSWorkspace open", "NSTask ", "NSPopover "}),
                  (Lines{launches[position], "NSPopover performClose: nil", "NSPopover close"}));
    }
}

TEST_F(WholeProgramTest, SettingsClosesThePopoverAndShowsTheWindow) {
    tests::click(buttonWith(popoverView(), "Settings"));
    EXPECT_EQ(recording::shownPopover(), nil);
    EXPECT_EQ(ordinaryWindows().count, 1U);
    EXPECT_EQ(recording::activationPolicy(), NSApplicationActivationPolicyRegular);
}

TEST_F(WholeProgramTest, QuitTerminatesWithoutSender) {
    tests::click(buttonWith(popoverView(), "Quit"));
    EXPECT_EQ(linesOf({"NSApplication "}),
              (Lines{"NSApplication terminate: nil", "NSApplication will terminate"}));
    EXPECT_EQ(recording::count("NSUserDefaults "), 0) << "nothing is saved at exit";
}

TEST_F(WholeProgramTest, AnItemAddedInTheSheetIsSavedInBothStoresAndShownInThePopover) {
    tests::click(buttonWith(popoverView(), "Settings"));
    runMainQueue();
    tests::click(buttonWith(settingsWindow().contentView, "Add"));
    runMainQueue();
    NSWindow* const sheet = settingsWindow().attachedSheet;
    ASSERT_TRUE(sheet != nil);
    NSTextField* const title = findView<NSTextField>(
        sheet.contentView, [](NSTextField* field) { return bool(field.editable); });
    title.stringValue = @"Added";
    [(id<NSTextFieldDelegate>)title.delegate
        controlTextDidChange:[NSNotification notificationWithName:NSControlTextDidChangeNotification
                                                           object:title]];
    runMainQueue();
    recording::reset();
    tests::click(buttonWith(sheet.contentView, "Add"));
    runMainQueue();
    EXPECT_EQ(settingsWindow().attachedSheet, nil);
    ASSERT_EQ(manager().items.size(), 4U);
    EXPECT_EQ(manager().items[3].title, "Added");
    ASSERT_NE(storedLocally(), std::nullopt);
    EXPECT_NE(storedLocally()->find("Added"), std::string::npos);
    EXPECT_EQ(storedInCloud(), storedLocally());
    recording::click(button());
    EXPECT_EQ(findView<KSTPopoverListView>(popoverView()).rows.count, 4U);
}

TEST_F(WholeProgramTest, ASheetDoesNotKeepTheProgramFromQuitting) {
    tests::click(buttonWith(popoverView(), "Settings"));
    runMainQueue();
    tests::click(buttonWith(settingsWindow().contentView, "Add"));
    runMainQueue();
    ASSERT_TRUE(settingsWindow().attachedSheet != nil);
    recording::reset();
    [NSApp terminate:nil]; // as Command-Q and logging out do
    EXPECT_EQ(linesOf({"NSApplication "}),
              (Lines{"NSApplication terminate: nil", "NSApplication will terminate"}));
}

TEST_F(WholeProgramTest, ClosingTheWindowWithASheetOpenDropsBoth) {
    tests::click(buttonWith(popoverView(), "Settings"));
    runMainQueue();
    tests::click(buttonWith(settingsWindow().contentView, "Add"));
    runMainQueue();
    ASSERT_TRUE(settingsWindow().attachedSheet != nil);
    __weak NSWindow* sheet = settingsWindow().attachedSheet;
    @autoreleasepool {
        [settingsWindow() close];
    }
    runMainQueue();
    EXPECT_FALSE(delegate.core->hasSettingsWindow());
    EXPECT_TRUE(sheet == nil || !sheet.visible);
    EXPECT_EQ(recording::activationPolicy(), NSApplicationActivationPolicyAccessory);
    delegate.core->openSettings();
    EXPECT_EQ(settingsWindow().attachedSheet, nil);
}

} // namespace
} // namespace kestrel::tests
