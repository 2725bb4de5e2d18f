#pragma once
// Every number and text of a row of the settings list, in points.

#include "platform/geometry.h"
#include "views/style.h"

namespace kestrel::item_row_style {

using namespace style;

inline constexpr double spacing = 10;
inline constexpr Insets padding = symmetric(0, 4);
inline constexpr Size iconSize{22, 22};

inline constexpr double lineSpacing = 2; ///< between the title and the detail line
inline constexpr TextStyle title{{.size = 13, .weight = FontWeight::medium}};
inline constexpr TextStyle detail{caption, ColorLevel::secondary};
inline constexpr int detailLineLimit = 1; ///< shortened in the middle
inline constexpr Text noPath{"(no path)"};
inline constexpr Text noCommand{"(no command)"};

inline constexpr SymbolStyle actions{"ellipsis.circle", {.size = 14}, ColorLevel::secondary};
inline constexpr Text editAction = Text::localizable("Edit");
inline constexpr Text deleteAction = Text::localizable("Delete");
inline constexpr ColorLevel deleteColor = ColorLevel::destructive;

namespace badge {
inline constexpr TextStyle text{caption.withWeight(FontWeight::medium), ColorLevel::secondary};
inline constexpr Insets padding = symmetric(5, 2);
inline constexpr ColorLevel background = ColorLevel::quaternary;
inline constexpr double radius = 4;
} // namespace badge

} // namespace kestrel::item_row_style
