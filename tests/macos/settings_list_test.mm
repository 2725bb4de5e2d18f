// The table of the settings list in its scroll view: what assistive programs and the pointer meet.

#include "shells/macos/views/item_row_cell_view.h"
#include "shells/macos/views/settings_list_controller.h"
#include "shells/macos/views/settings_view_controller.h"
#include "tests/macos/views_support.h"
#include "tests/macos/window_with_pointer.h"

#include <memory>

namespace kestrel::tests {
namespace {

class MacSettingsListTest : public MacViewsFixture {
  protected:
    void SetUp() override {
        MacViewsFixture::SetUp();
        setItems(std::vector<LauncherItem>(40, first)); // more than are seen
        auto view = std::make_unique<SettingsView>(manager, clock, openPanel_);
        controller_ = [[KSTSettingsViewController alloc] initWithSettingsView:std::move(view)];
        window_ = std::make_unique<WindowWithPointer>(controller_);
        redraw();
    }

    void TearDown() override {
        [controller_ discardView];
        window_.reset();
        controller_ = nil;
    }

    KSTSettingsListView* table() { return findView<KSTSettingsListView>(controller_.view); }
    KSTItemRowCellView* cell(NSInteger row) {
        return [table() viewAtColumn:0 row:row makeIfNecessary:YES];
    }

    void pointAt(NSInteger row) { window_->movePointer(middleOf(row), table(), table()); }
    NSPoint middleOf(NSInteger row) {
        const NSRect frame = [table() rectOfRow:row];
        return NSMakePoint(frame.origin.x + frame.size.width / 2,
                           frame.origin.y + frame.size.height / 2);
    }

    /// The rows whose actions button can be seen; no row is selected.
    std::vector<NSInteger> hovered() {
        const NSRange seen = [table() rowsInRect:table().visibleRect];
        const auto begin = static_cast<NSInteger>(seen.location);
        const auto end = begin + static_cast<NSInteger>(seen.length);
        for (NSInteger row = begin; row < end; ++row)
            cell(row); // a table may make its rows later than it scrolls
        redraw();
        std::vector<NSInteger> rows;
        for (NSInteger row = begin; row < end; ++row)
            if (cell(row).actions.alphaValue > 0)
                rows.push_back(row);
        return rows;
    }

    FakeOpenPanel openPanel_;
    KSTSettingsViewController* controller_ = nil;
    std::unique_ptr<WindowWithPointer> window_;
};

using Rows = std::vector<NSInteger>;

TEST_F(MacSettingsListTest, TheTableHasAName) {
    EXPECT_EQ(textOf(table().accessibilityLabel), "Items");
}

TEST_F(MacSettingsListTest, NoRingStandsAroundTheList) {
    EXPECT_EQ(table().focusRingType, NSFocusRingTypeNone);
}

TEST_F(MacSettingsListTest, TheListHearsOfThePointerWhoeverHasTheKeys) {
    NSArray<NSTrackingArea*>* const areas = hoverAreas(table());
    ASSERT_EQ(areas.count, 1U);
    EXPECT_EQ(areas.firstObject.options, NSTrackingMouseEnteredAndExited | NSTrackingMouseMoved |
                                             NSTrackingActiveAlways | NSTrackingInVisibleRect);
    KSTSettingsListView* const table = this->table();
    [controller_ discardView];
    EXPECT_EQ(hoverAreas(table).count, 0U);
}

TEST_F(MacSettingsListTest, TheRowUnderThePointerShowsItsActions) {
    EXPECT_EQ(hovered(), Rows{});
    pointAt(1);
    EXPECT_EQ(hovered(), Rows{1});
    pointAt(2);
    EXPECT_EQ(hovered(), Rows{2});
    window_->takePointerFrom(table());
    EXPECT_EQ(hovered(), Rows{});
}

TEST_F(MacSettingsListTest, TheActionsFollowTheRowThatScrollsUnderARestingPointer) {
    pointAt(1);
    const CGFloat step = [table() rectOfRow:3].origin.y - [table() rectOfRow:1].origin.y;
    NSClipView* const clipView = table().enclosingScrollView.contentView;
    [clipView scrollToPoint:NSMakePoint(0, clipView.bounds.origin.y + step)];
    EXPECT_EQ(hovered(), Rows{3});
    [table() scrollRowToVisible:39];
    const auto rows = hovered();
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_GT(rows.front(), 3) << "the keyboard scrolls as well";
}

TEST_F(MacSettingsListTest, AListThatScrollsAwayFromThePointerShowsNoActions) {
    pointAt(1);
    window_->placePointer(NSMakePoint(-50, -50), table());
    [table() scrollRowToVisible:39];
    EXPECT_EQ(hovered(), Rows{});
}

TEST_F(MacSettingsListTest, TheActionsComeBackAfterAChangeOfTheListUnderThePointer) {
    pointAt(1);
    manager.items.remove({0});
    redraw();
    hovered(); // makes the rows
    // As the table says of each.
    [table().delegate tableView:table() didAddRowView:[[NSTableRowView alloc] init] forRow:1];
    redraw();
    EXPECT_EQ(hovered(), Rows{1});
}

} // namespace
} // namespace kestrel::tests
