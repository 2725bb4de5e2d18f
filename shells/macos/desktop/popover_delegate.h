#pragma once
// The delegate of the icon's popover. The second click on the icon is to close the popover, yet its
// action comes when the mouse button goes up, and where the popover's transient behaviour has
// closed it at the press, the action would find it closed and open it again. So the delegate
// refuses to close it for a press on the icon; and where the system closes it all the same, it
// knows the click by its time.

#import <AppKit/AppKit.h>

/// Main thread only.
@interface KSTPopoverDelegate : NSObject <NSPopoverDelegate>

/// For a popover that shows `content`, which is not kept. Listens to the mouse until it is gone.
- (instancetype)initWithContent:(NSViewController*)content;

/// The program itself closes the popover: nothing is refused.
@property(nonatomic) BOOL isAskedToClose;

/// For the icon's action: whether the popover has begun to close since the mouse button went down
/// for this click. The press is used up; an action without one of its own, as assistive programs
/// send it, has closed nothing.
- (BOOL)hasClosedSincePress;

@end
