// One row of the settings list: what it shows, where its parts stand, its menu and the pointer.

#include "shells/macos/views/item_row_cell_view.h"
#include "shells/macos/views/kit/rounded_fill_view.h"
#include "shells/macos/views/kit/symbol_view.h"
#include "tests/macos/views_support.h"

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

    /// Of the title, the detail, the badge's text, the actions symbol, the picture and the badge.
    std::vector<NSColor*> colors() {
        const auto colorOf = [&](const char* text) { return fieldWith(cell_, text).textColor; };
        return {colorOf("Editor"),
                colorOf("/Applications/Editor.app"),
                colorOf("App"),
                cell_.actions.contentTintColor,
                findView<KSTItemPictureView>(cell_).contentTintColor,
                badge().color};
    }

    /// The system's colour for text in selected rows, with that opacity.
    static void expectOnSelection(NSColor* color, double opacity) {
        const auto components = [](NSColor* shown) {
            return [shown colorUsingColorSpace:NSColorSpace.sRGBColorSpace];
        };
        NSColor* const actual = components(color);
        NSColor* const expected = components(NSColor.alternateSelectedControlTextColor);
        ASSERT_TRUE(actual && expected);
        EXPECT_NEAR(actual.redComponent, expected.redComponent, 0.01);
        EXPECT_NEAR(actual.greenComponent, expected.greenComponent, 0.01);
        EXPECT_NEAR(actual.blueComponent, expected.blueComponent, 0.01);
        EXPECT_NEAR(actual.alphaComponent, expected.alphaComponent * opacity, 0.01);
    }

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
    cell_.underPointer = YES;
    EXPECT_EQ(cell_.actions.alphaValue, 1);
    cell_.underPointer = NO;
    EXPECT_EQ(cell_.actions.alphaValue, 0);
    EXPECT_FALSE(cell_.actions.hidden);
    EXPECT_TRUE(NSEqualRects(cell_.actions.frame, place)) << "it keeps its place";
    EXPECT_GT(place.size.width, 0);
}

TEST_F(MacItemRowTest, TheCommittedRowKeepsItsActionsButton) {
    show(appItem("Editor"), true);
    EXPECT_EQ(cell_.actions.alphaValue, 1);
    cell_.underPointer = YES;
    cell_.underPointer = NO;
    EXPECT_EQ(cell_.actions.alphaValue, 1);
}

TEST_F(MacItemRowTest, ARedrawKeepsThePointerAndReuseForgetsIt) {
    cell_.underPointer = YES;
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
    EXPECT_TRUE([actions itemAtIndex:0].image != nil);
    EXPECT_EQ(textOf([actions itemAtIndex:1].title), "Edit");
    EXPECT_TRUE([actions itemAtIndex:2].isSeparatorItem);
    EXPECT_EQ(textOf([actions itemAtIndex:3].title), "Delete");
    NSAttributedString* const title = [actions itemAtIndex:3].attributedTitle;
    EXPECT_TRUE([[title attribute:NSForegroundColorAttributeName atIndex:0
                   effectiveRange:nullptr] isEqual:NSColor.systemRedColor]);
    EXPECT_TRUE([[title attribute:NSFontAttributeName atIndex:0
                   effectiveRange:nullptr] isEqual:[NSFont menuFontOfSize:0]]);
    choose(1);
    EXPECT_EQ(edits_, 1);
    choose(3);
    EXPECT_EQ(deletions_, 1);
    EXPECT_EQ(edits_, 1);
}

TEST_F(MacItemRowTest, AssistiveProgramsHearWhatTheActionsButtonIsFor) {
    for (const char* const title : {"Editor", "Renamed"}) {
        show(appItem(title));
        EXPECT_EQ(textOf(cell_.actions.accessibilityLabel), "Actions");
        NSCell* const buttonCell = cell_.actions.cell;
        EXPECT_EQ(textOf(buttonCell.accessibilityLabel), "Actions");
        choose(1);
    }
}

TEST_F(MacItemRowTest, AssistiveProgramsReadTitleBadgeAndDetailInThisOrder) {
    EXPECT_TRUE(cell_.accessibilityElement);
    EXPECT_TRUE([cell_.accessibilityRole isEqualToString:NSAccessibilityCellRole]);
    NSControl* const parts[] = {fieldWith(cell_, "Editor"), fieldWith(cell_, "App"),
                                fieldWith(cell_, "/Applications/Editor.app"), cell_.actions};
    NSArray* const children = cell_.accessibilityChildrenInNavigationOrder;
    ASSERT_EQ(children.count, std::size(parts));
    NSUInteger place = 0;
    for (NSControl* part : parts) {
        id const child = children[place];
        EXPECT_TRUE(child == part || child == part.cell) << place;
        ++place;
    }
    KSTItemPictureView* const picture = findView<KSTItemPictureView>(cell_);
    NSCell* const pictureCell = picture.cell;
    EXPECT_FALSE(picture.accessibilityElement);
    EXPECT_FALSE(pictureCell.accessibilityElement);
}

TEST_F(MacItemRowTest, ASelectedRowIsReadableOnTheAccentColour) {
    ASSERT_EQ(cell_.backgroundStyle, NSBackgroundStyleNormal);
    const std::vector<NSColor*> plain = colors();
    EXPECT_TRUE([plain[0] isEqual:NSColor.labelColor]);
    EXPECT_TRUE([plain[1] isEqual:NSColor.secondaryLabelColor]);
    EXPECT_TRUE([plain[2] isEqual:NSColor.secondaryLabelColor]);
    EXPECT_TRUE([plain[3] isEqual:NSColor.secondaryLabelColor]);
    EXPECT_TRUE([plain[4] isEqual:NSColor.labelColor]);
    EXPECT_TRUE([plain[5] isEqual:NSColor.quaternaryLabelColor]);

    cell_.backgroundStyle = NSBackgroundStyleEmphasized;
    const double opacities[] = {1, 0.8, 1, 1, 1, 0.2};
    for (std::size_t i = 0; i < std::size(opacities); ++i)
        expectOnSelection(colors()[i], opacities[i]);

    cell_.backgroundStyle = NSBackgroundStyleNormal;
    EXPECT_EQ(colors(), plain);
    cell_.backgroundStyle = NSBackgroundStyleEmphasized;
    [cell_ prepareForReuse];
    EXPECT_EQ(colors(), plain) << "another item's row may not be selected";
    EXPECT_EQ(cell_.backgroundStyle, NSBackgroundStyleNormal);
    cell_.backgroundStyle = NSBackgroundStyleEmphasized;
    show(appItem("Renamed"), true);
    expectOnSelection(fieldWith(cell_, "Renamed").textColor, 1);
}

TEST_F(MacItemRowTest, TheBadgeIsDrawnAgainInItsNewColour) {
    badge().needsDisplay = NO;
    cell_.backgroundStyle = NSBackgroundStyleEmphasized;
    EXPECT_TRUE(badge().needsDisplay);
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
