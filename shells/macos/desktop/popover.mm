#include "shells/macos/desktop/popover.h"

#include "shells/macos/desktop/popover_delegate.h"
#include "shells/macos/desktop/status_item.h"

namespace kestrel::macos_shell {

AppKitPopover::AppKitPopover(NSViewController<KSTViewStateOwner>* content, Size size,
                             const AppKitStatusItem& statusItem)
    : statusItem_(statusItem),
      content_(content),
      delegate_([[KSTPopoverDelegate alloc] initWithContent:content]) {
    const NSSize contentSize = NSMakeSize(size.width, size.height);
    content_.preferredContentSize = contentSize;
    popover_ = [[NSPopover alloc] init];
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
    if (NSApp.hidden)
        [NSApp unhideWithoutActivation]; // a hidden program shows no window, but its icon stays
    applySize(size);
    [popover_ showRelativeToRect:button.bounds ofView:button preferredEdge:NSRectEdgeMinY];
    [content_.view.window makeKeyWindow];
}

bool AppKitPopover::hasEndedClick() {
    const bool hasClosed = [delegate_ hasClosedSincePress];
    return hasClosed && !isShown();
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
