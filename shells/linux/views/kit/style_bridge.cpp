#include "shells/linux/views/kit/style_bridge.h"

#include "shells/linux/desktop/appearance/palettes.h"
#include "shells/linux/views/kit/contrast_levels.h"
#include "shells/linux/views/kit/painting.h"

#include <QApplication>
#include <QFontDatabase>

#include <algorithm>
#include <cmath>

namespace kestrel::linux_shell {

namespace {

// How strong the faintest levels are next to the palette's full text colour; ContrastLevels has the
// others.
constexpr float quaternaryOpacity = 0.11F;
constexpr float disabledLabelOpacity = 0.3F;
constexpr float separatorOpacity = 0.14F;

// How much of the accent colour, or of the text's while the keys go elsewhere, a selected row has.
constexpr double selectedShare = 0.22;
constexpr double inactiveSelectedOpacity = 0.09;

constexpr float hoveredOutlineStep = 0.25F; // of what lies between the outline and the text

// Under high contrast the faint is only half as faint, and what lies under a text is seen.
constexpr float leastHighContrastOpacity = 0.5F;
constexpr float highContrastWash = 2;

QFont::Weight weightOf(FontWeight weight) {
    switch (weight) {
    case FontWeight::regular:
        return QFont::Normal;
    case FontWeight::medium:
        return QFont::Medium;
    case FontWeight::semibold:
        return QFont::DemiBold;
    case FontWeight::bold:
        break;
    }
    return QFont::Bold;
}

QColor faded(const QPalette& palette, float opacity) {
    QColor color = palette.color(QPalette::Active, QPalette::WindowText);
    color.setAlphaF(color.alphaF() * opacity);
    return color;
}

/// For texts and lines.
QColor fadedLine(const QPalette& palette, float opacity) {
    const float least = isHighContrast(palette) ? leastHighContrastOpacity : 0;
    return faded(palette, least + (1 - least) * opacity);
}

/// For backgrounds.
QColor fadedBackground(const QPalette& palette, float opacity) {
    return faded(palette,
                 isHighContrast(palette) ? std::min(1.0F, highContrastWash * opacity) : opacity);
}

} // namespace

QFont fontFor(const style::Font& font) {
    QFont result = font.design == style::Font::Design::monospaced
                       ? QFontDatabase::systemFont(QFontDatabase::FixedFont)
                       : QFont();
    result.setPixelSize(pixels(font.size));
    result.setWeight(weightOf(font.weight));
    return result;
}

QColor colorFor(style::ColorLevel level, const QPalette& palette) {
    switch (level) {
    case style::ColorLevel::primary:
        return palette.color(QPalette::Active, QPalette::WindowText);
    case style::ColorLevel::secondary:
        return fadedLine(palette, contrastLevelsOf(palette).secondary);
    case style::ColorLevel::tertiary:
        return fadedLine(palette, contrastLevelsOf(palette).tertiary);
    case style::ColorLevel::quaternary:
        return fadedBackground(palette, quaternaryOpacity);
    case style::ColorLevel::tertiaryLabel:
        return fadedLine(palette, disabledLabelOpacity);
    case style::ColorLevel::windowBackground:
        return palette.color(QPalette::Active, QPalette::Window);
    case style::ColorLevel::accent:
        return palette.color(QPalette::Active, QPalette::Highlight);
    case style::ColorLevel::destructive:
        break;
    }
    return contrastLevelsOf(palette).destructive;
}

QColor separatorColor(const QPalette& palette) { return fadedLine(palette, separatorOpacity); }

QColor washColor(const QPalette& palette, double opacity) {
    return fadedBackground(palette, static_cast<float>(opacity));
}

QColor outlineColor(const QPalette& palette, double opacity) {
    return fadedLine(palette, static_cast<float>(opacity));
}

QColor fieldOutlineColor(const QPalette& palette, Pointer pointer) {
    const float plain = contrastLevelsOf(palette).outline;
    return fadedLine(palette,
                     pointer == Pointer::over ? plain + (1 - plain) * hoveredOutlineStep : plain);
}

QColor focusColor(const QPalette& palette) { return contrastLevelsOf(palette).mark; }

QColor prominentColor(const QPalette& palette) { return contrastLevelsOf(palette).prominent; }

QColor panelColor(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    return isDark(palette) ? mixed(window, Qt::white, 0.05) : window;
}

QColor selectionColor(const QPalette& palette) {
    const QColor accent = palette.color(QPalette::Active, QPalette::Highlight);
    return isHighContrast(palette)
               ? accent
               : mixed(palette.color(QPalette::Active, QPalette::Base), accent, selectedShare);
}

QColor inactiveSelectionColor(const QPalette& palette) {
    return isHighContrast(palette) ? selectionColor(palette)
                                   : washColor(palette, inactiveSelectedOpacity);
}

QPalette paletteOnSelection(const QPalette& palette) {
    if (!isHighContrast(palette))
        return palette;
    const QColor background = palette.color(QPalette::Active, QPalette::Highlight);
    const QColor text = palette.color(QPalette::Active, QPalette::HighlightedText);
    QPalette result = palette;
    for (const auto role : {QPalette::Window, QPalette::Base})
        result.setColor(role, background);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::Highlight})
        result.setColor(role, text);
    return result;
}

QColor placeholderColor(const QPalette& palette) {
    QColor color = palette.color(QPalette::Active, QPalette::Text);
    color.setAlphaF(color.alphaF() * contrastLevelsOf(palette).placeholder);
    return color;
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::Window).lightness() <
           palette.color(QPalette::Active, QPalette::WindowText).lightness();
}

QMargins marginsFor(const style::Insets& insets) {
    return {pixels(insets.left), pixels(insets.top), pixels(insets.right), pixels(insets.bottom)};
}

QSize sizeFor(const Size& size) { return {pixels(size.width), pixels(size.height)}; }

int pixels(double points) { return static_cast<int>(std::lround(points)); }

} // namespace kestrel::linux_shell
