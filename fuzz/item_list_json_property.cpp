#include "fuzz/item_list_json_property.h"

#include "model/item_list_json.h"
#include "model/json_numbers.h"

#include <functional>

namespace kestrel {

namespace {

std::optional<std::string> brokenItemProperty(const LauncherItem& item) {
    const auto json = encodeItem(item);
    if (!json)
        return "a decoded item encodes";
    const auto again = decodeItem(*json);
    if (!again || *again != item)
        return "an encoded item decodes to itself";
    if (std::hash<LauncherItem>{}(*again) != std::hash<LauncherItem>{}(item))
        return "equal items have equal hashes";
    return std::nullopt;
}

} // namespace

std::optional<std::string> brokenItemListProperty(std::string_view json) {
    const auto items = decodeItems(json);
    if (decodeItems(withNumbersZeroed(json)) != items)
        return "numbers do not matter";
    if (!items)
        return std::nullopt;
    for (const LauncherItem& item : *items)
        if (auto broken = brokenItemProperty(item))
            return broken;
    const auto written = encodeItems(*items);
    if (!written)
        return "a decoded list encodes";
    const auto again = decodeItems(*written);
    if (!again || *again != *items)
        return "an encoded list decodes to itself";
    if (encodeItems(*again) != written)
        return "a list is written to the same bytes again";
    return std::nullopt;
}

} // namespace kestrel
