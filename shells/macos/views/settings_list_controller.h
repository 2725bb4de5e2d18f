#pragma once
// Fills the table of the settings list, and takes its selection, drags and commands to the
// settings view's state.

#import <AppKit/AppKit.h>

#import "shells/macos/views/settings_list_view.h"

#include "views/settings/settings_view.h"

@interface KSTSettingsListController
    : NSObject <NSTableViewDataSource, NSTableViewDelegate, KSTSettingsListCommands>

/// `state` lives until `detach`.
- (instancetype)initWithState:(kestrel::SettingsView&)state NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

@property(nonatomic, readonly) KSTSettingsListView* table;

/// Takes the list from the state; the selection is carried over by id.
- (void)reload;

/// Shows the rows of the same list anew, and the selection.
- (void)refresh;

/// Scrolls to a row that was added, if one was.
- (void)showAddedRow;

/// The state is about to go. The table stays as it is and does nothing more.
- (void)detach;

@end
