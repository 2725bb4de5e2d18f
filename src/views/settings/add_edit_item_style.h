#pragma once
// Every number and text of the item editor form, in points.

#include "model/item_type.h"
#include "views/style.h"

namespace kestrel::add_edit_item_style {

using namespace style;

inline constexpr double width = 460;
inline constexpr Insets padding = allSides(24);

inline constexpr Text addHeader = Text::localizable("Add Item");
inline constexpr Text editHeader = Text::localizable("Edit Item");
inline constexpr TextStyle header{headline};
inline constexpr double spaceBelowHeader = 20;
inline constexpr double spaceBelowRow = 14;

inline constexpr TextStyle label{body};
inline constexpr Text titleLabel = Text::localizable("Title");
inline constexpr Text titlePlaceholder{"e.g. Xcode, Deploy Script"};
inline constexpr Text typeLabel = Text::localizable("Type");

/// The row that depends on the selected type. Where it holds a path, a button to browse follows.
struct TypeRow {
    Text label;
    Text placeholder;
    Font font;
};

inline constexpr TypeRow appRow{
    .label = Text::localizable("App"),
    .placeholder = {"/Applications/MyApp.app"},
    .font = body,
};
inline constexpr TypeRow fileRow{
    .label = Text::localizable("File"),
    .placeholder = {"~/Desktop/script.command"},
    .font = body,
};
inline constexpr TypeRow commandRow{
    .label = Text::localizable("Command"),
    .placeholder = {"e.g. open -a Safari"},
    .font = {.size = body.size, .design = Font::Design::monospaced},
};

constexpr const TypeRow& rowOf(ItemType type) {
    switch (type) {
    case ItemType::app:
        return appRow;
    case ItemType::commandFile:
        return fileRow;
    case ItemType::inlineCommand:
        break;
    }
    return commandRow;
}

inline constexpr Text browse = Text::localizable("Browse…");
inline constexpr double browseSpacing = 8; ///< between the field and its button

inline constexpr double spaceAboveDivider = 6;
inline constexpr double dividerHeight = 1;
inline constexpr double spaceBelowDivider = 14;

inline constexpr Text cancel = Text::localizable("Cancel");
inline constexpr Text add = Text::localizable("Add");
inline constexpr Text save = Text::localizable("Save");

} // namespace kestrel::add_edit_item_style
