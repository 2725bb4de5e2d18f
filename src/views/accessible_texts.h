#pragma once
// Names that only screen readers and tooltips show, where the views themselves have no text. All
// else is named by what it shows: a row by its item's title, a field by its label, a sheet by its
// header.

#include "views/style.h"

namespace kestrel::accessible_texts {

inline constexpr style::Text itemList{"Items", style::Text::Lookup::localizable};
inline constexpr style::Text rowActions{"Actions", style::Text::Lookup::localizable};
inline constexpr style::Text moveRowUp{"Move Up", style::Text::Lookup::localizable};
inline constexpr style::Text moveRowDown{"Move Down", style::Text::Lookup::localizable};

} // namespace kestrel::accessible_texts
