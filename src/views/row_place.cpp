#include "views/row_place.h"

#include <algorithm>

namespace kestrel {

namespace {

// From a gap the first step only leaves it: forward onto the row behind it.
std::size_t rowBehind(const RowPlace& place, std::size_t distance) {
    if (place.row)
        return *place.row + distance;
    return place.gap ? *place.gap + distance - 1 : 0;
}

std::size_t rowBefore(const RowPlace& place, std::size_t distance, std::size_t last) {
    const auto from = place.row ? place.row : place.gap;
    return from ? *from - std::min(*from, distance) : last;
}

} // namespace

std::size_t rowAfter(RowStep step, const RowPlace& place, std::size_t count, std::size_t page) {
    const std::size_t last = count - 1;
    std::size_t row = last;
    switch (step) {
    case RowStep::previous:
        row = rowBefore(place, 1, last);
        break;
    case RowStep::next:
        row = rowBehind(place, 1);
        break;
    case RowStep::pageUp:
        row = rowBefore(place, page, last);
        break;
    case RowStep::pageDown:
        row = rowBehind(place, page);
        break;
    case RowStep::first:
        row = 0;
        break;
    case RowStep::last:
        break;
    }
    return std::min(row, last);
}

} // namespace kestrel
