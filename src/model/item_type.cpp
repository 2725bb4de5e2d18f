#include "model/item_type.h"

#include <algorithm>

namespace kestrel {

std::string_view rawValue(ItemType type) {
    switch (type) {
    case ItemType::app:
        return "App";
    case ItemType::commandFile:
        return "Command File";
    case ItemType::inlineCommand:
        return "Inline Command";
    }
    return {};
}

std::optional<ItemType> itemTypeFromRawValue(std::string_view text) {
    const auto* const found =
        std::ranges::find_if(allItemTypes, [&](ItemType type) { return rawValue(type) == text; });
    if (found == allItemTypes.end())
        return std::nullopt;
    return *found;
}

} // namespace kestrel
