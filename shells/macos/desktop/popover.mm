#include "shells/macos/desktop/popover.h"

#include "shells/macos/desktop/status_item.h"

/// Keeps the popover open while a mouse button goes down on the icon that it hangs on. Otherwise
/// its transient behaviour closes it there, and the action that comes when the button goes up
/// finds it closed and opens it again: a second click would never close it.
@interface KSTPopoverDelegate : NSObject <NSPopoverDelegate>
@property(nonatomic, weak) NSStatusBarButton* button;
@property(nonatomic) BOOL isAskedToClose; ///< the program itself closes the popover
@end

@implementation KSTPopoverDelegate

- (BOOL)popoverShouldClose:(NSPopover*)popover {
    (void)popover;
    if (self.isAskedToClose || NSEvent.pressedMouseButtons == 0)
        return YES;
    NSWindow* const iconWindow = self.button.window;
    return !iconWindow || !NSMouseInRect(NSEvent.mouseLocation, iconWindow.frame, NO);
}

@end

namespace kestrel::macos_shell {

AppKitPopover::AppKitPopover(NSViewController<KSTViewStateOwner>* content, Size size,
                             const AppKitStatusItem& statusItem)
    : statusItem_(statusItem), content_(content), delegate_([[KSTPopoverDelegate alloc] init]) {
    const NSSize contentSize = NSMakeSize(size.width, size.height);
    content_.preferredContentSize = contentSize;
    popover_ = [[NSPopover alloc] init];
    delegate_.button = statusItem.button();
    popover_.delegate = delegate_;
    popover_.contentViewController = content_;
    popover_.contentSize = contentSize;
    popover_.behavior = NSPopoverBehaviorTransient;
    popover_.animates = YES;
}

AppKitPopover::~AppKitPopover() {
    popover_.delegate = nil;
    popover_.animates = NO; // an animation would outlast the view
    [popover_ close];
    popover_.contentViewController = nil;
    [content_ discardView];
}

bool AppKitPopover::isShown() const { return popover_.shown; }

void AppKitPopover::show(Size size) {
    NSStatusBarButton* const button = statusItem_.button();
    if (!button)
        return;
    applySize(size);
    [popover_ showRelativeToRect:button.bounds ofView:button preferredEdge:NSRectEdgeMinY];
    [content_.view.window makeKeyWindow];
}

// The system keeps the popover at the icon.
void AppKitPopover::setContentSize(Size size) {
    if (isShown())
        applySize(size);
}

void AppKitPopover::applySize(Size size) {
    const NSSize contentSize = NSMakeSize(size.width, size.height);
    popover_.contentSize = contentSize;
    content_.preferredContentSize = contentSize;
}

void AppKitPopover::close() {
    KSTPopoverDelegate* const delegate = delegate_; // closing may end this popover
    delegate.isAskedToClose = YES;
    [popover_ performClose:statusItem_.clickedButton()];
    delegate.isAskedToClose = NO;
}

} // namespace kestrel::macos_shell
