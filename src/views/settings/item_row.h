#pragma once
// One row of the settings list, as a value that is made for each drawing.

#include "model/launcher_item.h"

#include <functional>
#include <string>
#include <string_view>

namespace kestrel {

struct ItemRow {
    LauncherItem item;
    bool isSelected = false;             ///< the item is the committed one
    std::function<void()> onEdit = {};   ///< the menu's "Edit"
    std::function<void()> onDelete = {}; ///< the menu's "Delete"
    bool isHovered = false;              ///< the pointer is inside the row; the shell keeps it true

    /// The line under the title: the path or the command, or what stands for an absent one. Refers
    /// into `item`.
    std::string_view detail() const;

    /// The type's own name, never translated.
    std::string_view badge() const { return rawValue(item.type); }

    /// What a screen reader says of the row after its title.
    std::string accessibleDescription() const;

    /// 1 or 0. The actions button keeps its place at 0.
    double actionsOpacity() const { return isHovered || isSelected ? 1 : 0; }
};

} // namespace kestrel
