#pragma once
// What a screen reader is to say of a change in the settings that the keyboard focus does not tell.
// SettingsView makes it, once for each change; a shell puts it into the user's language and hands
// it to the desktop.

#include "store/item_list.h"
#include "views/style.h"

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kestrel {

struct Announcement {
    /// An item's title, said as it stands, or a number, which a shell writes in the user's digits.
    using Argument = std::variant<std::string, std::size_t>;

    style::Text text;                ///< "%1" and "%2" stand for the arguments
    std::vector<Argument> arguments; ///< one or two

    friend bool operator==(const Announcement&, const Announcement&) = default;
};

Announcement announcementOfAdded(const LauncherItem& item);

/// Of the items that stood at `positions` in a list of `count` and went in front of `destination`,
/// a position before the move. Nothing when it moved no item or more than one.
std::optional<Announcement> announcementOfMoved(const Positions& positions, std::size_t destination,
                                                std::size_t count);

/// Of the items at `positions`, which are still in the list. Nothing unless it is one.
std::optional<Announcement> announcementOfDeleted(const ItemList& items,
                                                  const Positions& positions);

} // namespace kestrel
