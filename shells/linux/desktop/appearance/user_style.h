#pragma once
// Whether the colours of widgets are the user's own choice, made for the toolkit's programs in
// particular. It stays in force then, whatever the desktop's switch says.
//
// The choice is the user's own when one of these is true:
// - QT_STYLE_OVERRIDE is set;
// - QT_QPA_PLATFORMTHEME names something else than what the desktop would get without it: "kde" on
//   Plasma, "gtk3" or "gnome" on other desktops, "xdgdesktopportal" on any;
// - the style in use is not Fusion, the one that programs get when nobody has chosen another and no
//   package of the desktop brings its own;
// - a platform theme has given the program colours that are not Fusion's. Plasma's are excepted:
//   they are those of the desktop's colour scheme, read once, and this program follows it on.

#include <QString>

namespace kestrel::linux_shell {

struct StyleSettings {
    QString styleOverride;        ///< QT_STYLE_OVERRIDE
    QString platformTheme;        ///< QT_QPA_PLATFORMTHEME
    QString style;                ///< the name of the style in use
    bool hasColorsOfStyle = true; ///< the palette in use is that style's own
    bool isPlasma = false;
};

/// Those of this program. To be called while the palette is still as the toolkit has made it.
StyleSettings styleSettings();

bool isUsersOwn(const StyleSettings& settings);

} // namespace kestrel::linux_shell
