#pragma once
// A window on the screen whose pointer stands where a test says, and the lists that hear of it.

#import <AppKit/AppKit.h>

namespace kestrel::tests {

/// With `controller`'s view in it; taken away at the end.
class WindowWithPointer {
  public:
    explicit WindowWithPointer(NSViewController* controller);
    WindowWithPointer(const WindowWithPointer&) = delete;
    WindowWithPointer& operator=(const WindowWithPointer&) = delete;
    ~WindowWithPointer();

    NSWindow* get() const { return window_; }

    /// The pointer moves to a point of `view`. `list` has a tracking area of a KSTHoverTracker.
    void movePointer(NSPoint point, NSView* view, NSView* list);

    /// The same, and nobody hears of it: what is at the point has moved there.
    void placePointer(NSPoint point, NSView* view);

    /// The pointer leaves the list.
    void takePointerFrom(NSView* list);

  private:
    NSWindow* window_;
};

/// The areas in which a KSTHoverTracker hears of the pointer over `list`.
NSArray<NSTrackingArea*>* hoverAreas(NSView* list);

} // namespace kestrel::tests
