// The sheets of the settings window, as AppKit shows and ends them.

#include "tests/macos/settings_view_support.h"

namespace kestrel::tests {
namespace {

class MacSettingsSheetTest : public MacSettingsFixture {
  protected:
    void openAddSheet() {
        click(button("Add"));
        ASSERT_TRUE(sheetOpens());
    }

    void openEditSheet(NSInteger row) {
        select(row);
        click(button("Edit"));
        ASSERT_TRUE(sheetOpens());
    }

    bool shows(const std::string& header) {
        return sheet() && fieldWith(sheet().contentView, header) != nil;
    }
};

// ---- the window of a sheet

TEST_F(MacSettingsSheetTest, ASheetIsATitledWindowThatTakesTheKeyboard) {
    openAddSheet();
    const NSWindowStyleMask buttons =
        NSWindowStyleMaskClosable | NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskResizable;
    EXPECT_TRUE(sheet().styleMask & NSWindowStyleMaskTitled);
    EXPECT_FALSE(sheet().styleMask & buttons);
    EXPECT_TRUE(sheet().canBecomeKeyWindow);
    EXPECT_FALSE(sheet().releasedWhenClosed);
    EXPECT_TRUE([sheet().initialFirstResponder isKindOfClass:NSTextField.class]);
}

TEST_F(MacSettingsSheetTest, ASheetStopsNeitherQuitNorLoggingOut) {
    openAddSheet();
    EXPECT_FALSE(sheet().preventsApplicationTerminationWhenModal);
}

TEST_F(MacSettingsSheetTest, ReturnAlonePressesNoButtonOfASheet) {
    openAddSheet();
    EXPECT_TRUE(sheet().defaultButtonCell == nil);
}

TEST_F(MacSettingsSheetTest, ASheetIsAsLargeAsItsForm) {
    openAddSheet();
    NSView* const form = sheet().contentView;
    EXPECT_GT(form.fittingSize.height, 0);
    EXPECT_NEAR(form.frame.size.width, form.fittingSize.width, 1);
    EXPECT_NEAR(form.frame.size.height, form.fittingSize.height, 1);
}

TEST_F(MacSettingsSheetTest, ASheetIsNamedByItsHeader) {
    openAddSheet();
    EXPECT_EQ(textOf(sheet().title), "Add Item");
    click(sheetButton("Cancel"));
    ASSERT_TRUE(sheetCloses());
    openEditSheet(1);
    EXPECT_EQ(textOf(sheet().title), "Edit Item");
}

// ---- what a sheet does to the list

TEST_F(MacSettingsSheetTest, AddingThroughTheSheetAppendsAndSaves) {
    add(@"Fourth");
    EXPECT_EQ(order(), (Titles{"First", "Second", "Third", "Fourth"}));
    EXPECT_FALSE(log.calls.empty());
    EXPECT_EQ(view_->committedID(), std::nullopt) << "a new item is not selected";
    EXPECT_EQ(table().numberOfRows, 4);
    EXPECT_TRUE(sheet() == nil);
}

TEST_F(MacSettingsSheetTest, ACancelledSheetChangesNothingAndCanOpenAgain) {
    for (int i = 0; i < 2; ++i) {
        openAddSheet();
        click(sheetButton("Cancel"));
        ASSERT_TRUE(sheetCloses());
        redraw();
    }
    EXPECT_EQ(order(), (Titles{"First", "Second", "Third"}));
    EXPECT_TRUE(log.calls.empty());
}

TEST_F(MacSettingsSheetTest, TheEditSheetReplacesTheItem) {
    openEditSheet(1);
    EXPECT_TRUE(shows("Edit Item"));
    NSTextField* const title = (NSTextField*)sheet().initialFirstResponder;
    EXPECT_EQ(textOf(title.stringValue), "Second");
    type(@"Renamed");
    click(sheetButton("Save"));
    EXPECT_TRUE(sheetCloses());
    EXPECT_EQ(order(), (Titles{"First", "Renamed", "Third"}));
    EXPECT_EQ(manager.items[1].id, second.id);
}

TEST_F(MacSettingsSheetTest, AnEditOfAnItemThatHasGoneChangesNothing) {
    openEditSheet(1);
    manager.items.assign({first});
    redraw();
    log.calls.clear();
    click(sheetButton("Save"));
    EXPECT_TRUE(sheetCloses());
    EXPECT_EQ(order(), Titles{"First"});
    EXPECT_TRUE(log.calls.empty());
}

// ---- one sheet at a time

TEST_F(MacSettingsSheetTest, ASecondSheetFollowsTheFirst) {
    view_->addClicked();
    view_->editItem(second);
    ASSERT_TRUE(sheetOpens());
    EXPECT_TRUE(shows("Add Item"));
    click(sheetButton("Cancel"));
    EXPECT_TRUE(runUntil([this] { return shows("Edit Item"); }));
}

TEST_F(MacSettingsSheetTest, ASheetThatTheSystemEndsHasClosedAsWell) {
    openAddSheet();
    [window_->get() endSheet:sheet()];
    EXPECT_TRUE(sheetCloses());
    view_->editItem(second);
    EXPECT_TRUE(runUntil([this] { return shows("Edit Item"); }));
}

TEST_F(MacSettingsSheetTest, ASheetThatIsAskedForBeforeTheWindowFollowsWithIt) {
    auto view = std::make_unique<SettingsView>(manager, clock, openPanel_);
    view->addClicked();
    KSTSettingsViewController* const controller =
        [[KSTSettingsViewController alloc] initWithSettingsView:std::move(view)];
    [controller view];
    const ShownWindow shown(controller);
    [controller viewDidAppear];
    EXPECT_TRUE(runUntil([&] { return shown.get().attachedSheet != nil; }));
    [controller discardView];
    EXPECT_TRUE(runUntil([&] { return shown.get().attachedSheet == nil; }));
}

TEST_F(MacSettingsSheetTest, ARedrawUnderASheetShowsNoSecondOne) {
    openAddSheet();
    NSWindow* const shown = sheet();
    manager.items.append(first);
    redraw();
    EXPECT_EQ(sheet(), shown);
    click(sheetButton("Cancel"));
    EXPECT_TRUE(sheetCloses()) << "none waited behind it";
}

TEST_F(MacSettingsSheetTest, TheSheetAndItsFormGoWhenItHasClosed) {
    __weak NSWindow* weakSheet = nil;
    @autoreleasepool {
        openAddSheet();
        weakSheet = sheet();
        EXPECT_TRUE(weakSheet != nil);
        click(sheetButton("Cancel"));
    }
    EXPECT_TRUE(runUntil([weakSheet] { return weakSheet == nil || !weakSheet.visible; }));
}

// The form may be in the action that ends its sheet.
TEST_F(MacSettingsSheetTest, ASheetIsClosedAfterTheActionThatEndsIt) {
    openAddSheet();
    const auto isClosed = std::make_shared<bool>(false);
    const id observer =
        [NSNotificationCenter.defaultCenter addObserverForName:NSWindowWillCloseNotification
                                                        object:sheet()
                                                         queue:nil
                                                    usingBlock:^(NSNotification* notification) {
                                                        (void)notification;
                                                        *isClosed = true;
                                                    }];
    click(sheetButton("Cancel"));
    EXPECT_FALSE(*isClosed);
    EXPECT_TRUE(runUntil([isClosed] { return *isClosed; }));
    [NSNotificationCenter.defaultCenter removeObserver:observer];
}

} // namespace
} // namespace kestrel::tests
