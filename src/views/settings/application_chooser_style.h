#pragma once
// Every number and text of the list of installed applications to choose from, in points. For a
// shell whose desktop has no such dialog of its own.

#include "platform/geometry.h"
#include "views/style.h"

namespace kestrel::application_chooser_style {

using namespace style;

inline constexpr Text title = Text::localizable("Choose an Application");
inline constexpr Size size{420, 480};
inline constexpr Size minimumSize{340, 280};

inline constexpr Insets searchPadding{.top = 20, .left = 24, .bottom = 16, .right = 24};
inline constexpr Text search = Text::localizable("Search");
inline constexpr Font searchFont = body;

inline constexpr Text list = Text::localizable("Applications");
inline constexpr Insets listPadding = allSides(8);

namespace row {
inline constexpr double height = 34;
inline constexpr Insets padding = symmetric(16, 0); ///< the icon stands below the field's edge
inline constexpr Size iconSize{24, 24};
inline constexpr double spacing = 10;
inline constexpr TextStyle title{body};
} // namespace row

inline constexpr Text nothingFound = Text::localizable("No applications found");
inline constexpr TextStyle nothingFoundStyle{body, ColorLevel::secondary};

inline constexpr Insets buttonPadding = symmetric(24, 16);
inline constexpr double buttonSpacing = 10;
inline constexpr Text other = Text::localizable("Other…");
inline constexpr Text cancel = Text::localizable("Cancel");
inline constexpr Text choose = Text::localizable("Choose");

} // namespace kestrel::application_chooser_style
