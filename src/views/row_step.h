#pragma once
// How keys lead through a list; the views and the list controls of the shells share these.

namespace kestrel {

/// From the highlighted or selected row to another.
enum class RowStep { previous, next, pageUp, pageDown, first, last };

/// Where the selected row is moved to.
enum class RowDirection { up, down };

} // namespace kestrel
