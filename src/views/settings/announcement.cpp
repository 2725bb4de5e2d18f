#include "views/settings/announcement.h"

#include "views/accessible_texts.h"

namespace kestrel {

namespace {

std::optional<std::size_t> onlyPosition(const Positions& positions, std::size_t count) {
    const bool isOne = positions.size() == 1 && *positions.begin() < count;
    return isOne ? std::optional(*positions.begin()) : std::nullopt;
}

} // namespace

Announcement announcementOfAdded(const LauncherItem& item) {
    return {accessible_texts::added, {item.title}};
}

std::optional<Announcement> announcementOfMoved(const Positions& positions, std::size_t destination,
                                                std::size_t count) {
    const auto from = onlyPosition(positions, count);
    const std::size_t to = from && destination > *from ? destination - 1 : destination;
    if (!from || to == *from)
        return std::nullopt;
    return Announcement{accessible_texts::moved, {to + 1, count}};
}

std::optional<Announcement> announcementOfDeleted(const ItemList& items,
                                                  const Positions& positions) {
    const auto position = onlyPosition(positions, items.size());
    if (!position)
        return std::nullopt;
    return Announcement{accessible_texts::deleted, {items[*position].title}};
}

} // namespace kestrel
