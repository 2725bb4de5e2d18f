#pragma once
// The observable list of items. Every write fires the owner's will-change signal once, before it,
// whether or not it changes anything; reading is reading a vector. Nothing here saves.
//
// A handler of the signal still reads the old list. It may write, too: its writes are done, each
// with a signal of its own, before the one that was announced, which then takes its positions in
// the list as the handlers left it. What a handler must not do is to destroy the list or its owner
// (the program ends at once if it does): it posts that to the main queue.

#include "model/launcher_item.h"
#include "store/will_change_signal.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

namespace kestrel {

/// Positions in a list, counted from 0.
using Positions = std::set<std::size_t>;

class ItemList {
  public:
    /// Fires `willChange`, which outlives the list.
    explicit ItemList(const WillChangeSignal& willChange) : willChange_(willChange) {}

    ItemList(const ItemList&) = delete;
    ItemList& operator=(const ItemList&) = delete;
    ~ItemList();

    const std::vector<LauncherItem>& values() const { return items_; }
    bool empty() const { return items_.empty(); }
    std::size_t size() const { return items_.size(); }
    const LauncherItem& operator[](std::size_t position) const { return items_[position]; }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

    /// Another number after every write. A handler of the signal still gets the one of the list
    /// that it sees.
    std::uint64_t revision() const { return revision_; }

    /// The position of the first item with that id; nothing when none has it.
    std::optional<std::size_t> positionOf(const Uuid& id) const;

    /// The first item with that id; null when none has it. Valid until the next write.
    const LauncherItem* find(const Uuid& id) const;

    void assign(std::vector<LauncherItem> items);
    void append(LauncherItem item);

    /// Positions past the end are ignored.
    void remove(const Positions& positions);

    /// Moves the items at `positions` in front of the one that stands at `destination` before the
    /// move (the list's size: to the end), keeping their relative order. Positions past the end
    /// are ignored; a destination past the end is the end.
    void move(const Positions& positions, std::size_t destination);

    /// Replaces the first item with the id of `item`. False, and no signal, when none has it;
    /// false also when a handler of the signal removed the last one that had it.
    bool replace(LauncherItem item);

  private:
    void beginWrite();
    void erase(const Positions& positions);

    const WillChangeSignal& willChange_;
    std::vector<LauncherItem> items_;
    std::uint64_t revision_ = 0;
    int firing_ = 0;
};

} // namespace kestrel
