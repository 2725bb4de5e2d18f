// One row of the settings list: what it shows, where its parts stand, its menu and the pointer.

#include "shells/macos/views/item_row_cell_view.h"
#include "shells/macos/views/kit/rounded_fill_view.h"
#include "shells/macos/views/kit/symbol_view.h"
#include "tests/macos/views_support.h"

#include <macos-check/recording.h>

namespace kestrel::tests {
namespace {

class MacItemRowTest : public testing::Test {
  protected:
    void SetUp() override { show(appItem("Editor", "/Applications/Editor.app")); }

    void show(const LauncherItem& item, bool isSelected = false) {
        ItemRow row{.item = item, .isSelected = isSelected};
        row.onEdit = [this] { ++edits_; };
        row.onDelete = [this] { ++deletions_; };
        [cell_ showRow:row icon:[[NSImage alloc] initWithSize:NSMakeSize(32, 32)]];
    }

    bool shows(const std::string& text) { return fieldWith(cell_, text) != nil; }
    NSRect frameOf(const std::string& text) { return fieldWith(cell_, text).frame; }
    KSTRoundedFillView* badge() { return findView<KSTRoundedFillView>(cell_); }

    void choose(NSInteger entry) {
        NSMenuItem* const item = [cell_.actions itemAtIndex:entry];
        [NSApp sendAction:(SEL _Nonnull)item.action to:item.target from:item];
    }

    KSTItemRowCellView* cell_ =
        [[KSTItemRowCellView alloc] initWithFrame:NSMakeRect(0, 0, 480, 44)];
    int edits_ = 0;
    int deletions_ = 0;
};

TEST_F(MacItemRowTest, ShowsTitleDetailAndBadge) {
    EXPECT_TRUE(shows("Editor"));
    EXPECT_TRUE(shows("/Applications/Editor.app"));
    EXPECT_TRUE(shows("App"));
    show({.title = "List", .type = ItemType::inlineCommand, .path = "/x"});
    EXPECT_TRUE(shows("(no command)"));
    EXPECT_TRUE(shows("Inline Command"));
    show({.title = "None", .type = ItemType::commandFile});
    EXPECT_TRUE(shows("(no path)"));
}

TEST_F(MacItemRowTest, ThePartsStandWhereTheNumbersSay) {
    const NSRect picture = findView<KSTItemPictureView>(cell_).frame;
    EXPECT_EQ(picture.origin.x, 0);
    EXPECT_EQ(picture.size.width, 22);
    EXPECT_EQ(picture.size.height, 22);
    EXPECT_EQ(picture.origin.y, 11);
    const NSRect title = frameOf("Editor");
    const NSRect detail = frameOf("/Applications/Editor.app");
    EXPECT_EQ(title.origin.x, 32);
    EXPECT_EQ(detail.origin.x, 32);
    EXPECT_EQ(detail.origin.y - title.origin.y - title.size.height, 2);
    const NSRect badgeFrame = badge().frame;
    EXPECT_EQ(badgeFrame.origin.x + badgeFrame.size.width, 480);
    EXPECT_EQ(badge().radius, 4);
    const NSRect actions = cell_.actions.frame;
    EXPECT_EQ(badgeFrame.origin.x - actions.origin.x - actions.size.width, 10);
    NSTextField* const badgeText = findView<NSTextField>(badge());
    EXPECT_EQ(badgeText.frame.origin.x, 5);
    EXPECT_EQ(badgeText.frame.origin.y, 2);
    EXPECT_EQ(badgeFrame.size.width - badgeText.frame.size.width, 10);
    EXPECT_EQ(badgeFrame.size.height - badgeText.frame.size.height, 4);
}

TEST_F(MacItemRowTest, TheActionsButtonIsSeenWhileThePointerIsInside) {
    EXPECT_EQ(cell_.actions.alphaValue, 0);
    const NSRect place = cell_.actions.frame;
    [cell_ mouseEntered:[[NSEvent alloc] init]];
    EXPECT_EQ(cell_.actions.alphaValue, 1);
    [cell_ mouseExited:[[NSEvent alloc] init]];
    EXPECT_EQ(cell_.actions.alphaValue, 0);
    EXPECT_FALSE(cell_.actions.hidden);
    EXPECT_TRUE(NSEqualRects(cell_.actions.frame, place)) << "it keeps its place";
    EXPECT_GT(place.size.width, 0);
}

TEST_F(MacItemRowTest, TheCommittedRowKeepsItsActionsButton) {
    show(appItem("Editor"), true);
    EXPECT_EQ(cell_.actions.alphaValue, 1);
    [cell_ mouseEntered:[[NSEvent alloc] init]];
    [cell_ mouseExited:[[NSEvent alloc] init]];
    EXPECT_EQ(cell_.actions.alphaValue, 1);
}

TEST_F(MacItemRowTest, ARedrawKeepsThePointerAndReuseForgetsIt) {
    [cell_ mouseEntered:[[NSEvent alloc] init]];
    show(appItem("Renamed"));
    EXPECT_EQ(cell_.actions.alphaValue, 1);
    [cell_ prepareForReuse];
    EXPECT_EQ(cell_.actions.alphaValue, 0);
}

TEST_F(MacItemRowTest, TheMenuHoldsEditASeparatorAndDelete) {
    NSPopUpButton* const actions = cell_.actions;
    EXPECT_TRUE(actions.pullsDown);
    EXPECT_FALSE(actions.bordered);
    ASSERT_EQ(actions.numberOfItems, 4);
    EXPECT_TRUE([recording::symbolName([actions itemAtIndex:0].image) isEqual:@"ellipsis.circle"]);
    EXPECT_EQ(textOf([actions itemAtIndex:1].title), "Edit");
    EXPECT_TRUE([actions itemAtIndex:2].isSeparatorItem);
    EXPECT_EQ(textOf([actions itemAtIndex:3].title), "Delete");
    NSAttributedString* const title = [actions itemAtIndex:3].attributedTitle;
    EXPECT_TRUE([[title attribute:NSForegroundColorAttributeName atIndex:0
                   effectiveRange:nullptr] isEqual:NSColor.systemRedColor]);
    choose(1);
    EXPECT_EQ(edits_, 1);
    choose(3);
    EXPECT_EQ(deletions_, 1);
    EXPECT_EQ(edits_, 1);
}

TEST_F(MacItemRowTest, AssistiveProgramsHearWhatTheActionsButtonIsFor) {
    EXPECT_EQ(textOf(cell_.actions.accessibilityLabel), "Actions");
    show(appItem("Renamed"));
    EXPECT_EQ(textOf(cell_.actions.accessibilityLabel), "Actions");
}

TEST_F(MacItemRowTest, ALongDetailIsCutInTheMiddleOnOneLine) {
    const std::string path = "/" + std::string(300, 'x');
    show(appItem("Editor", path));
    NSTextField* const detail = fieldWith(cell_, path);
    EXPECT_EQ(detail.lineBreakMode, NSLineBreakByTruncatingMiddle);
    EXPECT_EQ(detail.maximumNumberOfLines, 1);
    EXPECT_LE(detail.frame.origin.x + detail.frame.size.width + 20, cell_.actions.frame.origin.x);
}

TEST_F(MacItemRowTest, ATooltipShowsADetailThatIsCut) {
    NSTextField* const detail = fieldWith(cell_, "/Applications/Editor.app");
    EXPECT_TRUE(detail.toolTip == nil);
    [cell_ setFrameSize:NSMakeSize(200, 44)];
    EXPECT_EQ(textOf(detail.toolTip), "/Applications/Editor.app");
    show(appItem("Editor", "/a"));
    EXPECT_TRUE(detail.toolTip == nil);
}

TEST_F(MacItemRowTest, ALongTitleMakesTheRowHigher) {
    const CGFloat oneLine = [cell_ heightForWidth:480];
    std::string title;
    for (int i = 0; i < 40; ++i)
        title += "word ";
    show(appItem(title));
    const CGFloat severalLines = [cell_ heightForWidth:480];
    EXPECT_GT(severalLines, oneLine * 1.5);
    EXPECT_GT([cell_ heightForWidth:300], severalLines);
}

TEST_F(MacItemRowTest, ARowTooNarrowForItsPartsDoesNotFail) {
    [cell_ setFrameSize:NSMakeSize(40, 44)];
    EXPECT_EQ(frameOf("Editor").size.width, 0);
}

} // namespace
} // namespace kestrel::tests
