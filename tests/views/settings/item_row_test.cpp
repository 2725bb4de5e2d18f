#include "views/settings/item_row.h"

#include "views/settings/item_row_style.h"

#include <gtest/gtest.h>

namespace kestrel {
namespace {

ItemRow rowOf(ItemType type, std::optional<std::string> path,
              std::optional<std::string> command = std::nullopt) {
    return {
        .item = {
            .title = "Item", .type = type, .path = std::move(path), .command = std::move(command)}};
}

TEST(ItemRowTest, TheDetailIsThePathOrTheCommand) {
    EXPECT_EQ(rowOf(ItemType::app, "/a", "ls").detail(), "/a");
    EXPECT_EQ(rowOf(ItemType::commandFile, "/b", "ls").detail(), "/b");
    EXPECT_EQ(rowOf(ItemType::inlineCommand, "/c", "ls").detail(), "ls");
}

TEST(ItemRowTest, AnAppWithoutAPathShowsNoPath) {
    EXPECT_EQ(rowOf(ItemType::app, std::nullopt).detail(), "(no path)");
    EXPECT_EQ(rowOf(ItemType::commandFile, std::nullopt, "ls").detail(), "(no path)");
}

TEST(ItemRowTest, AnInlineCommandWithoutACommandShowsNoCommandEvenWithAPath) {
    EXPECT_EQ(rowOf(ItemType::inlineCommand, std::nullopt).detail(), "(no command)");
    EXPECT_EQ(rowOf(ItemType::inlineCommand, "/c").detail(), "(no command)");
}

TEST(ItemRowTest, APresentButEmptyTextIsShownAsItIs) {
    EXPECT_EQ(rowOf(ItemType::app, "").detail(), "");
    EXPECT_EQ(rowOf(ItemType::inlineCommand, std::nullopt, "").detail(), "");
}

TEST(ItemRowTest, TheActionsButtonShowsOnlyWhileHoveredOrCommitted) {
    ItemRow row = rowOf(ItemType::app, "/a");
    EXPECT_EQ(row.actionsOpacity(), 0);
    row.isHovered = true;
    EXPECT_EQ(row.actionsOpacity(), 1);
    row.isSelected = true;
    EXPECT_EQ(row.actionsOpacity(), 1);
    row.isHovered = false;
    EXPECT_EQ(row.actionsOpacity(), 1);
}

TEST(ItemRowTest, TheBadgeIsTheTypesOwnName) {
    EXPECT_EQ(rowOf(ItemType::app, "").badge(), "App");
    EXPECT_EQ(rowOf(ItemType::commandFile, "").badge(), "Command File");
    EXPECT_EQ(rowOf(ItemType::inlineCommand, "").badge(), "Inline Command");
}

TEST(ItemRowTest, AScreenReaderSaysTheTypeAndTheDetail) {
    EXPECT_EQ(rowOf(ItemType::app, "/a", "ls").accessibleDescription(), "App, /a");
    EXPECT_EQ(rowOf(ItemType::inlineCommand, "/c").accessibleDescription(),
              "Inline Command, (no command)");
}

namespace irs = item_row_style;

TEST(ItemRowStyleTest, HasItsNumbersAndTexts) {
    EXPECT_EQ(irs::spacing, 10);
    EXPECT_EQ(irs::padding, (style::Insets{4, 0, 4, 0}));
    EXPECT_EQ(irs::iconSize, (Size{22, 22}));
    EXPECT_EQ(irs::lineSpacing, 2);
    EXPECT_EQ(irs::title.font, (style::Font{13, FontWeight::medium}));
    EXPECT_EQ(irs::detail.font, style::caption);
    EXPECT_EQ(irs::detailLineLimit, 1);
    EXPECT_EQ(irs::actions.name, "ellipsis.circle");
    EXPECT_EQ(irs::actions.font.size, 14);
    EXPECT_EQ(irs::editAction.english, "Edit");
    EXPECT_EQ(irs::deleteAction.english, "Delete");
    EXPECT_EQ(irs::badge::padding, (style::Insets{2, 5, 2, 5}));
    EXPECT_EQ(irs::badge::radius, 4);
    EXPECT_EQ(irs::badge::text.font, (style::Font{10, FontWeight::medium}));
}

TEST(ItemRowStyleTest, TheMenusTitlesAreLocalizable) {
    EXPECT_EQ(irs::editAction.lookup, style::Text::Lookup::localizable);
    EXPECT_EQ(irs::deleteAction.lookup, style::Text::Lookup::localizable);
}

} // namespace
} // namespace kestrel
