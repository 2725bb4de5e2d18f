#include "shells/linux/desktop/appearance/appearance_settings.h"

#include <gmock/gmock.h>

#include <vector>

namespace kestrel::linux_shell {
namespace {

struct Theme {
    const char* name;
    AppearanceSettings settings;
};

TEST(AppearanceSettingsTest, NamesOfThemesTellWhatTheyCan) {
    const AppearanceSettings nothing;
    const AppearanceSettings isDark{.scheme = ColorScheme::dark};
    const std::vector<Theme> table{
        {"Adwaita", nothing},
        {"Adwaita-dark", isDark},
        {"Adwaita:dark", isDark},
        {"Arc-Darker", isDark},
        {"Mint-Y-Dark-Aqua", isDark},
        {"Yaru-blue-dark", isDark},
        {"Breeze Dark", isDark},
        {"Darkroom", nothing},
        {"Mint-Y-Darkness", nothing},
        {"Solarized", nothing},
        {"", nothing},
        {"HighContrast", {.scheme = std::nullopt, .contrast = Contrast::high}},
        {"HighContrastInverse", {.scheme = ColorScheme::dark, .contrast = Contrast::high}},
    };
    for (const auto& [name, settings] : table)
        EXPECT_EQ(settingsOfTheme(QString::fromLatin1(name)), settings) << name;
}

TEST(AppearanceSettingsTest, FirstSchemeCountsAndHighContrastOfAny) {
    const AppearanceSettings isDark{.scheme = ColorScheme::dark};
    const AppearanceSettings isLight{.scheme = ColorScheme::light};
    const AppearanceSettings isHigh{.scheme = std::nullopt, .contrast = Contrast::high};
    EXPECT_EQ(merged(isDark, isLight), isDark);
    EXPECT_EQ(merged({}, isLight), isLight);
    EXPECT_EQ(merged(isDark, {}), isDark);
    EXPECT_EQ(merged(isDark, isHigh),
              (AppearanceSettings{.scheme = ColorScheme::dark, .contrast = Contrast::high}));
    EXPECT_EQ(merged(isHigh, isDark),
              (AppearanceSettings{.scheme = ColorScheme::dark, .contrast = Contrast::high}));
}

} // namespace
} // namespace kestrel::linux_shell
