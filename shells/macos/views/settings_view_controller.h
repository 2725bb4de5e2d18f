#pragma once
// Draws the settings view: the strip of buttons, a divider, the list or what stands in its place,
// and the sheets. Owned by the settings window.

#import <AppKit/AppKit.h>

#import "shells/macos/desktop/view_state_owner.h"

#include "views/settings/settings_view.h"

#include <memory>

@interface KSTSettingsViewController : NSViewController <KSTViewStateOwner>

/// Owns `view`, which is not null.
- (instancetype)initWithSettingsView:(std::unique_ptr<kestrel::SettingsView>)view
    NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithNibName:(NSNibName)nibNameOrNil
                         bundle:(NSBundle*)nibBundleOrNil NS_UNAVAILABLE;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

@end
