// Stand-ins for what the views use and the run tool lacks, and the tests of them. They keep what
// they are given, for the tests to look at; nothing is drawn or laid out.

#import <AppKit/AppKit.h>
#import <QuartzCore/QuartzCore.h>

#include <gtest/gtest.h>
#include <objc/runtime.h>

#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wprotocol"
#pragma clang diagnostic ignored "-Wobjc-property-implementation"
#pragma clang diagnostic ignored "-Wobjc-protocol-property-synthesis"
#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"

NSString* const kCACornerCurveContinuous = @"continuous";

namespace {

id valueOf(id object, SEL getter) { return objc_getAssociatedObject(object, sel_getName(getter)); }

void setValue(id object, SEL getter, id value) {
    objc_setAssociatedObject(object, sel_getName(getter), value, OBJC_ASSOCIATION_RETAIN);
}

} // namespace

@implementation CALayer
@end

@implementation NSView (KestrelViewStandins)
- (void)setWantsLayer:(BOOL)flag {
    setValue(self, @selector(layer), flag ? [[CALayer alloc] init] : nil);
}
- (CALayer*)layer {
    return valueOf(self, @selector(layer));
}
- (void)setLayerContentsRedrawPolicy:(NSViewLayerContentsRedrawPolicy)policy {
    (void)policy;
}
- (void)setAccessibilityElement:(BOOL)flag {
    setValue(self, @selector(isAccessibilityElement), @(flag));
}
- (BOOL)isAccessibilityElement {
    return [valueOf(self, @selector(isAccessibilityElement)) boolValue];
}
- (void)setAccessibilityRole:(NSString*)role {
    setValue(self, @selector(accessibilityRole), role);
}
- (NSString*)accessibilityRole {
    return valueOf(self, @selector(accessibilityRole));
}
@end

@implementation NSStackView (KestrelViewStandins)
- (CGFloat)customSpacingAfterView:(NSView*)view {
    return [valueOf(view, @selector(customSpacingAfterView:)) doubleValue];
}
@end

@implementation NSTextField (KestrelViewStandins)
+ (instancetype)wrappingLabelWithString:(NSString*)text {
    NSTextField* const label = [self labelWithString:text];
    NSCell* const cell = label.cell;
    cell.wraps = YES;
    return label;
}
- (void)setUsesSingleLineMode:(BOOL)flag {
    [self.cell setUsesSingleLineMode:flag];
}
- (BOOL)usesSingleLineMode {
    return [self.cell usesSingleLineMode];
}
- (void)setMaximumNumberOfLines:(NSInteger)lines {
    setValue(self, @selector(maximumNumberOfLines), @(lines));
}
- (NSInteger)maximumNumberOfLines {
    return [valueOf(self, @selector(maximumNumberOfLines)) integerValue];
}
@end

/// The tool's own measures one line, however narrow the bounds.
@implementation NSTextFieldCell (KestrelViewStandins)
- (NSSize)cellSizeForBounds:(NSRect)bounds {
    const NSStringDrawingOptions options = NSStringDrawingUsesLineFragmentOrigin;
    NSSize room = NSMakeSize(1e6, 1e6);
    if (self.wraps)
        room.width = MIN(room.width, bounds.size.width);
    const NSRect used = [self.attributedStringValue boundingRectWithSize:room options:options];
    return used.size;
}
@end

@implementation NSMenuItem (KestrelViewStandins)
- (void)setAttributedTitle:(NSAttributedString*)title {
    setValue(self, @selector(attributedTitle), title);
}
- (NSAttributedString*)attributedTitle {
    return valueOf(self, @selector(attributedTitle));
}
@end

@implementation NSTableCellView (KestrelViewStandins)
- (void)prepareForReuse {
}
@end

@implementation NSTableView (KestrelViewStandins)
- (void)setAllowsTypeSelect:(BOOL)flag {
    (void)flag;
}
@end

@implementation NSButton (KestrelViewStandins)
- (void)setContentTintColor:(NSColor*)color {
    setValue(self, @selector(contentTintColor), color);
}
- (NSColor*)contentTintColor {
    return valueOf(self, @selector(contentTintColor));
}
- (void)setBezelColor:(NSColor*)color {
    setValue(self, @selector(bezelColor), color);
}
- (NSColor*)bezelColor {
    return valueOf(self, @selector(bezelColor));
}
@end

@implementation NSSegmentedControl (KestrelViewStandins)
- (void)setSegmentDistribution:(NSSegmentDistribution)distribution {
    (void)distribution;
}
@end

@implementation NSColor (KestrelViewStandins)
+ (NSColor*)controlAccentColor {
    return [NSColor colorWithCalibratedRed:0 green:0.4 blue:0.9 alpha:1];
}
+ (NSColor*)systemRedColor {
    return [NSColor colorWithCalibratedRed:1 green:0 blue:0 alpha:1];
}
+ (NSColor*)separatorColor {
    return [NSColor colorWithCalibratedWhite:0 alpha:0.1];
}
- (id)CGColor {
    return self;
}
@end

TEST(MacViewStandinsTest, ALayerKeepsItsCorners) {
    NSView* const view = [[NSView alloc] initWithFrame:NSZeroRect];
    EXPECT_TRUE(view.layer == nil);
    view.wantsLayer = YES;
    view.layer.cornerRadius = 5;
    view.layer.cornerCurve = kCACornerCurveContinuous;
    EXPECT_EQ(view.layer.cornerRadius, 5);
    EXPECT_TRUE([view.layer.cornerCurve isEqualToString:kCACornerCurveContinuous]);
}
