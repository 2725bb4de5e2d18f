#include "shells/linux/desktop/appearance/palettes.h"

#include "shells/linux/desktop/appearance/contrast.h"

#include <gmock/gmock.h>

#include <vector>

namespace kestrel::linux_shell {
namespace {

struct Pair {
    const char* what;
    QPalette::ColorRole text;
    QPalette::ColorRole background;
    double least;
};

const std::vector<Pair> pairs{
    {"text of windows", QPalette::WindowText, QPalette::Window, 4.5},
    {"text of fields", QPalette::Text, QPalette::Base, 4.5},
    {"text of every second row", QPalette::Text, QPalette::AlternateBase, 4.5},
    {"text of buttons", QPalette::ButtonText, QPalette::Button, 4.5},
    {"selected text", QPalette::HighlightedText, QPalette::Highlight, 4.5},
    {"text of tooltips", QPalette::ToolTipText, QPalette::ToolTipBase, 4.5},
    {"links", QPalette::Link, QPalette::Base, 4.5},
    {"links in windows", QPalette::Link, QPalette::Window, 4.5},
    {"visited links", QPalette::LinkVisited, QPalette::Base, 4.5},
    {"placeholders", QPalette::PlaceholderText, QPalette::Base, 3},
};

void expectReadable(const QPalette& palette, const char* name) {
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        for (const auto& [what, text, background, least] : pairs) {
            EXPECT_EQ(palette.color(group, text).alpha(), 255) << name << ": " << what;
            EXPECT_GE(contrastRatio(palette.color(group, text), palette.color(group, background)),
                      least)
                << name << ": " << what;
        }
    }
}

TEST(PalettesTest, EveryTextCanBeRead) {
    using enum ColorScheme;
    expectReadable(paletteFor(light, Contrast::normal), "light");
    expectReadable(paletteFor(dark, Contrast::normal), "dark");
    expectReadable(paletteFor(light, Contrast::high), "light, high contrast");
    expectReadable(paletteFor(dark, Contrast::high), "dark, high contrast");
}

TEST(PalettesTest, LightIsLightAndDarkIsDark) {
    for (const auto contrast : {Contrast::normal, Contrast::high}) {
        const QPalette light = paletteFor(ColorScheme::light, contrast);
        const QPalette dark = paletteFor(ColorScheme::dark, contrast);
        EXPECT_GT(light.color(QPalette::Window).lightness(), 200);
        EXPECT_LT(dark.color(QPalette::Window).lightness(), 60);
        EXPECT_EQ(isHighContrast(light), contrast == Contrast::high);
        EXPECT_EQ(isHighContrast(dark), contrast == Contrast::high);
    }
}

TEST(PalettesTest, HighContrastHasMuchOfItEverywhere) {
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark}) {
        const QPalette normal = paletteFor(scheme, Contrast::normal);
        const QPalette high = paletteFor(scheme, Contrast::high);
        for (const auto& [what, text, background, least] : pairs) {
            EXPECT_GE(contrastRatio(high.color(text), high.color(background)),
                      contrastRatio(normal.color(text), normal.color(background)))
                << what;
            EXPECT_GE(contrastRatio(high.color(text), high.color(background)), 7) << what;
        }
    }
}

PaletteColors grayColors(const QColor& placeholder) {
    const QColor background(0x1B, 0x1E, 0x20);
    const QColor text(0xFC, 0xFC, 0xFC);
    return {.window = background,
            .windowText = text,
            .base = background,
            .alternateBase = background,
            .text = text,
            .button = background,
            .buttonText = text,
            .highlight = text,
            .highlightedText = background,
            .toolTip = background,
            .toolTipText = text,
            .link = text,
            .visitedLink = text,
            .placeholder = placeholder};
}

TEST(PalettesTest, PlaceholderThatCannotBeReadIsReplaced) {
    for (const QColor& unreadable : {QColor(), QColor(Qt::black), QColor(0x30, 0x30, 0x30)})
        expectReadable(paletteOf(grayColors(unreadable)), qPrintable(unreadable.name()));
    const QColor readable(0xA1, 0xA9, 0xB1);
    EXPECT_EQ(paletteOf(grayColors(readable)).color(QPalette::PlaceholderText), readable);
}

TEST(PalettesTest, NothingOfTheToolkitsOwnPaletteShowsThrough) {
    const QPalette palette = paletteFor(ColorScheme::dark, Contrast::normal);
    for (int role = 0; role < QPalette::NColorRoles; ++role) {
        if (role != QPalette::NoRole) {
            EXPECT_TRUE(
                palette.isBrushSet(QPalette::Active, static_cast<QPalette::ColorRole>(role)))
                << role;
        }
    }
}

} // namespace
} // namespace kestrel::linux_shell
