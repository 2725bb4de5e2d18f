// The images of items, and of symbols.
#include "actions/item_icon.h"
#include "shells/macos/launching/terminal.h"
#include "shells/macos/views/item_icon_image.h"
#include "shells/macos/views/kit/symbol_view.h"
#include "tests/macos_standins/macos_fixture.h"

namespace kestrel::tests {
namespace {

using macos_shell::itemIconImage;

class ItemIconImageTest : public MacosFixture {
  protected:
    macos_shell::AppleScriptTerminal terminal;

    NSImage* iconOf(ItemType type, std::optional<std::string> path) {
        const LauncherItem item{.title = "One", .type = type, .path = std::move(path)};
        return itemIconImage(iconFor(item, terminal));
    }

    static bool isSymbol(NSImage* image, NSString* name) {
        return [recording::symbolName(image) isEqualToString:name];
    }
};

TEST_F(ItemIconImageTest, ASymbolHasTheSizeAndWeightOfItsFont) {
    for (const auto& [weight, native] :
         std::vector<std::pair<FontWeight, CGFloat>>{{FontWeight::regular, NSFontWeightRegular},
                                                     {FontWeight::medium, NSFontWeightMedium},
                                                     {FontWeight::semibold, NSFontWeightSemibold},
                                                     {FontWeight::bold, NSFontWeightBold}}) {
        NSImage* const image =
            macos_shell::symbolImage({.name = "plus", .font = {.size = 14, .weight = weight}});
        EXPECT_TRUE(isSymbol(image, @"plus"));
        NSString* const line = [NSString
            stringWithFormat:@"NSImage imageWithSymbolConfiguration: %@ %@", @14.0, @(native)];
        EXPECT_EQ(recording::lines().back(), line.UTF8String);
    }
}

TEST_F(ItemIconImageTest, TheIconOfAPathIsTheSystemsForExactlyThatPath) {
    for (const char* path : {"/Applications/One.app", "~/One.app", "/nowhere"}) {
        for (const ItemType type : {ItemType::app, ItemType::commandFile}) {
            EXPECT_TRUE(iconOf(type, path) != nil);
            EXPECT_EQ(recording::lines().back(), std::string("NSWorkspace iconForFile: ") + path);
        }
    }
}

TEST_F(ItemIconImageTest, WithoutAPathASymbolWithoutDescriptionStandsIn) {
    NSImage* const app = iconOf(ItemType::app, "");
    EXPECT_TRUE(isSymbol(app, @"app.dashed"));
    EXPECT_EQ(app.accessibilityDescription, nil);
    EXPECT_FALSE(recording::isTemplate(app));
    EXPECT_TRUE(isSymbol(iconOf(ItemType::commandFile, std::nullopt), @"doc.text"));
    EXPECT_EQ(recording::count("NSWorkspace iconForFile:"), 0);
}

TEST_F(ItemIconImageTest, InlineCommandsShareTheIconOfTerminal) {
    EXPECT_TRUE(isSymbol(iconOf(ItemType::inlineCommand, "/bin/ls"), @"terminal"));
    recording::setApplication(@"com.apple.Terminal", [NSURL fileURLWithPath:@"/Terminal.app"]);
    iconOf(ItemType::inlineCommand, "/bin/ls");
    EXPECT_EQ(recording::lines().back(), "NSWorkspace iconForFile: /Terminal.app");
}

TEST_F(ItemIconImageTest, AnEmptyPictureStandsInForAMissingSymbol) {
    recording::hideSymbol(@"app.dashed");
    NSImage* const image = iconOf(ItemType::app, std::nullopt);
    ASSERT_TRUE(image != nil);
    EXPECT_EQ(recording::symbolName(image), nil);
    EXPECT_EQ(image.representations.count, 0U);
}

} // namespace
} // namespace kestrel::tests
