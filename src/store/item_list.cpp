#include "store/item_list.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace kestrel {

ItemList::~ItemList() {
    if (firing_ == 0)
        return;
    // The write would go on in memory that is no longer the list's.
    std::fputs("A will-change handler destroyed the list that was about to change.\n", stderr);
    std::abort();
}

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

void ItemList::beginWrite() {
    ++firing_;
    willChange_.fire();
    --firing_;
    ++revision_;
}

void ItemList::assign(std::vector<LauncherItem> items) {
    beginWrite();
    items_ = std::move(items);
}

void ItemList::append(LauncherItem item) {
    beginWrite();
    items_.push_back(std::move(item));
}

void ItemList::remove(const Positions& positions) {
    beginWrite();
    erase(positions);
}

void ItemList::move(const Positions& positions, std::size_t destination) {
    beginWrite();
    std::vector<LauncherItem> moved;
    for (auto i = positions.begin(); i != positions.end() && *i < items_.size(); ++i)
        moved.push_back(std::move(items_[*i]));
    destination = std::min(destination, items_.size());
    const auto before = std::distance(positions.begin(), positions.lower_bound(destination));
    erase(positions);
    items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(destination) - before,
                  std::make_move_iterator(moved.begin()), std::make_move_iterator(moved.end()));
}

bool ItemList::replace(LauncherItem item) {
    if (!positionOf(item.id))
        return false;
    beginWrite();
    const auto position = positionOf(item.id);
    if (position)
        items_[*position] = std::move(item);
    return position.has_value();
}

void ItemList::erase(const Positions& positions) {
    std::size_t position = 0;
    std::erase_if(items_, [&](const LauncherItem&) { return positions.contains(position++); });
}

} // namespace kestrel
