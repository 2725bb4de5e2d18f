#include "tests/fakes/store_fixture.h"

#include "model/item_list_json.h"

namespace kestrel::tests {

std::vector<std::string> ThreeItemsFixture::storedTitles() {
    const auto decoded = decodeItems(defaults.data["launcherItems"]);
    std::vector<std::string> result;
    if (!decoded) {
        ADD_FAILURE() << "the stored list does not decode";
        return result;
    }
    for (const LauncherItem& item : *decoded)
        result.push_back(item.title);
    return result;
}

} // namespace kestrel::tests
