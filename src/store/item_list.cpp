#include "store/item_list.h"

#include <algorithm>
#include <utility>

namespace kestrel {

std::optional<std::size_t> ItemList::positionOf(const Uuid& id) const {
    const auto found = std::ranges::find(items_, id, &LauncherItem::id);
    if (found == items_.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - items_.begin());
}

const LauncherItem* ItemList::find(const Uuid& id) const {
    const auto position = positionOf(id);
    return position ? &items_[*position] : nullptr;
}

void ItemList::assign(std::vector<LauncherItem> items) {
    willChange_.fire();
    items_ = std::move(items);
}

void ItemList::append(LauncherItem item) {
    willChange_.fire();
    items_.push_back(std::move(item));
}

void ItemList::remove(const Positions& positions) {
    willChange_.fire();
    std::size_t position = 0;
    std::erase_if(items_, [&](const LauncherItem&) { return positions.contains(position++); });
}

void ItemList::move(const Positions& positions, std::size_t destination) {
    willChange_.fire();
    destination = std::min(destination, items_.size());
    std::vector<LauncherItem> before;
    std::vector<LauncherItem> moved;
    std::vector<LauncherItem> after;
    before.reserve(items_.size());
    for (std::size_t position = 0; position < items_.size(); ++position) {
        auto& part = positions.contains(position) ? moved : position < destination ? before : after;
        part.push_back(std::move(items_[position]));
    }
    std::ranges::move(moved, std::back_inserter(before));
    std::ranges::move(after, std::back_inserter(before));
    items_ = std::move(before);
}

void ItemList::replace(std::size_t position, LauncherItem item) {
    willChange_.fire();
    items_[position] = std::move(item);
}

} // namespace kestrel
