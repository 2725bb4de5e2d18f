// The settings view controller: its strip of buttons, what stands in place of an empty list, and
// the list as AppKit drives it.

#include "tests/macos/settings_view_support.h"

#include "shells/macos/views/kit/centered_column_view.h"
#include "shells/macos/views/kit/face_button.h"
#include "shells/macos/views/settings_toolbar_view.h"

/// What a table is told of a drag.
@interface FakeDrag : NSObject
@property(nonatomic, strong) NSPasteboard* draggingPasteboard;
@property(nonatomic, weak) id draggingSource;
@end

@implementation FakeDrag
@end

namespace kestrel::tests {
namespace {

class MacSettingsViewTest : public MacSettingsFixture {
  protected:
    /// Drags the row to in front of `destination` and returns whether the table took it.
    bool drag(NSInteger row, NSInteger destination) {
        FakeDrag* const drag = [[FakeDrag alloc] init];
        drag.draggingSource = table();
        drag.draggingPasteboard = [NSPasteboard pasteboardWithUniqueName];
        NSPasteboardItem* const item = (NSPasteboardItem*)[tableController() tableView:table()
                                                                pasteboardWriterForRow:row];
        NSPasteboardType const type = table().registeredDraggedTypes.firstObject;
        NSString* const text = [item stringForType:type];
        EXPECT_TRUE(text.length > 0);
        [drag.draggingPasteboard declareTypes:@[ type ] owner:nil];
        [drag.draggingPasteboard setString:text forType:type];
        id<NSDraggingInfo> const info = (id)drag;
        const NSDragOperation operation = [tableController() tableView:table()
                                                          validateDrop:info
                                                           proposedRow:destination
                                                 proposedDropOperation:NSTableViewDropOn];
        EXPECT_EQ(operation, NSDragOperationMove);
        const bool isTaken = [tableController() tableView:table()
                                               acceptDrop:info
                                                      row:destination
                                            dropOperation:NSTableViewDropAbove];
        redraw();
        return isTaken;
    }
};

TEST_F(MacSettingsViewTest, TheStripAndTheListShareTheWindow) {
    const NSSize size = controller_.view.frame.size;
    EXPECT_EQ(size.width, 520);
    EXPECT_EQ(size.height, 420);
    KSTSettingsToolbarView* const toolbar = findView<KSTSettingsToolbarView>(controller_.view);
    EXPECT_EQ(toolbar.frame.size.height, 42 + 8);
    EXPECT_EQ(toolbar.frame.origin.y, 420 - 50);
    EXPECT_TRUE([toolbar.color isEqual:NSColor.windowBackgroundColor]);
    NSScrollView* const list = findView<NSScrollView>(controller_.view);
    EXPECT_EQ(list.frame.size.height, 420 - 50 - 1);
    [window_->get() setContentSize:NSMakeSize(600, 500)];
    EXPECT_EQ(toolbar.frame.origin.y, 450);
    EXPECT_EQ(toolbar.frame.size.width, 600);
    EXPECT_EQ(list.frame.size.height, 449);
}

TEST_F(MacSettingsViewTest, TheWindowKeepsItsMinimumSize) {
    EXPECT_EQ(window_->get().contentMinSize.width, 480);
    EXPECT_EQ(window_->get().contentMinSize.height, 360);
}

TEST_F(MacSettingsViewTest, TheButtonsAreFixedFacesAtTheLeft) {
    const char* const names[] = {"Add", "Edit", "Delete"};
    for (int i = 0; i < 3; ++i) {
        KSTFaceButton* const face = (KSTFaceButton*)button(names[i]);
        ASSERT_TRUE(face != nil) << names[i];
        EXPECT_EQ(face.frame.origin.x, 6 + 52 * i);
        EXPECT_EQ(face.frame.size.width, 52);
        EXPECT_EQ(face.frame.size.height, 42);
        EXPECT_EQ(textOf(face.toolTip), names[i]);
        const CGFloat symbolEnd = face.symbol.frame.origin.y + face.symbol.frame.size.height;
        EXPECT_NEAR(face.label.frame.origin.y - symbolEnd, 3, 0.001);
    }
}

TEST_F(MacSettingsViewTest, EachButtonIsReadByItsNameAndNothingInIt) {
    for (const char* const name : {"Add", "Edit", "Delete"}) {
        KSTFaceButton* const face = (KSTFaceButton*)button(name);
        ASSERT_TRUE(face != nil) << name;
        EXPECT_EQ(textOf(face.accessibilityLabel), name);
        EXPECT_EQ(textOf(face.cell.accessibilityLabel), name);
        for (NSControl* control in @[ face.symbol, face.label ]) {
            EXPECT_FALSE(control.isAccessibilityElement) << name;
            EXPECT_FALSE(control.cell.isAccessibilityElement) << name;
        }
    }
}

TEST_F(MacSettingsViewTest, EditAndDeleteNeedACommittedItem) {
    EXPECT_TRUE(button("Add").enabled);
    EXPECT_FALSE(button("Edit").enabled);
    EXPECT_FALSE(button("Delete").enabled);
    EXPECT_TRUE(
        [((KSTFaceButton*)button("Edit")).label.textColor isEqual:NSColor.tertiaryLabelColor]);
    select(1);
    EXPECT_TRUE(button("Edit").enabled);
    EXPECT_TRUE(button("Delete").enabled);
    EXPECT_TRUE([((KSTFaceButton*)button("Edit")).label.textColor isEqual:NSColor.labelColor]);
}

TEST_F(MacSettingsViewTest, TheTableIsAnInsetSingleSelectionList) {
    EXPECT_EQ(table().numberOfRows, 3);
    EXPECT_EQ(table().style, NSTableViewStyleInset);
    EXPECT_FALSE(table().allowsMultipleSelection);
    EXPECT_TRUE(table().allowsEmptySelection);
    EXPECT_TRUE(table().headerView == nil);
}

TEST_F(MacSettingsViewTest, AssistiveProgramsHearWhatTheTableLists) {
    EXPECT_EQ(textOf(table().accessibilityLabel), "Items");
}

TEST_F(MacSettingsViewTest, EachRowIsAsHighAsItsOwnTitleNeeds) {
    LauncherItem wordy = first;
    for (int i = 0; i < 60; ++i)
        wordy.title += " word";
    setItems({first, wordy});
    redraw();
    const CGFloat plain = [tableController() tableView:table() heightOfRow:0];
    EXPECT_GE(plain, 22 + 8);
    EXPECT_GT([tableController() tableView:table() heightOfRow:1], plain);
}

TEST_F(MacSettingsViewTest, SelectingARowCommitsItsItem) {
    select(0);
    EXPECT_EQ(view_->selectedID(), first.id);
    EXPECT_EQ(view_->committedID(), first.id);
    select(1);
    EXPECT_EQ(view_->committedID(), second.id);
}

TEST_F(MacSettingsViewTest, ClearingTheSelectionKeepsTheCommittedItem) {
    select(1);
    select(-1);
    EXPECT_EQ(view_->selectedID(), std::nullopt);
    EXPECT_EQ(view_->committedID(), second.id);
    EXPECT_TRUE(button("Edit").enabled);
    EXPECT_EQ(cell(1).actions.alphaValue, 1) << "the committed row keeps its actions button";
    EXPECT_EQ(cell(0).actions.alphaValue, 0);
}

TEST_F(MacSettingsViewTest, TheSelectionStaysWithTheItemWhenTheListChanges) {
    select(1);
    manager.items.assign({third, second});
    redraw();
    EXPECT_EQ(table().numberOfRows, 2);
    EXPECT_EQ(table().selectedRow, 1);
    EXPECT_EQ(view_->selectedID(), second.id);
    manager.items.assign({second, third});
    redraw();
    EXPECT_EQ(table().selectedRow, 0);
    EXPECT_EQ(view_->selectedID(), second.id);
}

TEST_F(MacSettingsViewTest, AListThatShrinksUnderTheSelectionIsNotTheUsersChoice) {
    select(2);
    manager.items.assign({first});
    redraw();
    EXPECT_EQ(table().selectedRow, -1);
    EXPECT_EQ(view_->committedID(), third.id);
    EXPECT_FALSE(button("Edit").enabled) << "the committed item is not in the list";
}

TEST_F(MacSettingsViewTest, ARowDraggedDownLandsInFrontOfTheDropRow) {
    EXPECT_TRUE(drag(0, 2));
    EXPECT_EQ(order(), (Titles{"Second", "First", "Third"}));
    EXPECT_EQ(log.calls.empty(), false) << "a move is saved at once";
}

TEST_F(MacSettingsViewTest, ARowCanBeDraggedToTheEndAndToTheFront) {
    EXPECT_TRUE(drag(0, 3));
    EXPECT_EQ(order(), (Titles{"Second", "Third", "First"}));
    EXPECT_TRUE(drag(2, 0));
    EXPECT_EQ(order(), (Titles{"First", "Second", "Third"}));
    EXPECT_TRUE(drag(2, 1));
    EXPECT_EQ(order(), (Titles{"First", "Third", "Second"}));
}

TEST_F(MacSettingsViewTest, ADragKeepsTheSelectionWithItsItem) {
    select(0);
    EXPECT_TRUE(drag(0, 3));
    EXPECT_EQ(table().selectedRow, 2);
    EXPECT_EQ(view_->selectedID(), first.id);
}

TEST_F(MacSettingsViewTest, ADragFromElsewhereIsRefused) {
    FakeDrag* const drag = [[FakeDrag alloc] init];
    drag.draggingPasteboard = [NSPasteboard pasteboardWithUniqueName];
    const NSDragOperation operation = [tableController() tableView:table()
                                                      validateDrop:(id<NSDraggingInfo>)(id)drag
                                                       proposedRow:0
                                             proposedDropOperation:NSTableViewDropAbove];
    EXPECT_EQ(operation, NSDragOperationNone);
    EXPECT_FALSE([tableController() tableView:table()
                                   acceptDrop:(id<NSDraggingInfo>)(id)drag
                                          row:0
                                dropOperation:NSTableViewDropAbove]);
    EXPECT_EQ(order(), (Titles{"First", "Second", "Third"}));
}

TEST_F(MacSettingsViewTest, DeleteRemovesTheSelectedRow) {
    for (const unichar key : {unichar(NSDeleteCharacter), unichar(NSDeleteFunctionKey)}) {
        setItems({first, second, third});
        redraw();
        select(1);
        [table() keyDown:keyPress(key)];
        EXPECT_EQ(order(), (Titles{"First", "Third"})) << key;
        EXPECT_EQ(view_->committedID(), std::nullopt);
        EXPECT_FALSE(log.calls.empty()) << "a deletion is saved at once";
        redraw();
        EXPECT_EQ(table().numberOfRows, 2);
    }
}

TEST_F(MacSettingsViewTest, TheDeleteCommandNeedsASelection) {
    NSMenuItem* const item = [[NSMenuItem alloc] initWithTitle:@"Delete"
                                                        action:@selector(delete:)
                                                 keyEquivalent:@""];
    EXPECT_FALSE([table() validateMenuItem:item]);
    select(2);
    EXPECT_TRUE([table() validateMenuItem:item]);
    [table() delete:nil];
    EXPECT_EQ(order(), (Titles{"First", "Second"}));
}

TEST_F(MacSettingsViewTest, OptionWithTheArrowsMovesTheSelectedRow) {
    select(0);
    const auto arrow = NSEventModifierFlagOption | NSEventModifierFlagFunction;
    [table() keyDown:keyPress(NSDownArrowFunctionKey, arrow)];
    EXPECT_EQ(order(), (Titles{"Second", "First", "Third"}));
    [table() keyDown:keyPress(NSUpArrowFunctionKey, arrow)];
    EXPECT_EQ(order(), (Titles{"First", "Second", "Third"}));
}

TEST_F(MacSettingsViewTest, TheArrowsGoOnFromADeletedRow) {
    select(1);
    [table() keyDown:keyPress(NSDeleteCharacter)];
    redraw();
    EXPECT_EQ(table().selectedRow, -1);
    [table() keyDown:keyPress(NSDownArrowFunctionKey, NSEventModifierFlagFunction)];
    redraw();
    EXPECT_EQ(table().selectedRow, 1);
    EXPECT_EQ(view_->selectedID(), third.id);
    [table() keyDown:keyPress(NSDeleteCharacter)];
    redraw();
    [table() keyDown:keyPress(NSUpArrowFunctionKey, NSEventModifierFlagFunction)];
    EXPECT_EQ(view_->selectedID(), first.id);
}

TEST_F(MacSettingsViewTest, TypingSelectsTheRowThatItNames) {
    [table() keyDown:keyPress('t')];
    redraw();
    EXPECT_EQ(table().selectedRow, 2);
    EXPECT_EQ(view_->committedID(), third.id);
    [table() keyDown:keyPress('s', NSEventModifierFlagCommand)];
    EXPECT_EQ(view_->committedID(), third.id) << "a shortcut types nothing";
}

TEST_F(MacSettingsViewTest, TheToolbarDeletesTheCommittedItem) {
    select(1);
    select(-1);
    click(button("Delete"));
    redraw();
    EXPECT_EQ(order(), (Titles{"First", "Third"}));
    EXPECT_FALSE(button("Delete").enabled);
}

TEST_F(MacSettingsViewTest, DeletingTheLastItemShowsThePlaceholder) {
    KSTCenteredColumnView* const placeholder = findView<KSTCenteredColumnView>(controller_.view);
    NSScrollView* const list = findView<NSScrollView>(controller_.view);
    EXPECT_TRUE(placeholder.hidden);
    setItems({});
    redraw();
    EXPECT_FALSE(placeholder.hidden);
    EXPECT_TRUE(list.hidden);
    EXPECT_TRUE(button("Add").enabled);
    NSTextField* const title = fieldWith(placeholder, "No items yet");
    NSTextField* const hint =
        fieldWith(placeholder, "Add apps, command files, or shell commands to your launcher.");
    NSButton* const add = buttonWith(placeholder, "Add First Item");
    ASSERT_TRUE(title && hint && add);
    EXPECT_LE(hint.frame.size.width, 240) << "two even lines, not one of 320 and a short one";
    EXPECT_EQ(hint.alignment, NSTextAlignmentCenter);
    EXPECT_NEAR(hint.frame.origin.y - title.frame.origin.y - title.frame.size.height, 12, 1);
    EXPECT_NEAR(add.frame.origin.y - hint.frame.origin.y - hint.frame.size.height, 16, 1);
    EXPECT_TRUE([add.bezelColor isEqual:NSColor.controlAccentColor]);
    click(add);
    EXPECT_TRUE(sheetOpens());
}

TEST_F(MacSettingsViewTest, AnAddedRowIsScrolledToAndNotSelected) {
    setItems(std::vector<LauncherItem>(40, first));
    redraw();
    NSScrollView* const list = findView<NSScrollView>(controller_.view);
    EXPECT_EQ(list.documentVisibleRect.origin.y, 0);
    add(@"Last");
    NSRect row = [table() rectOfRow:40];
    row.size.width = 1; // a scroller may stand on the rest
    EXPECT_TRUE(NSContainsRect(list.documentVisibleRect, row));
    EXPECT_EQ(table().selectedRow, -1);
    EXPECT_EQ(view_->selectedID(), std::nullopt);
    // Once: the user may have scrolled away since.
    [table() scrollRowToVisible:0];
    manager.items.remove({1});
    redraw();
    EXPECT_EQ(list.documentVisibleRect.origin.y, 0);
}

TEST_F(MacSettingsViewTest, ReturnEditsTheSelectedRow) {
    select(2);
    [table() keyDown:keyPress('\r')];
    ASSERT_TRUE(view_->itemToEdit());
    EXPECT_EQ(view_->itemToEdit()->id, third.id);
}

TEST_F(MacSettingsViewTest, NothingHappensAfterTheViewWasDiscarded) {
    KSTSettingsListView* const table = this->table();
    KSTItemRowCellView* const row = cell(1);
    select(1);
    click(button("Add"));
    ASSERT_TRUE(sheetOpens());
    manager.items.append(first);
    [controller_ discardView];
    EXPECT_TRUE(runUntil([this] { return sheet() == nil; })) << "the sheet goes with the view";
    redraw();
    manager.items.remove({0});
    redraw();
    [table keyDown:keyPress(NSDeleteCharacter)];
    [table reloadData];
    [row mouseEntered:mouseEvent(NSEventTypeMouseMoved, NSZeroPoint, window_->get())];
    [controller_ viewDidAppear];
    log.calls.clear();
    redraw();
    EXPECT_EQ(order(), (Titles{"Second", "Third", "First"}));
    EXPECT_TRUE(log.calls.empty());
}

} // namespace
} // namespace kestrel::tests
