#pragma once
// Every number and text of the settings view, in points.

#include "platform/geometry.h"
#include "views/style.h"

namespace kestrel::settings_style {

using namespace style;

inline constexpr Size minimumSize{480, 360};

namespace toolbar {
inline constexpr Insets padding = symmetric(6, 4);
inline constexpr ColorLevel background = ColorLevel::windowBackground;

inline constexpr Size buttonSize{52, 42};
inline constexpr double buttonSpacing = 3; ///< between a button's symbol and its label
inline constexpr Font symbolFont{.size = 14};
inline constexpr Font labelFont{.size = 10};
inline constexpr ColorLevel enabledColor = ColorLevel::primary;
inline constexpr ColorLevel disabledColor = ColorLevel::tertiaryLabel;
} // namespace toolbar

inline constexpr double dividerHeight = 1;

namespace empty_placeholder {
inline constexpr double spacing = 12;
inline constexpr SymbolStyle symbol{"square.grid.2x2", {.size = 36}, ColorLevel::tertiary};
inline constexpr Text title = Text::localizable("No items yet");
inline constexpr TextStyle titleStyle{title3.withWeight(FontWeight::medium), ColorLevel::secondary};
inline constexpr Text hint =
    Text::localizable("Add apps, command files, or shell commands to your launcher.");
inline constexpr TextStyle hintStyle{callout, ColorLevel::tertiary};
inline constexpr double hintMaximumWidth = 320; ///< the hint wraps there, centred
inline constexpr Text button = Text::localizable("Add First Item");
inline constexpr double buttonTopPadding = 4; ///< on top of the spacing
} // namespace empty_placeholder

} // namespace kestrel::settings_style
