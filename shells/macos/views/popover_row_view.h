#pragma once
// One row of the popover's list: the item's picture and title, above the highlight. The whole row
// is a button.

#import <AppKit/AppKit.h>

#import "shells/macos/views/kit/hover_tracking.h"

#include "views/popover/item_row_view.h"

@class KSTPopoverRowView;

@protocol KSTPopoverRowViewDelegate <NSObject>
- (void)pointerEnteredRow:(KSTPopoverRowView*)row;
- (void)pointerLeftRow:(KSTPopoverRowView*)row;
@end

@interface KSTPopoverRowView : NSView <KSTHoverRow>

@property(nonatomic, weak) id<KSTPopoverRowViewDelegate> delegate;

/// Counted from 0, in the list that is shown.
@property(nonatomic) NSUInteger position;

/// Shows `row`, with `icon` as the item's picture.
- (void)showRow:(const kestrel::ItemRowView&)row icon:(NSImage*)icon;

/// The highlight alone.
@property(nonatomic, getter=isHighlighted) BOOL highlighted;

@end
