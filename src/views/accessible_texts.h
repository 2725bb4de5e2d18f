#pragma once
// Names that only screen readers and tooltips show, where the views themselves have no text, and
// what screen readers say of a change. All else is named by what it shows: a row by its item's
// title, a field by its label, a sheet by its header.

#include "views/style.h"

namespace kestrel::accessible_texts {

using namespace style;

inline constexpr Text itemList = Text::localizable("Items");
inline constexpr Text rowActions = Text::localizable("Actions");
inline constexpr Text moveRowUp = Text::localizable("Move Up");
inline constexpr Text moveRowDown = Text::localizable("Move Down");

// Said once of a change. %1 is the item's title; of a move %1 is the new place, counted from 1, and
// %2 the number of items.
inline constexpr Text added = Text::localizable("Added %1");
inline constexpr Text moved = Text::localizable("Moved to %1 of %2");
inline constexpr Text deleted = Text::localizable("Deleted %1");

} // namespace kestrel::accessible_texts
