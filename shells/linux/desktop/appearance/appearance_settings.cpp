#include "shells/linux/desktop/appearance/appearance_settings.h"

#include <QChar>

#include <algorithm>
#include <array>

namespace kestrel::linux_shell {
namespace {

/// True where `name` holds one of the words that dark themes are named by, in any case and as a
/// word of its own.
bool hasDarkWord(const QString& name) {
    constexpr std::array words{QLatin1String("dark"), QLatin1String("darker"),
                               QLatin1String("inverse"), QLatin1String("HighContrastInverse")};
    const auto isLetter = [](QChar c) { return c.isLetter(); };
    for (auto at = name.begin(); at != name.end();) {
        const auto begin = std::find_if(at, name.end(), isLetter);
        at = std::find_if_not(begin, name.end(), isLetter);
        const QStringView word(begin, at);
        if (std::ranges::any_of(words, [word](QLatin1String dark) {
                return word.compare(dark, Qt::CaseInsensitive) == 0;
            }))
            return true;
    }
    return false;
}

} // namespace

AppearanceSettings merged(const AppearanceSettings& first, const AppearanceSettings& second) {
    const bool isHigh = first.contrast == Contrast::high || second.contrast == Contrast::high;
    return {.scheme = first.scheme ? first.scheme : second.scheme,
            .contrast = isHigh ? Contrast::high : Contrast::normal};
}

AppearanceSettings settingsOfTheme(const QString& name) {
    const bool isHigh = name.startsWith(QLatin1String("HighContrast"));
    const bool isDark = hasDarkWord(name);
    return {.scheme = isDark ? std::optional(ColorScheme::dark) : std::nullopt,
            .contrast = isHigh ? Contrast::high : Contrast::normal};
}

void AppearanceSource::setSettings(const AppearanceSettings& settings) {
    if (settings != settings_) {
        settings_ = settings;
        Q_EMIT changed();
    }
}

} // namespace kestrel::linux_shell
