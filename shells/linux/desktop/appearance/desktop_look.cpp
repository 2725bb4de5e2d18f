#include "shells/linux/desktop/appearance/desktop_look.h"

#include <QRegularExpression>

namespace kestrel::linux_shell {

DesktopLook merged(const DesktopLook& first, const DesktopLook& second) {
    const bool isHigh = first.contrast == Contrast::high || second.contrast == Contrast::high;
    return {.scheme = first.scheme ? first.scheme : second.scheme,
            .contrast = isHigh ? Contrast::high : Contrast::normal};
}

DesktopLook lookOfTheme(const QString& name) {
    static const QRegularExpression darkWord(QStringLiteral("(^|[-_: ])(dark|darker|inverse)\\b"),
                                             QRegularExpression::CaseInsensitiveOption);
    const bool isHigh = name.startsWith(QLatin1String("HighContrast"));
    const bool isDark = name.contains(darkWord) || name == QLatin1String("HighContrastInverse");
    return {.scheme = isDark ? std::optional(ColorScheme::dark) : std::nullopt,
            .contrast = isHigh ? Contrast::high : Contrast::normal};
}

void LookSource::setLook(const DesktopLook& look) {
    if (look != look_) {
        look_ = look;
        Q_EMIT changed();
    }
}

} // namespace kestrel::linux_shell
