#include "actions/item_icon.h"

#include "tests/fakes/fake_system.h"

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

class ItemIconTest : public testing::Test {
  protected:
    CallLog log;
    FakeTerminal terminal{log};

    ItemIcon iconOf(ItemType type, std::optional<std::string> path,
                    std::optional<std::string> command = std::nullopt) {
        return iconFor(
            {.title = "Item", .type = type, .path = std::move(path), .command = std::move(command)},
            terminal);
    }
};

TEST_F(ItemIconTest, AnAppOrFileWithAPathHasTheIconOfThatFileExactlyAsStored) {
    EXPECT_EQ(iconOf(ItemType::app, "~/Editor "), ItemIcon(FileIcon{"~/Editor "}));
    EXPECT_EQ(iconOf(ItemType::commandFile, "/run.sh"), ItemIcon(FileIcon{"/run.sh"}));
}

TEST_F(ItemIconTest, AnAppWithoutAPathShowsAppDashed) {
    EXPECT_EQ(iconOf(ItemType::app, ""), ItemIcon(SymbolIcon{"app.dashed"}));
    EXPECT_EQ(iconOf(ItemType::app, std::nullopt), ItemIcon(SymbolIcon{"app.dashed"}));
}

TEST_F(ItemIconTest, ACommandFileWithoutAPathShowsDocText) {
    EXPECT_EQ(iconOf(ItemType::commandFile, std::nullopt), ItemIcon(SymbolIcon{"doc.text"}));
    EXPECT_EQ(iconOf(ItemType::commandFile, ""), ItemIcon(SymbolIcon{"doc.text"}));
}

TEST_F(ItemIconTest, AnAppWhosePathDoesNotExistStillHasAFileIcon) {
    EXPECT_EQ(iconOf(ItemType::app, "/no/such/file"), ItemIcon(FileIcon{"/no/such/file"}));
}

TEST_F(ItemIconTest, AllInlineCommandsShareTheTerminalsIcon) {
    EXPECT_EQ(iconOf(ItemType::inlineCommand, "/apps/Editor", "ls"),
              ItemIcon(FileIcon{"/terminal"}));
    EXPECT_EQ(iconOf(ItemType::inlineCommand, std::nullopt), ItemIcon(FileIcon{"/terminal"}));
}

TEST_F(ItemIconTest, WithoutATerminalEveryInlineCommandShowsTheTerminalSymbol) {
    terminal.application = std::nullopt;
    EXPECT_EQ(iconOf(ItemType::inlineCommand, std::nullopt, "ls"),
              ItemIcon(SymbolIcon{"terminal"}));
    EXPECT_EQ(iconOf(ItemType::inlineCommand, "/apps/Editor"), ItemIcon(SymbolIcon{"terminal"}));
}

} // namespace
} // namespace kestrel::tests
