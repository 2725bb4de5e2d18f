#include "shells/macos/desktop/main_menu.h"

#import <AppKit/AppKit.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

using Lines = std::vector<std::string>;

/// "option command h hide:" for an item, without the modifiers where it has no key, and "-" for a
/// line between two groups.
std::string lineOf(NSMenuItem* item) {
    if (item.separatorItem)
        return "-";
    const NSEventModifierFlags modifiers = item.keyEquivalentModifierMask;
    std::string line;
    if (item.keyEquivalent.length > 0) {
        line += modifiers & NSEventModifierFlagOption ? "option " : "";
        line += modifiers & NSEventModifierFlagCommand ? "command " : "";
        line += std::string(item.keyEquivalent.UTF8String) + " ";
    }
    return line + (item.action ? NSStringFromSelector((SEL _Nonnull)item.action).UTF8String : "");
}

Lines linesOf(NSMenu* menu) {
    Lines lines;
    for (NSMenuItem* item in menu.itemArray) {
        EXPECT_EQ(item.target, nil);
        lines.push_back(lineOf(item));
    }
    return lines;
}

class MainMenuTest : public testing::Test {
  protected:
    MainMenuTest() { macos_shell::installMainMenu(); }
    ~MainMenuTest() override {
        NSApp.windowsMenu = nil;
        NSApp.mainMenu = nil;
    }

    static NSMenu* submenu(NSInteger position) {
        return [NSApp.mainMenu itemAtIndex:position].submenu;
    }
};

TEST_F(MainMenuTest, TheMenusAreThoseOfEveryApplicationAndNobodyIsNamedAsTarget) {
    ASSERT_EQ(NSApp.mainMenu.numberOfItems, 3);
    EXPECT_EQ(linesOf(submenu(0)), (Lines{"orderFrontStandardAboutPanel:", "-", "command h hide:",
                                          "option command h hideOtherApplications:",
                                          "unhideAllApplications:", "-", "command q terminate:"}));
    EXPECT_EQ(linesOf(submenu(1)),
              (Lines{"command z undo:", "command Z redo:", "-", "command x cut:", "command c copy:",
                     "command v paste:", "delete:", "command a selectAll:"}));
    EXPECT_EQ(linesOf(submenu(2)), (Lines{"command m performMiniaturize:", "performZoom:",
                                          "command w performClose:", "-", "arrangeInFront:"}));
}

TEST_F(MainMenuTest, TheApplicationKnowsItsMenuOfWindows) {
    EXPECT_EQ(NSApp.windowsMenu, submenu(2));
}

/// What the languages' files have the title under.
NSString* keyOf(NSString* title) {
    return [title isEqualToString:@"Edit"] ? @"Edit (menu)" : title;
}

/// The titles of the menus and of their items, but for the application's name.
NSArray<NSString*>* keysOfTitles() {
    NSMutableArray<NSString*>* const keys = [NSMutableArray array];
    for (NSMenuItem* menu in NSApp.mainMenu.itemArray) {
        if (![menu.title isEqualToString:@"Kestrel"])
            [keys addObject:keyOf(menu.title)];
        for (NSMenuItem* item in menu.submenu.itemArray)
            if (!item.separatorItem)
                [keys addObject:item.title];
    }
    return keys;
}

TEST_F(MainMenuTest, EveryLanguageHasEveryTitle) {
    NSString* folder = @(__FILE__);
    for (int level = 0; level < 3; ++level)
        folder = folder.stringByDeletingLastPathComponent;
    folder = [folder stringByAppendingPathComponent:@"shells/macos/resources"];
    NSArray<NSString*>* const languages =
        [NSFileManager.defaultManager contentsOfDirectoryAtPath:folder error:nil];
    ASSERT_GE(languages.count, 6U) << folder.UTF8String;
    for (NSString* language in languages) {
        NSString* const file = [[folder stringByAppendingPathComponent:language]
            stringByAppendingPathComponent:@"Localizable.strings"];
        NSDictionary<NSString*, NSString*>* const texts =
            [NSDictionary dictionaryWithContentsOfFile:file];
        ASSERT_TRUE(texts != nil) << file.UTF8String;
        for (NSString* key in keysOfTitles()) {
            NSString* const text = texts[key];
            EXPECT_TRUE(text.length > 0) << file.UTF8String << ": " << key.UTF8String;
        }
    }
}

} // namespace
} // namespace kestrel::tests
