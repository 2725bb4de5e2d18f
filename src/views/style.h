#pragma once
// What a shell needs to draw a view: fonts, colour levels, insets and texts as plain data. The
// numbers of each view stand in its own *_style.h; every shell draws the same ones.

#include <string_view>

namespace kestrel {

enum class FontWeight { regular, medium, semibold, bold };

namespace style {

/// The system font, or its monospaced companion.
struct Font {
    enum class Design { system, monospaced };

    double size = 13; ///< points
    FontWeight weight = FontWeight::regular;
    Design design = Design::system;

    constexpr Font withWeight(FontWeight other) const { return {size, other, design}; }
    friend constexpr bool operator==(const Font&, const Font&) = default;
};

// The text styles.
inline constexpr Font caption{.size = 10};
inline constexpr Font callout{.size = 12};
inline constexpr Font body{.size = 13};
inline constexpr Font headline{.size = 13, .weight = FontWeight::bold};
inline constexpr Font title3{.size = 15};

/// Levels of emphasis and the named colours; the shell finds each in the desktop's palette.
enum class ColorLevel {
    primary,          ///< text at full strength
    secondary,        ///< reduced
    tertiary,         ///< faint
    quaternary,       ///< barely there; backgrounds of badges
    tertiaryLabel,    ///< the colour of disabled labels
    windowBackground, ///< behind a window's controls
    accent,           ///< the prominent button
    destructive,      ///< an action that deletes
};

/// Points between a frame and its content.
struct Insets {
    double top = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;

    friend constexpr bool operator==(const Insets&, const Insets&) = default;
};

constexpr Insets allSides(double points) { return {points, points, points, points}; }

constexpr Insets symmetric(double horizontal, double vertical) {
    return {vertical, horizontal, vertical, horizontal};
}

/// A text of the program's own.
struct Text {
    enum class Lookup {
        verbatim,    ///< shown as it stands in every language
        localizable, ///< the key of a translation; itself where there is none
    };

    std::string_view english;
    Lookup lookup = Lookup::verbatim;

    /// Every localizable text is written with this, because lupdate finds the texts by it.
    static constexpr Text localizable(std::string_view english) {
        return {english, Lookup::localizable};
    }

    friend constexpr bool operator==(const Text&, const Text&) = default;
};

/// A symbol or line of text with all that its drawing needs.
struct SymbolStyle {
    std::string_view name; ///< the system symbol's
    Font font;             ///< its size is the symbol's point size
    ColorLevel color = ColorLevel::primary;
};

struct TextStyle {
    Font font;
    ColorLevel color = ColorLevel::primary;
};

} // namespace style
} // namespace kestrel
