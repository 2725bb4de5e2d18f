#pragma once
// One entry of the user's list: a titled pointer to an application, a file or a shell command.

#include "model/item_type.h"
#include "model/uuid.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace kestrel {

/// A plain value. Texts are UTF-8. Any combination of `path` and `command` is valid.
///
///     LauncherItem{.title = "Editor", .type = ItemType::app, .path = "/opt/editor"}
struct LauncherItem {
    Uuid id = Uuid::random(); ///< identity; kept for the item's whole life
    std::string title;        ///< shown in the lists; may be empty
    ItemType type = ItemType::app;
    std::optional<std::string> path = std::nullopt;    ///< of the application or file
    std::optional<std::string> command = std::nullopt; ///< the shell command line
};

/// Equal when all five fields are, texts by canonical equivalence; an absent text equals no
/// present one, not even the empty text.
bool operator==(const LauncherItem& a, const LauncherItem& b);

} // namespace kestrel

/// Agrees with the equality of items.
template <>
struct std::hash<kestrel::LauncherItem> {
    std::size_t operator()(const kestrel::LauncherItem& item) const;
};
