#pragma once
// Names that only screen readers and tooltips show, where the views themselves have no text, and
// what screen readers say of a change. All else is named by what it shows: a row by its item's
// title, a field by its label, a sheet by its header.

#include "views/style.h"

namespace kestrel::accessible_texts {

using namespace style;

inline constexpr Text itemList{"Items", Text::Lookup::localizable};
inline constexpr Text rowActions{"Actions", Text::Lookup::localizable};
inline constexpr Text moveRowUp{"Move Up", Text::Lookup::localizable};
inline constexpr Text moveRowDown{"Move Down", Text::Lookup::localizable};

// Said once of a change. %1 is the item's title; of a move %1 is the new place, counted from 1, and
// %2 the number of items.
inline constexpr Text added{"Added %1", Text::Lookup::localizable};
inline constexpr Text moved{"Moved to %1 of %2", Text::Lookup::localizable};
inline constexpr Text deleted{"Deleted %1", Text::Lookup::localizable};

} // namespace kestrel::accessible_texts
