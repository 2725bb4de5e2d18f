#include "shells/macos/desktop/popover_delegate.h"

#include <optional>
#include <utility>

@interface KSTPopoverDelegate ()
- (BOOL)isOnIcon:(NSEvent*)event;
- (void)mouseButtonWentDown:(NSEvent*)event;
@end

@implementation KSTPopoverDelegate {
    __weak NSViewController* _content;
    id _monitor;
    // Both on the clock of the events, which counts the seconds since the system started.
    std::optional<NSTimeInterval> _pressedAt;
    std::optional<NSTimeInterval> _closedAt;
}

- (instancetype)initWithContent:(NSViewController*)content {
    if ((self = [super init])) {
        _content = content;
        __weak KSTPopoverDelegate* const weak = self;
        _monitor = [NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskLeftMouseDown
                                                         handler:^NSEvent*(NSEvent* event) {
                                                             [weak mouseButtonWentDown:event];
                                                             return event;
                                                         }];
    }
    return self;
}

- (void)dealloc {
    if (_monitor)
        [NSEvent removeMonitor:_monitor];
}

/// The program has no other window without a title bar. The icon's is not compared with: a second
/// display may show the icon in a window of its own.
- (BOOL)isOnIcon:(NSEvent*)event {
    NSWindow* const window = event.window;
    NSViewController* const content = _content;
    const BOOL isInPopover = content.viewLoaded && window == content.view.window;
    return window && !isInPopover && !(window.styleMask & NSWindowStyleMaskTitled);
}

- (void)mouseButtonWentDown:(NSEvent*)event {
    if ([self isOnIcon:event])
        _pressedAt = event.timestamp;
}

- (BOOL)hasClosedSincePress {
    const auto pressedAt = std::exchange(_pressedAt, std::nullopt);
    return pressedAt && _closedAt && *pressedAt <= *_closedAt;
}

- (BOOL)popoverShouldClose:(NSPopover*)popover {
    (void)popover;
    NSEvent* const event = NSApp.currentEvent;
    const BOOL isPress = event.type == NSEventTypeLeftMouseDown ||
                         event.type == NSEventTypeRightMouseDown ||
                         event.type == NSEventTypeOtherMouseDown;
    return self.isAskedToClose || !isPress || ![self isOnIcon:event];
}

/// Its closing begins; an animation may follow, in which a new click opens it again.
- (void)popoverWillClose:(NSNotification*)notification {
    (void)notification;
    _closedAt = NSProcessInfo.processInfo.systemUptime;
}

@end
