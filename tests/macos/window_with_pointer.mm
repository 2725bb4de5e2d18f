#include "tests/macos/window_with_pointer.h"

#include "shells/macos/views/kit/hover_tracking.h"
#include "tests/macos/views_support.h"

/// Where the pointer is, is said by the test.
@interface PlacedPointerWindow : NSWindow
@property(nonatomic) NSPoint placedPointer;
@end

@implementation PlacedPointerWindow

- (NSPoint)mouseLocationOutsideOfEventStream {
    return self.placedPointer;
}

@end

namespace kestrel::tests {

namespace {

constexpr NSPoint farAway{-5000, -5000};

/// What hears of the pointer over `list`; nil when nothing does.
NSResponder* trackerOf(NSView* list) {
    return (NSResponder*)(id)hoverAreas(list).firstObject.owner;
}

} // namespace

WindowWithPointer::WindowWithPointer(NSViewController* controller) {
    const NSSize size = controller.view.frame.size;
    PlacedPointerWindow* const window = [[PlacedPointerWindow alloc]
        initWithContentRect:NSMakeRect(100, 100, size.width, size.height)
                  styleMask:NSWindowStyleMaskTitled
                    backing:NSBackingStoreBuffered
                      defer:NO];
    window.releasedWhenClosed = NO;
    window.placedPointer = farAway;
    window.contentView = controller.view;
    [window makeKeyAndOrderFront:nil];
    window_ = window;
}

WindowWithPointer::~WindowWithPointer() { [window_ close]; }

void WindowWithPointer::placePointer(NSPoint point, NSView* view) {
    ((PlacedPointerWindow*)window_).placedPointer = [view convertPoint:point toView:nil];
}

void WindowWithPointer::movePointer(NSPoint point, NSView* view, NSView* list) {
    placePointer(point, view);
    const NSPoint location = window_.mouseLocationOutsideOfEventStream;
    ASSERT_TRUE(trackerOf(list) != nil);
    [trackerOf(list) mouseMoved:mouseEvent(NSEventTypeMouseMoved, location, window_)];
}

void WindowWithPointer::takePointerFrom(NSView* list) {
    ((PlacedPointerWindow*)window_).placedPointer = farAway;
    [trackerOf(list) mouseExited:mouseEvent(NSEventTypeMouseMoved, farAway, window_)];
}

NSArray<NSTrackingArea*>* hoverAreas(NSView* list) {
    NSMutableArray<NSTrackingArea*>* const areas = [NSMutableArray array];
    for (NSTrackingArea* area in list.trackingAreas)
        if ([(NSObject*)(id)area.owner isKindOfClass:KSTHoverTracker.class])
            [areas addObject:area];
    return areas;
}

} // namespace kestrel::tests
