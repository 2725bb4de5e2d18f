#include "tests/macos_standins/app_fixture.h"

namespace kestrel::tests {

AppFixture::~AppFixture() {
    NSApp.delegate = nil;
    delegate = nil;
}

void AppFixture::makeDelegate() {
    @autoreleasepool {
        delegate = [[KSTAppDelegate alloc] init];
        NSApp.delegate = delegate;
    }
}

void AppFixture::launch() {
    makeDelegate();
    @autoreleasepool {
        NSNotification* const notification =
            [NSNotification notificationWithName:NSApplicationDidFinishLaunchingNotification
                                          object:NSApp];
        [delegate applicationDidFinishLaunching:notification];
    }
    runMainQueue();
}

void AppFixture::addItems(int count) {
    for (int i = 0; i < count; ++i)
        manager().items.append({.title = "Item", .path = "/Applications/One.app"});
    runMainQueue();
}

NSStatusBarButton* AppFixture::button() { return recording::statusItems().firstObject.button; }

NSArray<NSWindow*>* AppFixture::ordinaryWindows() {
    NSMutableArray<NSWindow*>* const found = [NSMutableArray array];
    for (NSWindow* window in NSApp.windows)
        if (window.visible && window.styleMask == 15)
            [found addObject:window];
    return found;
}

} // namespace kestrel::tests
