#include "shells/linux/views/kit/contrast_levels.h"

#include "shells/linux/desktop/appearance/contrast.h"
#include "shells/linux/desktop/appearance/palettes.h"
#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "views/popover/menu_popover_style.h"

#include <algorithm>
#include <array>
#include <map>
#include <vector>

namespace kestrel::linux_shell {
namespace {

// How faint the levels are where the palette leaves the choice.
constexpr double wantedSecondary = 0.64;
constexpr double wantedTertiary = 0.42;
constexpr double wantedOutline = 0.2;

// Part of what lies between the tertiary and the primary level, so that all three differ.
constexpr double secondaryStep = 0.25;

constexpr double wantedPlaceholder = 0.62;

constexpr double strongestWash = 0.12;

constexpr QRgb redOnLight = 0xFFC01C28;
constexpr QRgb redOnDark = 0xFFFF7A70;

QColor activeColor(const QPalette& palette, QPalette::ColorRole role) {
    return palette.color(QPalette::Active, role);
}

QColor washed(const QColor& background, const QColor& wash) {
    return mixed(background, wash, wash.alphaF());
}

std::vector<QColor> plainBackgrounds(const QPalette& palette) {
    return {activeColor(palette, QPalette::Window), activeColor(palette, QPalette::Base),
            panelColor(palette)};
}

std::vector<QColor> backgroundsOfRows(const QPalette& palette) {
    const QColor base = activeColor(palette, QPalette::Base);
    // Under high contrast a selection has a palette of its own.
    if (isHighContrast(palette))
        return {base};
    return {base, selectionColor(palette), washed(base, inactiveSelectionColor(palette))};
}

/// Everything that a text of the secondary level stands on.
std::vector<QColor> secondaryBackgrounds(const QPalette& palette) {
    std::vector<QColor> all = plainBackgrounds(palette);
    all.push_back(
        washed(activeColor(palette, QPalette::Window), washColor(palette, strongestWash)));
    for (const QColor& row : backgroundsOfRows(palette)) {
        all.push_back(row);
        all.push_back(washed(row, colorFor(style::ColorLevel::quaternary, palette)));
    }
    return all;
}

double leastOpacity(const QColor& text, const std::vector<QColor>& backgrounds, double ratio) {
    double least = 0;
    for (const QColor& background : backgrounds)
        least = std::max(least, leastShare(background, text, background, ratio));
    return least;
}

/// `color` with as much of the palette's text as makes it seen on all backgrounds.
QColor strengthened(const QColor& color, const QPalette& palette,
                    const std::vector<QColor>& backgrounds, double ratio) {
    const QColor text = activeColor(palette, QPalette::WindowText);
    double share = 0;
    for (const QColor& background : backgrounds)
        share = std::max(share, leastShare(color, text, background, ratio));
    return mixed(color, text, share);
}

/// For texts in menus, highlighted ones included.
QColor destructiveOf(const QPalette& palette) {
    const QColor window = activeColor(palette, QPalette::Window);
    const auto wash = washColor(palette, menu_popover_style::row::highlightOpacity);
    return strengthened(QColor::fromRgb(isDark(palette) ? redOnDark : redOnLight), palette,
                        {window, washed(window, wash), activeColor(palette, QPalette::Base)},
                        readableText);
}

/// The palette's highlight, as much lighter or darker as makes a title on it readable.
QColor prominentOf(const QPalette& palette) {
    const QColor accent = activeColor(palette, QPalette::Highlight);
    const QColor title = activeColor(palette, QPalette::HighlightedText);
    const QColor away = contrastRatio(title, Qt::black) > contrastRatio(title, Qt::white)
                            ? QColor(Qt::black)
                            : QColor(Qt::white);
    return mixed(accent, away, leastShare(accent, away, title, readableText));
}

ContrastLevels computed(const QPalette& palette) {
    const QColor text = activeColor(palette, QPalette::WindowText);
    const QColor base = activeColor(palette, QPalette::Base);
    const QColor fieldText = activeColor(palette, QPalette::Text);
    const auto plain = plainBackgrounds(palette);
    const double tertiary = std::max(wantedTertiary, leastOpacity(text, plain, readableText));
    const double secondary =
        std::max({wantedSecondary, tertiary + secondaryStep * (1 - tertiary),
                  leastOpacity(text, secondaryBackgrounds(palette), readableText)});
    return {.secondary = static_cast<float>(secondary),
            .tertiary = static_cast<float>(tertiary),
            .outline = static_cast<float>(
                std::max(wantedOutline, leastOpacity(text, plain, visibleShape))),
            .placeholder = static_cast<float>(
                std::max(wantedPlaceholder, leastShare(base, fieldText, base, readableText))),
            .mark = strengthened(activeColor(palette, QPalette::Highlight), palette, plain,
                                 visibleShape),
            .prominent = prominentOf(palette),
            .destructive = destructiveOf(palette)};
}

} // namespace

// A drawing asks for dozens of colours of one palette.
const ContrastLevels& contrastLevelsOf(const QPalette& palette) {
    using Key = std::array<QRgb, 6>;
    const auto rgb = [&palette](QPalette::ColorRole role) {
        return activeColor(palette, role).rgba();
    };
    const Key key{rgb(QPalette::Window), rgb(QPalette::WindowText), rgb(QPalette::Base),
                  rgb(QPalette::Text),   rgb(QPalette::Highlight),  rgb(QPalette::HighlightedText)};
    constexpr std::size_t mostPalettes = 8; // of those that widgets have at a time
    static std::map<Key, ContrastLevels> known;
    if (known.size() >= mostPalettes && !known.contains(key))
        known.clear();
    const auto [found, isNew] = known.try_emplace(key);
    if (isNew)
        found->second = computed(palette);
    return found->second;
}

} // namespace kestrel::linux_shell
