#include "shells/macos/desktop/main_menu.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

using Lines = std::vector<std::string>;

/// Each item of a submenu as "key selector".
Lines shortcutsOf(NSMenu* menu) {
    Lines lines;
    for (NSMenuItem* item in menu.itemArray) {
        EXPECT_EQ(item.target, nil);
        if (item.action)
            lines.push_back(std::string(item.keyEquivalent.UTF8String) + " " +
                            NSStringFromSelector((SEL _Nonnull)item.action).UTF8String);
    }
    return lines;
}

class MainMenuTest : public testing::Test {
  protected:
    NSMenu* menu = macos_shell::makeMainMenu();

    NSMenu* submenu(NSInteger position) { return [menu itemAtIndex:position].submenu; }
};

TEST_F(MainMenuTest, TextFieldsFindTheirShortcutsAndNobodyIsNamedAsTarget) {
    ASSERT_EQ(menu.numberOfItems, 3);
    EXPECT_EQ(shortcutsOf(submenu(0)), Lines{"q terminate:"});
    EXPECT_EQ(shortcutsOf(submenu(1)),
              (Lines{"z undo:", "Z redo:", "x cut:", "c copy:", "v paste:", "a selectAll:"}));
    EXPECT_EQ(shortcutsOf(submenu(2)), Lines{"w performClose:"});
}

TEST_F(MainMenuTest, EveryShortcutIsWithCommand) {
    for (NSInteger position = 0; position < menu.numberOfItems; ++position)
        for (NSMenuItem* item in submenu(position).itemArray)
            if (item.action) {
                EXPECT_EQ(item.keyEquivalentModifierMask, NSEventModifierFlagCommand)
                    << item.title.UTF8String;
            }
}

} // namespace
} // namespace kestrel::tests
