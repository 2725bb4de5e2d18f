#pragma once
// The numbers and texts of the status item and of the settings window, in points.

#include "platform/geometry.h"
#include "platform/images.h"
#include "platform/window.h"

#include <string_view>

namespace kestrel::app_style {

inline constexpr std::string_view applicationName = "Kestrel";

inline constexpr std::string_view statusSymbol = "square.grid.2x2";
inline constexpr SymbolConfiguration statusSymbolConfiguration{.pointSize = 14,
                                                               .weight = FontWeight::regular};

inline constexpr Rect settingsContentRect{0, 0, 520, 420};
inline constexpr WindowStyleMask settingsStyleMask =
    WindowStyleMask::titled | WindowStyleMask::closable | WindowStyleMask::miniaturizable |
    WindowStyleMask::resizable;

} // namespace kestrel::app_style
