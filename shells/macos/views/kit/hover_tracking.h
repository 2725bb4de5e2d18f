#pragma once
// The area in which a view hears of the pointer.

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

namespace kestrel::macos_shell {

/// Gives `view` a new area, all that is visible of it, in place of `old`, which may be nil: it
/// hears of the pointer that enters and leaves, also while another program is active.
NSTrackingArea* renewedHoverArea(NSView* view, NSTrackingArea* _Nullable old);

} // namespace kestrel::macos_shell

NS_ASSUME_NONNULL_END
