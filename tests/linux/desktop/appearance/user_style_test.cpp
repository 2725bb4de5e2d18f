#include "shells/linux/desktop/appearance/user_style.h"

#include "shells/linux/desktop/current_desktop.h"
#include "tests/linux/desktop/appearance/variables.h"

#include <QApplication>
#include <QPalette>

#include <gmock/gmock.h>

#include <vector>

namespace kestrel::linux_shell {
namespace {

StyleSettings fusion(const char* platformTheme = "", bool isPlasma = false) {
    return {.styleOverride = {},
            .platformTheme = QString::fromLatin1(platformTheme),
            .style = QStringLiteral("fusion"),
            .isPlasma = isPlasma};
}

struct PlatformTheme {
    const char* name;
    bool isPlasma;
    bool isUsersOwn;
};

TEST(UserStyleTest, ThemeThatTheDesktopWouldGetAnywayIsNoChoice) {
    const std::vector<PlatformTheme> table{
        {"", false, false},           {"", true, false},
        {"gtk3", false, false},       {"gnome", false, false},
        {"kde", true, false},         {"xdgdesktopportal", false, false},
        {"gtk3:gnome", false, false}, {"qt6ct", false, true},
        {"qt5ct", false, true},       {"kde", false, true},
        {"gtk3", true, true},         {"lxqt", false, true},
        {"qt6ct", true, true},        {"gtk3:qt6ct", false, true},
    };
    for (const auto& [name, isPlasma, own] : table)
        EXPECT_EQ(isUsersOwn(fusion(name, isPlasma)), own) << name << (isPlasma ? " Plasma" : "");
}

TEST(UserStyleTest, StyleOfTheUsersIsAChoice) {
    StyleSettings settings = fusion();
    settings.style = QStringLiteral("kvantum");
    EXPECT_TRUE(isUsersOwn(settings));
    settings = fusion();
    settings.styleOverride = QStringLiteral("fusion");
    EXPECT_TRUE(isUsersOwn(settings));
}

TEST(UserStyleTest, ColorsOfAPlatformThemeAreAChoiceExceptPlasmas) {
    StyleSettings settings = fusion();
    settings.hasColorsOfStyle = false;
    EXPECT_TRUE(isUsersOwn(settings));
    settings.isPlasma = true;
    EXPECT_FALSE(isUsersOwn(settings));
}

TEST(UserStyleTest, ReadsWhatThisProgramHas) {
    EXPECT_FALSE(isUsersOwn(styleSettings()));
    {
        Variables variables;
        variables.set("QT_STYLE_OVERRIDE", "Windows");
        EXPECT_TRUE(isUsersOwn(styleSettings()));
    }
    {
        Variables variables;
        variables.set("QT_QPA_PLATFORMTHEME", "qt6ct");
        EXPECT_TRUE(isUsersOwn(styleSettings()));
    }
    QApplication::setPalette(QPalette(Qt::darkGreen));
    EXPECT_TRUE(isUsersOwn(styleSettings()));
    QApplication::setPalette(QPalette());
    EXPECT_FALSE(isUsersOwn(styleSettings()));
}

TEST(UserStyleTest, DesktopIsOneOfThoseNamed) {
    Variables variables;
    variables.set("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
    EXPECT_TRUE(currentDesktopIs(u"GNOME"));
    EXPECT_TRUE(currentDesktopIs(u"ubuntu"));
    EXPECT_FALSE(currentDesktopIs(u"KDE"));
    EXPECT_FALSE(currentDesktopIs(u"ubuntu:GNOME"));
    EXPECT_FALSE(currentDesktopIs(u"G"));
}

} // namespace
} // namespace kestrel::linux_shell
