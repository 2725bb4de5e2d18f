#pragma once
// Draws the popover's view: the list or what stands in its place, a divider and the footer. Owned
// by the popover.

#import <AppKit/AppKit.h>

#import "shells/macos/desktop/view_state_owner.h"

#include "views/popover/menu_popover_view.h"

#include <memory>

@interface KSTMenuPopoverViewController : NSViewController <KSTViewStateOwner>

/// Owns `view`, which is not null.
- (instancetype)initWithMenuPopoverView:(std::unique_ptr<kestrel::MenuPopoverView>)view
    NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithNibName:(NSNibName)nibNameOrNil
                         bundle:(NSBundle*)nibBundleOrNil NS_UNAVAILABLE;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

@end
