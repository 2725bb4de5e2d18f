#pragma once
// Views one below the other, each centred across, the whole centred in the frame: what stands in
// place of a list without items.

#import <AppKit/AppKit.h>

@interface KSTCenteredColumnView : NSView

/// Below the views added before. The view keeps its size; `gap` is in points and counts for
/// nothing above the first.
- (void)addView:(NSView*)view gapAbove:(CGFloat)gap;

@end
