// What the settings view asks of the system, and what only the stand-ins can say or promise: that
// nothing else holds a controller, which row is clicked.

#include "shells/macos/views/kit/announcer.h"
#include "shells/macos/views/kit/face_button.h"
#include "tests/macos/settings_view_support.h"

#include <macos-check/recording.h>

#include "views/accessible_texts.h"

namespace kestrel::tests {
namespace {

class MacSettingsRecordedTest : public MacSettingsFixture {
  protected:
    void SetUp() override {
        recording::reset();
        MacSettingsFixture::SetUp();
    }

    /// What a screen reader was asked to say since the last call.
    static std::vector<std::string> announcements() {
        const std::string call = "NSAccessibilityPostNotificationWithUserInfo ";
        std::vector<std::string> result;
        for (const std::string& line : recording::lines())
            if (line.starts_with(call))
                result.push_back(line.substr(call.size()));
        recording::reset();
        return result;
    }
};

TEST_F(MacSettingsRecordedTest, TheButtonsShowTheirSymbols) {
    const char* const symbols[][2] = {{"Add", "plus"}, {"Edit", "pencil"}, {"Delete", "trash"}};
    for (const auto& [name, symbol] : symbols) {
        KSTFaceButton* const face = (KSTFaceButton*)button(name);
        EXPECT_EQ(textOf(recording::symbolName(face.symbol.image)), symbol);
    }
}

TEST_F(MacSettingsRecordedTest, NoSheetIsBegunWhileOneIsOpen) {
    click(button("Add"));
    ASSERT_TRUE(sheetOpens());
    manager.items.append(first);
    redraw();
    EXPECT_EQ(recording::count("NSWindow beginSheet:completionHandler:"), 1);
}

TEST_F(MacSettingsRecordedTest, ReturnIsBoundOnlyTogetherWithCommand) {
    click(button("Add"));
    ASSERT_TRUE(sheetOpens());
    EXPECT_EQ(recording::count("NSButton setKeyEquivalent: \r 1048576"), 1);
    EXPECT_EQ(recording::count("NSButton setKeyEquivalent: \r"), 1);
}

TEST_F(MacSettingsRecordedTest, OnlyAChangeOfTheListReloadsTheTable) {
    recording::reset();
    select(1);
    click(button("Add"));
    redraw();
    EXPECT_EQ(recording::count("NSTableView reloadData"), 0);
    manager.items.assign({first, second, third});
    manager.items.append(first);
    redraw();
    EXPECT_EQ(recording::count("NSTableView reloadData"), 1);
}

TEST_F(MacSettingsRecordedTest, AScreenReaderIsToldOnceOfEachChange) {
    const auto said = [](const std::string& text) {
        return Titles{"NSWindow NSAccessibilityAnnouncementRequestedNotification " + text + " 50"};
    };
    select(0);
    EXPECT_TRUE(announcements().empty());
    [table() keyDown:keyPress(NSDownArrowFunctionKey, NSEventModifierFlagOption)];
    EXPECT_TRUE(announcements().empty()) << "only after the change is drawn";
    redraw();
    EXPECT_EQ(recording::announcingElement(), window_->get());
    EXPECT_EQ(announcements(), said("Moved to 2 of 3"));
    redraw();
    EXPECT_TRUE(announcements().empty());
    [table() keyDown:keyPress(NSDownArrowFunctionKey, NSEventModifierFlagOption)];
    redraw();
    EXPECT_EQ(announcements(), said("Moved to 3 of 3"));
    [table() keyDown:keyPress(NSDeleteCharacter)];
    redraw();
    EXPECT_EQ(announcements(), said("Deleted First"));
    add(@"50% of %1");
    EXPECT_EQ(recording::announcingElement(), window_->get());
    EXPECT_EQ(announcements(), said("Added 50% of %1"));
}

TEST_F(MacSettingsRecordedTest, AScreenReaderIsToldInTheUsersLanguageAndDigits) {
    recording::translate(@"Moved to %1 of %2", @"Von %2 nun 100 % an Platz %1");
    recording::setLocale(@"de_DE");
    const Announcement moved{accessible_texts::moved, {std::size_t{1200}, std::size_t{34000}}};
    EXPECT_EQ(textOf(macos_shell::textFor(moved)), "Von 34.000 nun 100 % an Platz 1.200");
}

TEST_F(MacSettingsRecordedTest, ADoubleClickOpensTheEditSheetForItsRow) {
    const SEL action = table().doubleAction;
    ASSERT_TRUE(action != nullptr);
    EXPECT_EQ(table().target, tableController());
    [table() setValue:@(-1) forKey:@"clickedRow"];
    EXPECT_TRUE([NSApp sendAction:(SEL _Nonnull)action to:table().target from:table()]);
    EXPECT_EQ(view_->itemToEdit(), std::nullopt) << "below the rows no row is clicked";
    [table() setValue:@2 forKey:@"clickedRow"];
    EXPECT_TRUE([NSApp sendAction:(SEL _Nonnull)action to:table().target from:table()]);
    ASSERT_TRUE(view_->itemToEdit());
    EXPECT_EQ(view_->itemToEdit()->id, third.id);
}

TEST_F(MacSettingsRecordedTest, ARedrawThatIsDueEndsWithTheController) {
    __weak KSTSettingsViewController* weakController = nil;
    @autoreleasepool {
        weakController = controller_;
        manager.items.remove({0});
        window_.reset();
        controller_ = nil;
    }
    EXPECT_TRUE(weakController == nil) << "nothing may keep the controller alive";
    redraw();
    manager.items.remove({0});
    redraw();
    EXPECT_EQ(order(), Titles{"Third"});
}

} // namespace
} // namespace kestrel::tests
