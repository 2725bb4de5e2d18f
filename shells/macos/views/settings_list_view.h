#pragma once
// The table of the settings list with its keyboard commands: Delete, Option with the vertical
// arrows, Return and the letters of a title. The arrows alone are the table's own while a row is
// selected.

#import <AppKit/AppKit.h>

#import "shells/macos/views/kit/hover_tracking.h"

#include "views/settings/settings_view.h"

/// What the keys ask for; each but the last two about the selected row.
@protocol KSTSettingsListCommands <NSObject>
- (void)deleteSelectedRow;
- (void)moveSelectedRow:(kestrel::SettingsView::Direction)direction;
- (void)editSelectedRow;
- (void)moveSelection:(kestrel::SettingsView::Step)step;
- (void)typed:(NSString*)text;
@end

@interface KSTSettingsListView : NSTableView <NSMenuItemValidation, KSTHoverList>

@property(nonatomic, weak) id<KSTSettingsListCommands> commands;

/// The Edit menu's command.
- (IBAction)delete:(id)sender;

@end
