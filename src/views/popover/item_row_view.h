#pragma once
// One row of the popover's list, as a value that is made for each drawing.

#include "model/launcher_item.h"

#include <functional>

namespace kestrel {

struct ItemRowView {
    LauncherItem item;
    std::function<void()> onTap = {}; ///< what a click anywhere in the row does
    bool isHovered = false;           ///< the highlight shows while it is true
};

} // namespace kestrel
