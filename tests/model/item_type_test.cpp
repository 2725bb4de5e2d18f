#include "model/item_type.h"

#include <gtest/gtest.h>
#include <string>

namespace kestrel {

namespace {

TEST(ItemTypeTest, AllKindsStandInTheOrderInWhichTheyAreOffered) {
    EXPECT_EQ(allItemTypes,
              (std::array{ItemType::app, ItemType::commandFile, ItemType::inlineCommand}));
}

TEST(ItemTypeTest, RawValuesAreTheTextsThatTheUserReads) {
    EXPECT_EQ(rawValue(ItemType::app), "App");
    EXPECT_EQ(rawValue(ItemType::commandFile), "Command File");
    EXPECT_EQ(rawValue(ItemType::inlineCommand), "Inline Command");
}

TEST(ItemTypeTest, OnlyInlineCommandsUseTheirCommand) {
    EXPECT_FALSE(usesCommand(ItemType::app));
    EXPECT_FALSE(usesCommand(ItemType::commandFile));
    EXPECT_TRUE(usesCommand(ItemType::inlineCommand));
}

TEST(ItemTypeTest, EveryKindComesBackFromItsRawValue) {
    for (const ItemType type : allItemTypes)
        EXPECT_EQ(itemTypeFromRawValue(rawValue(type)), type) << rawValue(type);
}

TEST(ItemTypeTest, AnyOtherTextIsNoKind) {
    for (const std::string text :
         {"", "app", "APP", " App", "App ", "App\n", "Ap", "Apps", "command file", "Command file",
          "CommandFile", "Command  File", "Command\u00A0File", "Inline command", "inline Command",
          "Inline", "commandFile", "0"})
        EXPECT_EQ(itemTypeFromRawValue(text), std::nullopt) << '"' << text << '"';
    EXPECT_EQ(itemTypeFromRawValue({"App\0", 4}), std::nullopt);
}

TEST(ItemTypeTest, TheHashIsThatOfTheRawValue) {
    for (const ItemType type : allItemTypes)
        EXPECT_EQ(std::hash<ItemType>{}(type), std::hash<std::string_view>{}(rawValue(type)));
}

} // namespace

} // namespace kestrel
