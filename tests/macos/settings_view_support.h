#pragma once
// What the tests of the settings view share: the view in a window of its own, over a store of three
// items, with its list and its sheet.

#include "shells/macos/views/item_row_cell_view.h"
#include "shells/macos/views/settings_list_controller.h"
#include "shells/macos/views/settings_view_controller.h"
#include "tests/macos/views_support.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kestrel::tests {

using Titles = std::vector<std::string>;

class MacSettingsFixture : public MacViewsFixture {
  protected:
    void SetUp() override {
        MacViewsFixture::SetUp();
        @autoreleasepool {
            auto view = std::make_unique<SettingsView>(manager, clock, openPanel_);
            view_ = view.get();
            controller_ = [[KSTSettingsViewController alloc] initWithSettingsView:std::move(view)];
            window_ = std::make_unique<ShownWindow>(controller_);
            [controller_ viewDidAppear];
        }
    }

    void TearDown() override {
        [controller_ discardView];
        window_.reset();
        controller_ = nil;
    }

    KSTSettingsListView* table() { return findView<KSTSettingsListView>(controller_.view); }
    KSTSettingsListController* tableController() {
        return (KSTSettingsListController*)table().delegate;
    }
    NSButton* button(const std::string& name) { return buttonWith(controller_.view, name); }

    KSTItemRowCellView* cell(NSInteger row) {
        NSView* const view = [tableController() tableView:table()
                                       viewForTableColumn:table().tableColumns.firstObject
                                                      row:row];
        return (KSTItemRowCellView*)view;
    }

    void select(NSInteger row) {
        if (row < 0)
            [table() deselectAll:nil];
        else
            [table() selectRowIndexes:[NSIndexSet indexSetWithIndex:static_cast<NSUInteger>(row)]
                 byExtendingSelection:NO];
        redraw();
    }

    Titles order() { return titles(manager.items); }

    // ---- the sheet

    NSWindow* sheet() { return window_->get().attachedSheet; }
    NSButton* sheetButton(const std::string& name) { return buttonWith(sheet().contentView, name); }
    bool sheetOpens() {
        return runUntil([this] { return sheet() != nil; });
    }
    /// The system may animate a sheet away, and tell of its end when that is done.
    bool sheetCloses() {
        return runUntil([this] {
            return sheet() == nil && !view_->showAddSheet() && view_->itemToEdit() == std::nullopt;
        });
    }

    /// Puts `text` into the title's field of the sheet that is open.
    void type(NSString* text) {
        NSTextField* const field = (NSTextField*)sheet().initialFirstResponder;
        field.stringValue = text;
        [(id<NSTextFieldDelegate>)field.delegate
            controlTextDidChange:[NSNotification
                                     notificationWithName:NSControlTextDidChangeNotification
                                                   object:field]];
        redraw();
    }

    /// Adds an item through the sheet, as the user does.
    void add(NSString* title) {
        click(button("Add"));
        ASSERT_TRUE(sheetOpens());
        type(title);
        click(sheetButton("Add"));
        ASSERT_TRUE(sheetCloses());
        redraw();
    }

    FakeOpenPanel openPanel_;
    SettingsView* view_ = nullptr;
    KSTSettingsViewController* controller_ = nil;
    std::unique_ptr<ShownWindow> window_;
};

} // namespace kestrel::tests
