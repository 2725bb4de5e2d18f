#pragma once
// Finding a row by typing the first letters of its title, as list controls do.

#include "platform/clock.h"
#include "store/item_list.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

class TypeSelect {
  public:
    /// Letters typed within this time of each other make one prefix.
    static constexpr std::chrono::milliseconds pause{1000};

    /// `clock` outlives this.
    explicit TypeSelect(Clock& clock) : clock_(clock) {}

    /// The position of the item that `text`, added to what was typed just before, names: the first
    /// whose title begins with it, whatever the case, searched from `current` on and around the
    /// end. One letter, typed once or again and again, goes on to the next item that begins with
    /// it. Nothing when no title matches; a space as the first letter is not a search.
    std::optional<std::size_t> typed(std::string_view text, const ItemList& items,
                                     std::optional<std::size_t> current);

    /// True while letters typed now are added to those typed before.
    bool isUnderWay() const;

    /// What is typed next starts over.
    void reset() { prefix_.clear(); }

  private:
    Clock& clock_;
    std::string prefix_;
    Date lastTyped_;
};

} // namespace kestrel
