#pragma once
// The picture that the core chose for an item.

#import <AppKit/AppKit.h>

#include "actions/item_icon.h"

namespace kestrel::macos_shell {

/// Never nil: an empty picture where the system has none. Main thread only.
NSImage* itemIconImage(const kestrel::ItemIcon& icon);

} // namespace kestrel::macos_shell
