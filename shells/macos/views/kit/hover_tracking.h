#pragma once
// Which row of a list the pointer is in: while it moves, and while rows scroll beneath a pointer
// that rests. Main thread only.

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

/// A row that is told of the pointer, of each change once or more often.
@protocol KSTHoverRow <NSObject>
@property(nonatomic, getter=isUnderPointer) BOOL underPointer;
@end

/// A list whose rows are told.
@protocol KSTHoverList <NSObject>
/// The row at a point in the list's coordinates; nil where there is none, or none is drawn.
- (nullable NSView<KSTHoverRow>*)hoverRowAtPoint:(NSPoint)point;
@end

/// Tells the rows of one list, also while another window or another program has the keys. Owned by
/// the list's controller.
@interface KSTHoverTracker : NSObject

/// `list` is the document view of a scroll view already.
- (instancetype)initWithList:(NSView<KSTHoverList>*)list NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

/// Rows have come or gone: looks again where the pointer is, in the main queue's next turn.
- (void)rowsChanged;

/// No row is under the pointer until it moves again: no pointer leaves a list that is taken off the
/// screen.
- (void)forget;

/// While the list scrolls for the keyboard, whose mark shall not go to where the pointer rests.
@property(nonatomic, getter=isPaused) BOOL paused;

@end

NS_ASSUME_NONNULL_END
