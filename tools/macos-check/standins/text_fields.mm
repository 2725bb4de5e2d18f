// Text fields, their cells and fonts.
#import "presets.h"

@implementation NSControl (MacosCheck)
- (void)setLineBreakMode:(NSLineBreakMode)mode {
    setState(self, @selector(lineBreakMode), @(mode));
}
- (NSLineBreakMode)lineBreakMode {
    return (NSLineBreakMode)[stateOf(self, @selector(lineBreakMode)) unsignedIntegerValue];
}
@end

@implementation NSTextField (MacosCheck)
+ (instancetype)labelWithString:(NSString*)text {
    NSTextField* label = [self textFieldWithString:text];
    label.editable = NO;
    label.bordered = NO;
    label.drawsBackground = NO;
    return label;
}
+ (instancetype)textFieldWithString:(NSString*)text {
    NSTextField* field = [[self alloc] initWithFrame:NSMakeRect(0, 0, 120, 24)];
    field.stringValue = text;
    return field;
}
+ (instancetype)wrappingLabelWithString:(NSString*)text {
    NSTextField* label = [self labelWithString:text];
    NSCell* cell = label.cell;
    cell.wraps = YES;
    return label;
}
- (void)setPlaceholderString:(NSString*)text {
    setState(self, @selector(placeholderString), text);
}
- (NSString*)placeholderString {
    return stateOf(self, @selector(placeholderString));
}
- (void)setUsesSingleLineMode:(BOOL)flag {
    [self.cell setUsesSingleLineMode:flag];
}
- (BOOL)usesSingleLineMode {
    return [self.cell usesSingleLineMode];
}
- (void)setMaximumNumberOfLines:(NSInteger)lines {
    setState(self, @selector(maximumNumberOfLines), @(lines));
}
- (NSInteger)maximumNumberOfLines {
    return [stateOf(self, @selector(maximumNumberOfLines)) integerValue];
}
@end

/// GNUstep's own measures one line, however narrow the bounds.
@implementation NSTextFieldCell (MacosCheck)
- (NSSize)cellSizeForBounds:(NSRect)bounds {
    const NSStringDrawingOptions options = NSStringDrawingUsesLineFragmentOrigin;
    NSSize room = NSMakeSize(1e6, 1e6);
    if (self.wraps)
        room.width = MIN(room.width, bounds.size.width);
    const NSRect used = [self.attributedStringValue boundingRectWithSize:room options:options];
    return used.size;
}
@end

@implementation NSFont (MacosCheck)
+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight {
    return weight >= 0.23 ? [self boldSystemFontOfSize:size] : [self systemFontOfSize:size];
}
+ (NSFont*)monospacedSystemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight {
    (void)weight;
    return [self userFixedPitchFontOfSize:size];
}
@end
