// Everything faded, on everything that it is drawn on, in the palettes of many desktops.

#include "shells/linux/views/kit/contrast_levels.h"

#include "shells/linux/desktop/appearance/contrast.h"
#include "shells/linux/views/item_row_widget.h"
#include "shells/linux/views/kit/ellipsis_button.h"
#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/push_button.h"
#include "shells/linux/views/kit/rounded_field.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "tests/linux/views/pictures.h"
#include "tests/linux/views/theme_palettes.h"
#include "tests/linux/views/widget_fixture.h"
#include "views/popover/menu_popover_style.h"
#include "views/settings/item_row_style.h"

#include <QApplication>
#include <QImage>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kestrel::linux_shell {
namespace {

struct Surface {
    std::string name;
    QColor color;
};

/// What a drawing of `over` on `under` looks like.
QColor drawn(const QColor& under, const QColor& over) { return mixed(under, over, over.alphaF()); }

QColor active(const QPalette& palette, QPalette::ColorRole role) {
    return palette.color(QPalette::Active, role);
}

std::vector<Surface> plainSurfaces(const QPalette& palette) {
    return {{"window", active(palette, QPalette::Window)},
            {"list", active(palette, QPalette::Base)},
            {"sheet", panelColor(palette)}};
}

std::vector<Surface> surfacesOfRows(const QPalette& palette) {
    const QColor base = active(palette, QPalette::Base);
    std::vector<Surface> rows{{"row", base}};
    if (paletteOnSelection(palette) == palette) {
        rows.push_back({"selected row", selectionColor(palette)});
        rows.push_back({"row selected without keys", drawn(base, inactiveSelectionColor(palette))});
    }
    const QColor badge = colorFor(item_row_style::badge::background, palette);
    for (std::size_t i = 0, count = rows.size(); i < count; ++i)
        rows.push_back({"badge on " + rows[i].name, drawn(rows[i].color, badge)});
    return rows;
}

std::vector<Surface> hoveredSurfaces(const QPalette& palette) {
    const QColor window = active(palette, QPalette::Window);
    return {{"hovered button", drawn(window, washColor(palette, 0.06))},
            {"pressed button", drawn(window, washColor(palette, 0.12))},
            {"highlighted row",
             drawn(window, washColor(palette, menu_popover_style::row::highlightOpacity))}};
}

void expectSeen(const QColor& color, const std::vector<Surface>& surfaces, double least,
                const std::string& what) {
    for (const auto& [name, background] : surfaces)
        EXPECT_GE(contrastRatio(drawn(background, color), background), least)
            << what << " on " << name << ' ' << color.name(QColor::HexArgb).toStdString();
}

TEST(ContrastLevelsTest, FaintTextsCanBeReadInEveryPalette) {
    using enum style::ColorLevel;
    for (const auto& [name, palette] : themePalettes()) {
        const std::string of = std::string(name) + ": ";
        expectSeen(colorFor(tertiary, palette), plainSurfaces(palette), 4.5, of + "tertiary");
        for (const auto level : {primary, secondary}) {
            const std::string what = of + (level == primary ? "primary" : "secondary");
            for (const auto& surfaces :
                 {plainSurfaces(palette), surfacesOfRows(palette), hoveredSurfaces(palette)})
                expectSeen(colorFor(level, palette), surfaces, 4.5, what);
        }
    }
}

TEST(ContrastLevelsTest, LevelsStayStepsThatTheEyeTellsApart) {
    using enum style::ColorLevel;
    for (const auto& [name, palette] : themePalettes()) {
        const double full = colorFor(primary, palette).alphaF();
        const double reduced = colorFor(secondary, palette).alphaF();
        const double faint = colorFor(tertiary, palette).alphaF();
        EXPECT_GE(full - reduced, 0.1) << name;
        EXPECT_GE(reduced - faint, 0.05) << name;
    }
}

TEST(ContrastLevelsTest, OutlinesOfFieldsAndTheMarkOfTheFocusAreSeen) {
    for (const auto& [name, palette] : themePalettes()) {
        const std::string of = std::string(name) + ": ";
        expectSeen(fieldOutlineColor(palette), plainSurfaces(palette), 3, of + "outline");
        expectSeen(fieldOutlineColor(palette, Pointer::over), plainSurfaces(palette), 3,
                   of + "outline under the pointer");
        expectSeen(focusColor(palette), plainSurfaces(palette), 3, of + "mark of the focus");
    }
}

TEST(ContrastLevelsTest, PlaceholdersCanBeReadInEveryPalette) {
    for (const auto& [name, palette] : themePalettes()) {
        const QColor base = active(palette, QPalette::Base);
        EXPECT_GE(contrastRatio(drawn(base, placeholderColor(palette)), base), 4.5) << name;
    }
}

TEST(ContrastLevelsTest, ActionThatDeletesCanBeReadInMenus) {
    for (const auto& [name, palette] : themePalettes()) {
        const QColor window = active(palette, QPalette::Window);
        const QColor wash = washColor(palette, menu_popover_style::row::highlightOpacity);
        const std::vector<Surface> menus{
            {"menu", window},
            {"highlighted action", drawn(window, wash)},
            {"menu of another style", active(palette, QPalette::Base)}};
        expectSeen(colorFor(style::ColorLevel::destructive, palette), menus, 4.5, name);
    }
}

TEST(ContrastLevelsTest, TitleOfAProminentButtonCanBeRead) {
    for (const auto& [name, palette] : themePalettes()) {
        const QColor title = active(palette, QPalette::HighlightedText);
        EXPECT_GE(contrastRatio(title, prominentColor(palette)), 4.5) << name;
        PushButton button(QStringLiteral("Save"), PushButton::Look::prominent);
        button.setPalette(palette);
        const QImage image = button.grab().toImage();
        EXPECT_GE(contrastRatio(title, image.pixelColor(6, button.height() / 2)), 4.5) << name;
    }
}

TEST(ContrastLevelsTest, AccentStaysThePalettesOwnWhereItIsSeen) {
    const QPalette palette = paletteFor(ColorScheme::light, Contrast::normal);
    EXPECT_EQ(focusColor(palette), active(palette, QPalette::Highlight));
    EXPECT_EQ(prominentColor(palette), active(palette, QPalette::Highlight));
}

TEST(ContrastLevelsTest, SelectionUnderHighContrastIsTheFullHighlight) {
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark}) {
        const QPalette palette = paletteFor(scheme, Contrast::high);
        const QColor highlight = active(palette, QPalette::Highlight);
        EXPECT_EQ(selectionColor(palette), highlight);
        EXPECT_EQ(inactiveSelectionColor(palette), highlight);
        const QPalette colors = paletteOnSelection(palette);
        const std::vector<Surface> surfaces{
            {"selection", highlight},
            {"badge", drawn(highlight, colorFor(item_row_style::badge::background, colors))}};
        for (const auto level : {style::ColorLevel::primary, style::ColorLevel::secondary})
            expectSeen(colorFor(level, colors), surfaces, 4.5, "text");
        expectSeen(focusColor(colors), {surfaces.front()}, 3, "mark of the focus");
    }
}

TEST(ContrastLevelsTest, SelectionOtherwiseLeavesTheColorsAsTheyAre) {
    const QPalette palette = paletteFor(ColorScheme::light, Contrast::normal);
    EXPECT_EQ(paletteOnSelection(palette), palette);
    EXPECT_NE(selectionColor(palette), active(palette, QPalette::Highlight));
}

TEST(ContrastLevelsTest, FieldDrawsAPlaceholderThatThePaletteLeavesUnset) {
    for (const auto& [name, palette] : themePalettes()) {
        QApplication::setPalette(palette);
        RoundedField field(style::Font{.size = 24}, QStringLiteral("MMMM"), QStringLiteral("x"));
        const QColor base = active(palette, QPalette::Base);
        EXPECT_GE(greatestContrast(field.grab(QRect(8, 3, 100, 24)).toImage(), base), 3) << name;
    }
    QApplication::setPalette(QPalette());
}

class HighContrastSelectionTest : public SettingsFixture {
  protected:
    void SetUp() override {
        QApplication::setPalette(palette);
        SettingsFixture::SetUp();
    }

    void TearDown() override {
        widget.reset();
        QApplication::setPalette(QPalette());
    }

    ItemRowWidget& row(int index) {
        return *qobject_cast<ItemRowWidget*>(list().realisedRow(index));
    }

    /// What is drawn in a part of a row stands out from the part's first pixel.
    bool isReadable(int index, const QRect& part) {
        const QImage image =
            list().viewport()->grab(part.translated(list().rowRect(index).topLeft())).toImage();
        return greatestContrast(image, image.pixelColor(0, 0)) >= 4.5;
    }

    const QPalette palette = paletteFor(ColorScheme::dark, Contrast::high);
};

TEST_F(HighContrastSelectionTest, EverythingInTheSelectedRowCanBeSeen) {
    clickRow(1);
    const QRect line = list().rowRect(1);
    const QImage image = list().viewport()->grab(line).toImage();
    EXPECT_EQ(image.pixelColor(line.width() / 2, 2), active(palette, QPalette::Highlight));
    const ItemRowWidget::Layout parts = row(1).layoutOfParts();
    EXPECT_TRUE(isReadable(1, parts.title));
    EXPECT_TRUE(isReadable(1, parts.detail));
    EXPECT_TRUE(isReadable(1, parts.badge.adjusted(4, 1, -4, -1)));
    EXPECT_TRUE(isReadable(1, parts.actions));
    EXPECT_TRUE(isReadable(0, row(0).layoutOfParts().title));
}

TEST_F(HighContrastSelectionTest, ButtonOfARowHasTheSelectionsColorsOnlyWhileSelected) {
    const auto symbol = [this] {
        return active(row(1).actionsButton().palette(), QPalette::WindowText);
    };
    EXPECT_EQ(symbol(), active(palette, QPalette::WindowText));
    clickRow(1);
    EXPECT_EQ(symbol(), active(palette, QPalette::HighlightedText));
    clickRow(0);
    EXPECT_EQ(symbol(), active(palette, QPalette::WindowText));
    clickRow(1);
    const QPalette plain = paletteFor(ColorScheme::light, Contrast::normal);
    QApplication::setPalette(plain);
    turnEventLoop();
    EXPECT_EQ(symbol(), active(plain, QPalette::WindowText));
}

} // namespace
} // namespace kestrel::linux_shell
