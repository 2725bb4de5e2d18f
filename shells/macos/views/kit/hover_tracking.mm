#include "shells/macos/views/kit/hover_tracking.h"

namespace kestrel::macos_shell {

NSTrackingArea* renewedHoverArea(NSView* view, NSTrackingArea* old) {
    NSTrackingArea* const added = old;
    if (added)
        [view removeTrackingArea:added];
    NSTrackingArea* const area =
        [[NSTrackingArea alloc] initWithRect:NSZeroRect
                                     options:NSTrackingMouseEnteredAndExited |
                                             NSTrackingActiveAlways | NSTrackingInVisibleRect
                                       owner:view
                                    userInfo:nil];
    [view addTrackingArea:area];
    return area;
}

} // namespace kestrel::macos_shell
