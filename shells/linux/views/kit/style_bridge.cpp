#include "shells/linux/views/kit/style_bridge.h"

#include "shells/linux/desktop/appearance/palettes.h"

#include <QApplication>
#include <QFontDatabase>

#include <algorithm>
#include <cmath>

namespace kestrel::linux_shell {

namespace {

// How strong the levels of text are next to the palette's full text colour.
constexpr float secondaryOpacity = 0.64F;
constexpr float tertiaryOpacity = 0.42F;
constexpr float quaternaryOpacity = 0.11F;
constexpr float disabledLabelOpacity = 0.3F;
constexpr float separatorOpacity = 0.14F;

constexpr float placeholderOpacity = 0.62F;

// Under high contrast the faint is only half as faint, and what lies under a text is seen.
constexpr float leastHighContrastOpacity = 0.5F;
constexpr float highContrastWash = 2;

// Reds that keep a contrast of 4.5 to 1 against light and dark menus.
constexpr QRgb redOnLight = 0xFFC01C28;
constexpr QRgb redOnDark = 0xFFFF7A70;

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
        return fadedLine(palette, secondaryOpacity);
    case style::ColorLevel::tertiary:
        return fadedLine(palette, tertiaryOpacity);
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
    return QColor::fromRgb(isDark(palette) ? redOnDark : redOnLight);
}

QColor separatorColor(const QPalette& palette) { return fadedLine(palette, separatorOpacity); }

QColor washColor(const QPalette& palette, double opacity) {
    return fadedBackground(palette, static_cast<float>(opacity));
}

QColor outlineColor(const QPalette& palette, double opacity) {
    return fadedLine(palette, static_cast<float>(opacity));
}

QColor placeholderColor(const QPalette& palette) {
    QColor color = palette.color(QPalette::Active, QPalette::Text);
    color.setAlphaF(color.alphaF() * placeholderOpacity);
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
