#pragma once
// Draws the popover's view: the list or what stands in its place, a divider and the footer. Owned
// by the popover.

#import <AppKit/AppKit.h>

#include "views/popover/menu_popover_view.h"

#include <memory>

@interface MenuPopoverViewController : NSViewController

/// Owns `view`, which is not null.
- (instancetype)initWithMenuPopoverView:(std::unique_ptr<kestrel::MenuPopoverView>)view
    NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithNibName:(NSNibName)nibNameOrNil
                         bundle:(NSBundle*)nibBundleOrNil NS_UNAVAILABLE;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

/// Destroys the view now, whoever else still holds this controller; afterwards it does nothing.
- (void)discardView;

@end
