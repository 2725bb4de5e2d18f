#pragma once
// One row of the popover's list: the item's picture and title, above the highlight. The whole row
// is a button.

#import <AppKit/AppKit.h>

#include "views/popover/item_row_view.h"

@class PopoverRowView;

@protocol PopoverRowViewDelegate <NSObject>
- (void)pointerEnteredRow:(PopoverRowView*)row;
- (void)pointerLeftRow:(PopoverRowView*)row;
@end

@interface PopoverRowView : NSView

@property(nonatomic, weak) id<PopoverRowViewDelegate> delegate;

/// Counted from 0, in the list that is shown.
@property(nonatomic) NSUInteger position;

/// Shows `row`, with `icon` as the item's picture.
- (void)showRow:(const kestrel::ItemRowView&)row icon:(NSImage*)icon;

/// The highlight alone.
@property(nonatomic, getter=isHighlighted) BOOL highlighted;

@end
