#pragma once
// A rectangle of one colour with smoothly curved corners: highlights, badges, strips and dividers.

#import <AppKit/AppKit.h>

@interface KSTRoundedFillView : NSView

/// `radius` is in points; 0 for square corners.
- (instancetype)initWithFrame:(NSRect)frame
                        color:(NSColor*)color
                       radius:(CGFloat)radius NS_DESIGNATED_INITIALIZER;

/// A divider in the system's colour for them.
- (instancetype)initWithFrame:(NSRect)frame;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

@property(nonatomic) NSColor* color;
@property(nonatomic, readonly) CGFloat radius;

@end
