#include "shells/linux/views/kit/autoscroll.h"

#include <algorithm>

namespace kestrel::linux_shell {

namespace {

// Grows with the square of the depth: the inner half of the zone is for aiming at a gap.
int speedAt(int depth, int zone) {
    if (depth <= 0)
        return 0;
    const int reached = std::min(depth, zone);
    return 1 + (autoscrollFastest - 1) * reached * reached / (zone * zone);
}

} // namespace

int autoscrollStep(int y, int height) {
    const int zone = std::clamp(height / 4, 1, autoscrollZone);
    return speedAt(y - (height - 1 - zone), zone) - speedAt(zone - y, zone);
}

} // namespace kestrel::linux_shell
