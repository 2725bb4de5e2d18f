#include "shells/linux/desktop/appearance/palettes.h"

#include "shells/linux/desktop/appearance/contrast.h"

#include <cmath>

namespace kestrel::linux_shell {
namespace {

constexpr double placeholderShare = 0.62; // of the text colour, where there is no readable one
constexpr double disabledShare = 0.45;
constexpr double leastHighContrast = 20; // black on white has 21

QColor blend(const QColor& under, const QColor& over, double share) {
    const auto channel = [share](int below, int above) {
        return static_cast<int>(std::lround(below + (above - below) * share));
    };
    return {channel(under.red(), over.red()), channel(under.green(), over.green()),
            channel(under.blue(), over.blue())};
}

QColor readablePlaceholder(const QColor& wanted, const QColor& base, const QColor& text) {
    const bool isReadable = wanted.isValid() && contrastRatio(blend(base, wanted, wanted.alphaF()),
                                                              base) >= visibleShape;
    return isReadable ? wanted : blend(base, text, placeholderShare);
}

QColor placeholderOf(const PaletteColors& colors) {
    return readablePlaceholder(colors.placeholder, colors.base, colors.text);
}

PaletteColors lightColors() {
    return {.window = QColor(0xEF, 0xEF, 0xEF),
            .windowText = QColor(0x00, 0x00, 0x00),
            .base = QColor(0xFF, 0xFF, 0xFF),
            .alternateBase = QColor(0xF7, 0xF7, 0xF7),
            .text = QColor(0x00, 0x00, 0x00),
            .button = QColor(0xEF, 0xEF, 0xEF),
            .buttonText = QColor(0x00, 0x00, 0x00),
            .highlight = QColor(0x22, 0x71, 0xAE),
            .highlightedText = QColor(0xFF, 0xFF, 0xFF),
            .toolTip = QColor(0xFF, 0xFF, 0xFF),
            .toolTipText = QColor(0x00, 0x00, 0x00),
            .link = QColor(0x0B, 0x57, 0xA4),
            .visitedLink = QColor(0x6B, 0x2F, 0x8A),
            .placeholder = QColor(0x6E, 0x6E, 0x6E)};
}

PaletteColors darkColors() {
    return {.window = QColor(0x2B, 0x2B, 0x2B),
            .windowText = QColor(0xF2, 0xF2, 0xF2),
            .base = QColor(0x1F, 0x1F, 0x1F),
            .alternateBase = QColor(0x26, 0x26, 0x26),
            .text = QColor(0xF2, 0xF2, 0xF2),
            .button = QColor(0x36, 0x36, 0x36),
            .buttonText = QColor(0xF2, 0xF2, 0xF2),
            .highlight = QColor(0x2A, 0x76, 0xB4),
            .highlightedText = QColor(0xFF, 0xFF, 0xFF),
            .toolTip = QColor(0x3A, 0x3A, 0x3A),
            .toolTipText = QColor(0xF2, 0xF2, 0xF2),
            .link = QColor(0x7F, 0xBD, 0xF0),
            .visitedLink = QColor(0xC9, 0xA2, 0xE4),
            .placeholder = QColor(0x9A, 0x9A, 0x9A)};
}

PaletteColors highContrastLightColors() {
    return {.window = Qt::white,
            .windowText = Qt::black,
            .base = Qt::white,
            .alternateBase = Qt::white,
            .text = Qt::black,
            .button = Qt::white,
            .buttonText = Qt::black,
            .highlight = QColor(0x12, 0x2B, 0x9C),
            .highlightedText = Qt::white,
            .toolTip = Qt::white,
            .toolTipText = Qt::black,
            .link = QColor(0x00, 0x1F, 0xB0),
            .visitedLink = QColor(0x5B, 0x0A, 0x78),
            .placeholder = QColor(0x4A, 0x4A, 0x4A)};
}

PaletteColors highContrastDarkColors() {
    return {.window = Qt::black,
            .windowText = Qt::white,
            .base = Qt::black,
            .alternateBase = Qt::black,
            .text = Qt::white,
            .button = Qt::black,
            .buttonText = Qt::white,
            .highlight = QColor(0x5F, 0xC4, 0xFF),
            .highlightedText = Qt::black,
            .toolTip = Qt::black,
            .toolTipText = Qt::white,
            .link = QColor(0x8F, 0xD4, 0xFF),
            .visitedLink = QColor(0xE0, 0xB4, 0xFF),
            .placeholder = QColor(0xBE, 0xBE, 0xBE)};
}

void setDisabledTexts(QPalette& palette, const PaletteColors& colors) {
    const auto set = [&palette](QPalette::ColorRole role, const QColor& under, const QColor& over) {
        palette.setColor(QPalette::Disabled, role, blend(under, over, disabledShare));
    };
    set(QPalette::WindowText, colors.window, colors.windowText);
    set(QPalette::Text, colors.base, colors.text);
    set(QPalette::ButtonText, colors.button, colors.buttonText);
    set(QPalette::PlaceholderText, colors.base, placeholderOf(colors));
    set(QPalette::Highlight, colors.window, colors.windowText);
}

} // namespace

QPalette paletteOf(const PaletteColors& colors) {
    // The edges of buttons follow from the background; the texts and backgrounds are set after it.
    QPalette palette(colors.button, colors.window);
    const QColor lit = blend(colors.button, Qt::white, 0.35);
    palette.setColor(QPalette::Light, lit);
    palette.setColor(QPalette::Midlight, blend(colors.button, lit, 0.5));
    palette.setColor(QPalette::Mid, blend(colors.button, Qt::black, 0.25));
    palette.setColor(QPalette::Dark, blend(colors.button, Qt::black, 0.4));
    palette.setColor(QPalette::Shadow, blend(colors.button, Qt::black, 0.7));
    palette.setColor(QPalette::BrightText, colors.highlightedText);
    palette.setColor(QPalette::Window, colors.window);
    palette.setColor(QPalette::WindowText, colors.windowText);
    palette.setColor(QPalette::Base, colors.base);
    palette.setColor(QPalette::AlternateBase, colors.alternateBase);
    palette.setColor(QPalette::Text, colors.text);
    palette.setColor(QPalette::Button, colors.button);
    palette.setColor(QPalette::ButtonText, colors.buttonText);
    palette.setColor(QPalette::Highlight, colors.highlight);
    palette.setColor(QPalette::HighlightedText, colors.highlightedText);
    palette.setColor(QPalette::ToolTipBase, colors.toolTip);
    palette.setColor(QPalette::ToolTipText, colors.toolTipText);
    palette.setColor(QPalette::Link, colors.link);
    palette.setColor(QPalette::LinkVisited, colors.visitedLink);
    palette.setColor(QPalette::PlaceholderText, placeholderOf(colors));
    setDisabledTexts(palette, colors);
    return palette;
}

QPalette paletteFor(ColorScheme scheme, Contrast contrast) {
    const bool isDark = scheme == ColorScheme::dark;
    if (contrast == Contrast::high)
        return paletteOf(isDark ? highContrastDarkColors() : highContrastLightColors());
    return paletteOf(isDark ? darkColors() : lightColors());
}

QPalette withReadablePlaceholder(const QPalette& palette) {
    const auto color = [&palette](QPalette::ColorRole role) {
        return palette.color(QPalette::Active, role);
    };
    const QColor theirs = color(QPalette::PlaceholderText);
    const QColor readable =
        readablePlaceholder(theirs, color(QPalette::Base), color(QPalette::Text));
    QPalette result = palette;
    if (readable != theirs)
        result.setColor(QPalette::PlaceholderText, readable);
    return result;
}

bool isHighContrast(const QPalette& palette) {
    return contrastRatio(palette.color(QPalette::Active, QPalette::Window),
                         palette.color(QPalette::Active, QPalette::WindowText)) > leastHighContrast;
}

} // namespace kestrel::linux_shell
