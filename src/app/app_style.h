#pragma once
// The texts of the status item and the size of the settings window, in points.

#include "platform/geometry.h"

#include <string_view>

namespace kestrel::app_style {

inline constexpr std::string_view applicationName = "Kestrel";
inline constexpr std::string_view statusSymbol = "square.grid.2x2";
inline constexpr Size settingsContentSize{520, 420};

} // namespace kestrel::app_style
