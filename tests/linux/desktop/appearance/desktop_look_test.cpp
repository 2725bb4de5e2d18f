#include "shells/linux/desktop/appearance/desktop_look.h"

#include <gmock/gmock.h>

#include <vector>

namespace kestrel::linux_shell {
namespace {

struct Theme {
    const char* name;
    DesktopLook look;
};

TEST(DesktopLookTest, NamesOfThemesTellWhatTheyCan) {
    const DesktopLook nothing;
    const DesktopLook isDark{.scheme = ColorScheme::dark};
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
    for (const auto& [name, look] : table) {
        EXPECT_EQ(lookOfTheme(QString::fromLatin1(name)), look) << name;
    }
}

TEST(DesktopLookTest, FirstSchemeCountsAndHighContrastOfAny) {
    const DesktopLook isDark{.scheme = ColorScheme::dark};
    const DesktopLook isLight{.scheme = ColorScheme::light};
    const DesktopLook isHigh{.scheme = std::nullopt, .contrast = Contrast::high};
    EXPECT_EQ(merged(isDark, isLight), isDark);
    EXPECT_EQ(merged({}, isLight), isLight);
    EXPECT_EQ(merged(isDark, {}), isDark);
    EXPECT_EQ(merged(isDark, isHigh),
              (DesktopLook{.scheme = ColorScheme::dark, .contrast = Contrast::high}));
    EXPECT_EQ(merged(isHigh, isDark),
              (DesktopLook{.scheme = ColorScheme::dark, .contrast = Contrast::high}));
}

} // namespace
} // namespace kestrel::linux_shell
