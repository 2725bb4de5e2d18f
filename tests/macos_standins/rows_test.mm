// What lists show that can only be seen through the stand-ins: symbols by their names, and windows
// that cover each other.

#include "shells/macos/views/item_row_cell_view.h"
#include "shells/macos/views/settings_list_view.h"
#include "shells/macos/views/settings_view_controller.h"
#include "tests/macos/views_support.h"
#include "tests/macos/window_with_pointer.h"

#include <macos-check/recording.h>

#include <memory>

namespace kestrel::tests {
namespace {

class MacRowsTest : public MacViewsFixture {};

TEST_F(MacRowsTest, TheActionsButtonShowsAnEllipsis) {
    recording::reset();
    KSTItemRowCellView* const cell =
        [[KSTItemRowCellView alloc] initWithFrame:NSMakeRect(0, 0, 480, 44)];
    EXPECT_EQ(textOf(recording::symbolName([cell.actions itemAtIndex:0].image)), "ellipsis.circle");
}

TEST_F(MacRowsTest, ARowUnderASheetIsNotUnderThePointer) {
    setItems(std::vector<LauncherItem>(40, first));
    FakeOpenPanel openPanel;
    auto view = std::make_unique<SettingsView>(manager, clock, openPanel);
    SettingsView& state = *view;
    KSTSettingsViewController* const controller =
        [[KSTSettingsViewController alloc] initWithSettingsView:std::move(view)];
    WindowWithPointer window(controller);
    KSTSettingsListView* const table = findView<KSTSettingsListView>(controller.view);
    const auto scrolledTo = [&](CGFloat y) {
        [table.enclosingScrollView.contentView scrollToPoint:NSMakePoint(0, y)];
        NSInteger shown = 0;
        for (NSInteger row = 0; row < table.numberOfRows; ++row) {
            KSTItemRowCellView* const cell = [table viewAtColumn:0 row:row makeIfNecessary:YES];
            shown += cell.underPointer ? 1 : 0;
        }
        return shown;
    };
    [table viewAtColumn:0 row:1 makeIfNecessary:YES];
    window.placePointer(NSMakePoint(200, 60), table);
    EXPECT_EQ(scrolledTo(40), 1);
    state.addClicked();
    redraw();
    ASSERT_TRUE(window.get().attachedSheet != nil);
    EXPECT_EQ(scrolledTo(80), 0);
    [controller discardView];
}

} // namespace
} // namespace kestrel::tests
