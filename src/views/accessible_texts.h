#pragma once
// Names that only screen readers and tooltips show, where the views themselves have no text. All
// else is named by what it shows: a row by its item's title, a field by its label, a sheet by its
// header.

#include "views/style.h"

namespace kestrel::accessible_texts {

using namespace style;

inline constexpr Text itemList = Text::localizable("Items");
inline constexpr Text rowActions = Text::localizable("Actions");
inline constexpr Text moveRowUp = Text::localizable("Move Up");
inline constexpr Text moveRowDown = Text::localizable("Move Down");

} // namespace kestrel::accessible_texts
