#pragma once
// Where a key leads in a list: one rule for the highlight of the popover and the selection of the
// settings.

#include "views/row_step.h"

#include <cstddef>
#include <optional>

namespace kestrel {

/// What the keys go on from. With neither, the steps forward start at the first row and the steps
/// backward at the last.
struct RowPlace {
    std::optional<std::size_t> row = {}; ///< the highlighted or selected one
    std::optional<std::size_t> gap = {}; ///< without one: a row was taken from in front of this one
};

/// The row that a step leads to in a list of `count` rows, one at least, of which `page` are a
/// page. At an end it stays there.
std::size_t rowAfter(RowStep step, const RowPlace& place, std::size_t count, std::size_t page);

} // namespace kestrel
