// Symbols for the core, and the pictures of items.
#include "actions/item_icon.h"
#include "shells/macos/desktop/images.h"
#include "shells/macos/launching/terminal.h"
#include "shells/macos/views/item_icon_image.h"
#include "tests/macos_standins/macos_fixture.h"

namespace kestrel::tests {
namespace {

using macos_shell::AppKitImage;
using macos_shell::itemIconImage;

class ImagesTest : public MacosFixture {
  protected:
    macos_shell::AppKitSymbolImages symbols;
    macos_shell::AppleScriptTerminal terminal;

    static NSImage* native(const std::shared_ptr<Image>& image) {
        return static_cast<const AppKitImage&>(*image).image();
    }

    NSImage* iconOf(ItemType type, std::optional<std::string> path) {
        const LauncherItem item{.title = "One", .type = type, .path = std::move(path)};
        return itemIconImage(iconFor(item, terminal));
    }

    static bool isSymbol(NSImage* image, NSString* name) {
        return [recording::symbolName(image) isEqualToString:name];
    }
};

TEST_F(ImagesTest, ASymbolCarriesItsDescription) {
    const auto image = symbols.imageWithSystemSymbolName("square.grid.2x2", "Kestrel");
    ASSERT_NE(image, nullptr);
    EXPECT_TRUE([native(image).accessibilityDescription isEqualToString:@"Kestrel"]);
    const auto plain = symbols.imageWithSystemSymbolName("plus", std::nullopt);
    EXPECT_EQ(native(plain).accessibilityDescription, nil);
}

TEST_F(ImagesTest, ASymbolThatTheSystemLacksIsNull) {
    recording::hideSymbol(@"square.grid.2x2");
    EXPECT_EQ(symbols.imageWithSystemSymbolName("square.grid.2x2", "Kestrel"), nullptr);
}

TEST_F(ImagesTest, AConfigurationSetsPointSizeAndWeight) {
    const auto image = symbols.imageWithSystemSymbolName("plus", std::nullopt);
    for (const auto& [weight, native] :
         std::vector<std::pair<FontWeight, CGFloat>>{{FontWeight::regular, NSFontWeightRegular},
                                                     {FontWeight::medium, NSFontWeightMedium},
                                                     {FontWeight::semibold, NSFontWeightSemibold},
                                                     {FontWeight::bold, NSFontWeightBold}}) {
        ASSERT_NE(symbols.imageWithSymbolConfiguration(image, {.pointSize = 14, .weight = weight}),
                  nullptr);
        NSString* const line = [NSString
            stringWithFormat:@"NSImage imageWithSymbolConfiguration: %@ %@", @14.0, @(native)];
        EXPECT_EQ(recording::lines().back(), line.UTF8String);
    }
}

TEST_F(ImagesTest, TheIconOfAPathIsTheSystemsForExactlyThatPath) {
    for (const char* path : {"/Applications/One.app", "~/One.app", "/nowhere"}) {
        for (const ItemType type : {ItemType::app, ItemType::commandFile}) {
            EXPECT_TRUE(iconOf(type, path) != nil);
            EXPECT_EQ(recording::lines().back(), std::string("NSWorkspace iconForFile: ") + path);
        }
    }
}

TEST_F(ImagesTest, WithoutAPathASymbolWithoutDescriptionStandsIn) {
    NSImage* const app = iconOf(ItemType::app, "");
    EXPECT_TRUE(isSymbol(app, @"app.dashed"));
    EXPECT_EQ(app.accessibilityDescription, nil);
    EXPECT_FALSE(recording::isTemplate(app));
    EXPECT_TRUE(isSymbol(iconOf(ItemType::commandFile, std::nullopt), @"doc.text"));
    EXPECT_EQ(recording::count("NSWorkspace iconForFile:"), 0);
}

TEST_F(ImagesTest, InlineCommandsShareTheIconOfTerminal) {
    EXPECT_TRUE(isSymbol(iconOf(ItemType::inlineCommand, "/bin/ls"), @"terminal"));
    recording::setApplication(@"com.apple.Terminal", [NSURL fileURLWithPath:@"/Terminal.app"]);
    iconOf(ItemType::inlineCommand, "/bin/ls");
    EXPECT_EQ(recording::lines().back(), "NSWorkspace iconForFile: /Terminal.app");
}

TEST_F(ImagesTest, AnEmptyPictureStandsInForAMissingSymbol) {
    recording::hideSymbol(@"app.dashed");
    NSImage* const image = iconOf(ItemType::app, std::nullopt);
    ASSERT_TRUE(image != nil);
    EXPECT_EQ(recording::symbolName(image), nil);
    EXPECT_EQ(image.representations.count, 0U);
}

} // namespace
} // namespace kestrel::tests
