#include "views/settings/item_row.h"

#include "views/settings/item_row_style.h"

namespace kestrel {

std::string_view ItemRow::detail() const {
    const bool usesCommand = item.type == ItemType::inlineCommand;
    const auto& text = usesCommand ? item.command : item.path;
    if (text)
        return *text;
    return (usesCommand ? item_row_style::noCommand : item_row_style::noPath).english;
}

} // namespace kestrel
