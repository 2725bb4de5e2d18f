#pragma once
// One row of the settings list: the item's picture, its title and detail line, the actions button
// with its menu, and the badge with the item's type.

#import <AppKit/AppKit.h>

#import "shells/macos/views/kit/hover_tracking.h"

#include "views/settings/item_row.h"

@interface KSTItemRowCellView : NSTableCellView <KSTHoverRow>

/// Shows `row`, with `icon` as the item's picture. Whether the pointer is inside is known here and
/// replaces what `row` says.
- (void)showRow:(const kestrel::ItemRow&)row icon:(NSImage*)icon;

/// How high a row of that width has to be for the row that is shown: a long title takes several
/// lines. Points.
- (CGFloat)heightForWidth:(CGFloat)width;

/// The actions button.
@property(nonatomic, readonly) NSPopUpButton* actions;

@end
