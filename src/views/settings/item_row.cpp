#include "views/settings/item_row.h"

#include "views/settings/item_row_style.h"

namespace kestrel {

std::string_view ItemRow::detail() const {
    const bool isCommand = usesCommand(item.type);
    const auto& text = isCommand ? item.command : item.path;
    if (text)
        return *text;
    return (isCommand ? item_row_style::noCommand : item_row_style::noPath).english;
}

std::string ItemRow::accessibleDescription() const {
    return std::string(badge()).append(", ").append(detail());
}

} // namespace kestrel
