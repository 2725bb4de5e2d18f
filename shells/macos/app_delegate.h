#pragma once
// The delegate of the application and of the settings window, and the target of the status item's
// button: hands each call to the core's AppDelegate, which it owns together with the adapters.
//
// No C++ exception is caught on its way out into AppKit: the core throws none of its own, and what
// is left is running out of memory, where the program may end, every change having been saved when
// it was made.

#import <AppKit/AppKit.h>

#include "shells/macos/desktop/status_item.h"

namespace kestrel {
class AppDelegate;
}

@interface KSTAppDelegate
    : NSObject <NSApplicationDelegate, NSWindowDelegate, KSTStatusBarButtonTarget>

/// Creates the core's delegate, and with it the item store, which loads the stored list.
- (instancetype)init;

/// The core's delegate. It lives as long as this object.
@property(nonatomic, readonly) kestrel::AppDelegate* core;

@end
