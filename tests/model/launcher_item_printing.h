#pragma once
// How GoogleTest prints an item in a failure: in its stored form.

#include "model/item_list_json.h"

#include <ostream>

namespace kestrel {

inline void PrintTo(const LauncherItem& item, std::ostream* stream) {
    *stream << encodeItem(item).value_or("an item with invalid UTF-8");
}

} // namespace kestrel
