#pragma once
// Every number and text of the popover's view, in points, and the rule for its height.

#include "platform/geometry.h"
#include "views/style.h"

#include <algorithm>
#include <cstddef>

namespace kestrel::menu_popover_style {

using namespace style;

inline constexpr double width = 240;

// The list.
inline constexpr double rowHeight = 34;
inline constexpr double maximumListHeight = 320;
inline constexpr Insets listPadding = symmetric(0, 6);

constexpr double listHeight(std::size_t itemCount) {
    return std::min(static_cast<double>(itemCount) * rowHeight + listPadding.top +
                        listPadding.bottom,
                    maximumListHeight);
}

namespace row {
inline constexpr Size iconSize{18, 18};
inline constexpr double spacing = 10;
inline constexpr Insets padding = symmetric(12, 0);
inline constexpr TextStyle title{{.size = 13}};
inline constexpr int titleLineLimit = 1;

// The highlight under the pointer: the primary colour, faintly, in a rounded rectangle.
inline constexpr Insets highlightInsets = symmetric(4, 0);
inline constexpr double highlightRadius = 5;
inline constexpr double highlightOpacity = 0.08;
} // namespace row

namespace empty_state {
inline constexpr double height = 140;
inline constexpr double spacing = 8;
inline constexpr SymbolStyle symbol{"square.grid.2x2", {.size = 26}, ColorLevel::tertiary};
inline constexpr Text title = Text::localizable("No items yet");
inline constexpr TextStyle titleStyle{callout.withWeight(FontWeight::medium),
                                      ColorLevel::secondary};
inline constexpr Text hint = Text::localizable("Open Settings to add items.");
inline constexpr TextStyle hintStyle{caption, ColorLevel::tertiary};
inline constexpr double hintMaximumWidth = 212; ///< a longer translation wraps there, centred
} // namespace empty_state

inline constexpr double dividerHeight = 1;

namespace footer {
inline constexpr double height = 40;
inline constexpr Insets padding = symmetric(14, 0);
inline constexpr double buttonSpacing = 5; ///< between a button's symbol and its text

struct Button {
    SymbolStyle symbol;
    Text title;
    TextStyle titleStyle;
};

inline constexpr Button settings{
    .symbol = {"gearshape", {.size = 12}, ColorLevel::primary},
    .title = Text::localizable("Settings"),
    .titleStyle = {{.size = 13}, ColorLevel::primary},
};
inline constexpr Button quit{
    .symbol = {"power", {.size = 11}, ColorLevel::secondary},
    .title = Text::localizable("Quit"),
    .titleStyle = {{.size = 13}, ColorLevel::secondary},
};
} // namespace footer

/// The size of the whole view: 181 high without items, else the list, the divider and the footer.
constexpr Size contentSize(std::size_t itemCount) {
    const double content = itemCount == 0 ? empty_state::height : listHeight(itemCount);
    return {width, content + footer::height + dividerHeight};
}

} // namespace kestrel::menu_popover_style
