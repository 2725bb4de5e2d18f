#include "shells/macos/desktop/popover.h"

#include "shells/macos/desktop/hosting_controller.h"
#include "shells/macos/desktop/status_bar.h"

/// Keeps the popover open while a mouse button goes down on the icon that it hangs on. Otherwise
/// its transient behaviour closes it there, and the action that comes when the button goes up
/// finds it closed and opens it again: a second click would never close it.
@interface PopoverDelegate : NSObject <NSPopoverDelegate>
@property(nonatomic, weak) NSStatusBarButton* button;
@property(nonatomic) BOOL isAskedToClose; ///< the program itself closes the popover
@end

@implementation PopoverDelegate

- (BOOL)popoverShouldClose:(NSPopover*)popover {
    (void)popover;
    if (self.isAskedToClose || NSEvent.pressedMouseButtons == 0)
        return YES;
    NSWindow* const iconWindow = self.button.window;
    return !iconWindow || !NSMouseInRect(NSEvent.mouseLocation, iconWindow.frame, NO);
}

@end

namespace kestrel::macos_shell {

namespace {

static_assert(static_cast<long>(PopoverBehavior::transient) == NSPopoverBehaviorTransient);
static_assert(static_cast<long>(PopoverBehavior::semitransient) == NSPopoverBehaviorSemitransient);
static_assert(static_cast<NSUInteger>(RectEdge::minX) == NSRectEdgeMinX);
static_assert(static_cast<NSUInteger>(RectEdge::minY) == NSRectEdgeMinY);
static_assert(static_cast<NSUInteger>(RectEdge::maxX) == NSRectEdgeMaxX);
static_assert(static_cast<NSUInteger>(RectEdge::maxY) == NSRectEdgeMaxY);

} // namespace

AppKitPopover::AppKitPopover(const AppKitStatusBar& statusBar)
    : statusBar_(statusBar),
      popover_([[NSPopover alloc] init]),
      delegate_([[PopoverDelegate alloc] init]) {
    popover_.delegate = delegate_;
}

AppKitPopover::~AppKitPopover() {
    popover_.delegate = nil;
    popover_.animates = NO; // an animation would outlast the view
    [popover_ close];
    popover_.contentViewController = nil;
}

void AppKitPopover::setContentViewController(std::unique_ptr<HostingController> controller) {
    popover_.contentViewController =
        static_cast<const AppKitHostingController&>(*controller).controller();
    controller_ = std::move(controller);
}

void AppKitPopover::setContentSize(Size size) {
    popover_.contentSize = NSMakeSize(size.width, size.height);
}

void AppKitPopover::setBehavior(PopoverBehavior behavior) {
    popover_.behavior = static_cast<NSPopoverBehavior>(behavior);
}

void AppKitPopover::setAnimates(bool animates) { popover_.animates = animates; }

bool AppKitPopover::isShown() const { return popover_.shown; }

void AppKitPopover::showRelativeTo(StatusBarButton& button, RectEdge preferredEdge) {
    NSStatusBarButton* const native = static_cast<const AppKitStatusBarButton&>(button).button();
    delegate_.button = native;
    [popover_ showRelativeToRect:native.bounds
                          ofView:native
                   preferredEdge:static_cast<NSRectEdge>(preferredEdge)];
}

void AppKitPopover::performClose() {
    PopoverDelegate* const delegate = delegate_; // closing may end this popover
    delegate.isAskedToClose = YES;
    [popover_ performClose:statusBar_.clickedButton()];
    delegate.isAskedToClose = NO;
}

} // namespace kestrel::macos_shell
