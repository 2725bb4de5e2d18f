// Kestrel on macOS: the entry.
#import <AppKit/AppKit.h>

#include "shells/macos/app_delegate.h"

namespace {

// For the whole run: the application holds its delegate weakly.
NSApplication* application;
KSTAppDelegate* delegate;

} // namespace

int main() {
    @autoreleasepool {
        application = NSApplication.sharedApplication;
        delegate = [[KSTAppDelegate alloc] init];
        application.delegate = delegate;
        [application run];
    }
    return 0;
}
