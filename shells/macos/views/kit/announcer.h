#pragma once
// Has a screen reader say a text once, without the keyboard focus going anywhere. Main thread only.

#import <AppKit/AppKit.h>

#include "views/settings/announcement.h"

NS_ASSUME_NONNULL_BEGIN

namespace kestrel::macos_shell {

/// An announcement in the user's language, its numbers in the user's digits.
NSString* textFor(const Announcement& announcement);

/// After what the screen reader is saying already. Nothing when `window` is nil.
void announce(const Announcement& announcement, NSWindow* _Nullable window);

} // namespace kestrel::macos_shell

NS_ASSUME_NONNULL_END
