#include "shells/linux/desktop/appearance/user_style.h"

#include "shells/linux/desktop/current_desktop.h"
#include <QApplication>
#include <QPalette>
#include <QStringList>
#include <QStyle>

#include <algorithm>
#include <array>

namespace kestrel::linux_shell {
namespace {

bool hasColorsOfStyle() {
    constexpr std::array roles{QPalette::Window, QPalette::WindowText, QPalette::Base,
                               QPalette::Text};
    const QPalette used = QApplication::palette();
    const QPalette own = QApplication::style()->standardPalette();
    return std::ranges::all_of(roles, [&used, &own](QPalette::ColorRole role) {
        return used.color(role) == own.color(role);
    });
}

// The variable may list several themes; the first that exists counts.
bool isDesktopsOwnTheme(const QString& theme, bool isPlasma) {
    const QStringList own = isPlasma ? QStringList{QStringLiteral("kde")}
                                     : QStringList{QStringLiteral("gtk3"), QStringLiteral("gnome")};
    const auto names = theme.split(QLatin1Char(':'), Qt::SkipEmptyParts);
    return std::ranges::all_of(names, [&own](const QString& name) {
        return own.contains(name) || name == QLatin1String("xdgdesktopportal");
    });
}

} // namespace

StyleSettings styleSettings() {
    return {.styleOverride = qEnvironmentVariable("QT_STYLE_OVERRIDE"),
            .platformTheme = qEnvironmentVariable("QT_QPA_PLATFORMTHEME"),
            .style = QApplication::style()->name(),
            .hasColorsOfStyle = hasColorsOfStyle(),
            .isPlasma = currentDesktopIs(u"KDE")};
}

bool isUsersOwn(const StyleSettings& settings) {
    return !settings.styleOverride.isEmpty() ||
           !isDesktopsOwnTheme(settings.platformTheme, settings.isPlasma) ||
           settings.style.compare(QLatin1String("fusion"), Qt::CaseInsensitive) != 0 ||
           (!settings.hasColorsOfStyle && !settings.isPlasma);
}

} // namespace kestrel::linux_shell
