#pragma once
// How a list scrolls by itself while something is dragged in it: the deeper the pointer is in the
// zone along an edge, the faster, and fastest at the edge and beyond.

namespace kestrel::linux_shell {

inline constexpr int autoscrollInterval = 16; ///< milliseconds from one step to the next
inline constexpr int autoscrollZone = 48;     ///< pixels inside the edge; less in a low viewport
inline constexpr int autoscrollFastest = 30;  ///< pixels a step: some fifty rows in a second

/// The pixels of one step, negative upwards, with the pointer at `y` in a viewport of `height`
/// pixels; 0 between the zones.
int autoscrollStep(int y, int height);

} // namespace kestrel::linux_shell
