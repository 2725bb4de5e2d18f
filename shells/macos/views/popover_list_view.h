#pragma once
// The rows of the popover's list, one below the other, and their scrolling. Shows positions; what
// stands at each is the controller's to say.

#import <AppKit/AppKit.h>

#import "shells/macos/views/popover_row_view.h"

/// A document view; its width is its scroll view's.
@interface KSTPopoverListView : NSView <KSTHoverList>

/// Makes as many rows as there are items, on frames of the right size. Every row then has to be
/// shown anew.
- (void)setRowCount:(NSUInteger)count delegate:(id<KSTPopoverRowViewDelegate>)delegate;

@property(nonatomic, readonly) NSArray<KSTPopoverRowView*>* rows;

/// Scrolls as little as needed; the list's first and last row come with the padding beside them.
- (void)scrollToRow:(NSUInteger)position;

@end
