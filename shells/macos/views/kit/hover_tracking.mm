#include "shells/macos/views/kit/hover_tracking.h"

#include "shells/macos/desktop/main_queue.h"

#include <utility>

using kestrel::macos_shell::DispatchMainQueue;

@interface KSTHoverTracker ()
- (void)mouseEntered:(NSEvent*)event;
- (void)mouseMoved:(NSEvent*)event;
- (void)mouseExited:(NSEvent*)event;
- (void)listScrolled:(NSNotification*)notification;
- (void)update;
- (void)pointerIsAt:(NSPoint)locationInWindow;
@end

namespace {

/// Whether no other window covers `window` there, a sheet for one.
bool isSeenAt(NSPoint locationInWindow, NSWindow* window) {
    const NSPoint onScreen = [window convertPointToScreen:locationInWindow];
    return [NSWindow windowNumberAtPoint:onScreen
               belowWindowWithWindowNumber:0] == window.windowNumber;
}

} // namespace

@implementation KSTHoverTracker {
    __weak NSView<KSTHoverList>* _list;
    __weak NSView<KSTHoverRow>* _row;
    NSTrackingArea* _area;
    BOOL _isUpdateDue;
}

- (instancetype)initWithList:(NSView<KSTHoverList>*)list {
    if ((self = [super init])) {
        _list = list;
        // All that is visible of the list, however it scrolls and grows.
        _area = [[NSTrackingArea alloc]
            initWithRect:NSZeroRect
                 options:NSTrackingMouseEnteredAndExited | NSTrackingMouseMoved |
                         NSTrackingActiveAlways | NSTrackingInVisibleRect
                   owner:self
                userInfo:nil];
        [list addTrackingArea:_area];
        // However it scrolls: by the wheel, on its own momentum, or for the keyboard.
        NSClipView* const clipView = list.enclosingScrollView.contentView;
        clipView.postsBoundsChangedNotifications = YES;
        [NSNotificationCenter.defaultCenter addObserver:self
                                               selector:@selector(listScrolled:)
                                                   name:NSViewBoundsDidChangeNotification
                                                 object:clipView];
    }
    return self;
}

- (void)dealloc {
    [NSNotificationCenter.defaultCenter removeObserver:self];
    NSView* const list = _list;
    [list removeTrackingArea:_area];
}

- (void)mouseEntered:(NSEvent*)event {
    [self pointerIsAt:event.locationInWindow];
}

- (void)mouseMoved:(NSEvent*)event {
    [self pointerIsAt:event.locationInWindow];
}

- (void)mouseExited:(NSEvent*)event {
    (void)event;
    [self forget];
}

// Rows that move under a resting pointer report nothing by themselves.
- (void)listScrolled:(NSNotification*)notification {
    (void)notification;
    if (!self.paused)
        [self update];
}

- (void)rowsChanged {
    if (std::exchange(_isUpdateDue, YES))
        return;
    __weak KSTHoverTracker* weakSelf = self;
    DispatchMainQueue().async([weakSelf] { [weakSelf update]; });
}

- (void)update {
    _isUpdateDue = NO;
    NSWindow* const window = _list.window;
    if (!window)
        return;
    const NSPoint location = window.mouseLocationOutsideOfEventStream;
    if (isSeenAt(location, window))
        [self pointerIsAt:location];
    else
        [self forget];
}

- (void)pointerIsAt:(NSPoint)locationInWindow {
    NSView<KSTHoverList>* const list = _list;
    const NSPoint point = [list convertPoint:locationInWindow fromView:nil];
    NSView<KSTHoverRow>* const row =
        NSPointInRect(point, list.visibleRect) ? [list hoverRowAtPoint:point] : nil;
    if (row != _row)
        [self forget];
    _row = row;
    // Again when it is the same: a row that was reused meanwhile has forgotten.
    row.underPointer = YES;
}

- (void)forget {
    NSView<KSTHoverRow>* const row = _row;
    _row = nil;
    row.underPointer = NO;
}

@end
