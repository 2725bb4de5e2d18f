#pragma once
// Names that only screen readers and tooltips show, where the views themselves have no text. All
// else is named by what it shows: a row by its item's title, a field by its label, a sheet by its
// header.

#include "views/style.h"

namespace kestrel::accessible_texts {

using namespace style;

inline constexpr Text itemList{"Items", Text::Lookup::localizable};
inline constexpr Text rowActions{"Actions", Text::Lookup::localizable};
inline constexpr Text moveRowUp{"Move Up", Text::Lookup::localizable};
inline constexpr Text moveRowDown{"Move Down", Text::Lookup::localizable};

} // namespace kestrel::accessible_texts
