// Buttons, segmented controls, image views and menu items: methods that GNUstep lacks keep what
// they are given.
#import "presets.h"

@implementation NSButton (MacosCheck)
+ (instancetype)buttonWithTitle:(NSString*)title target:(id)target action:(SEL)action {
    NSButton* button = [[self alloc] initWithFrame:NSMakeRect(0, 0, 90, 28)];
    button.title = title;
    button.target = target;
    button.action = action;
    return button;
}
+ (instancetype)buttonWithImage:(NSImage*)image target:(id)target action:(SEL)action {
    NSButton* button = [self buttonWithTitle:@"" target:target action:action];
    button.image = image;
    return button;
}
- (void)setContentTintColor:(NSColor*)color {
    setState(self, @selector(contentTintColor), color);
}
- (NSColor*)contentTintColor {
    return stateOf(self, @selector(contentTintColor));
}
- (void)setBezelColor:(NSColor*)color {
    setState(self, @selector(bezelColor), color);
}
- (NSColor*)bezelColor {
    return stateOf(self, @selector(bezelColor));
}
@end

@implementation NSSegmentedControl (MacosCheck)
+ (instancetype)segmentedControlWithLabels:(NSArray<NSString*>*)labels
                              trackingMode:(NSSegmentSwitchTracking)mode
                                    target:(id)target
                                    action:(SEL)action {
    (void)mode;
    NSSegmentedControl* control = [[self alloc] initWithFrame:NSMakeRect(0, 0, 200, 24)];
    control.segmentCount = static_cast<NSInteger>(labels.count);
    for (NSUInteger i = 0; i < labels.count; i++)
        [control setLabel:labels[i] forSegment:static_cast<NSInteger>(i)];
    control.target = target;
    control.action = action;
    return control;
}
- (void)setSegmentDistribution:(NSSegmentDistribution)distribution {
    setState(self, @selector(segmentDistribution), @(distribution));
}
- (NSSegmentDistribution)segmentDistribution {
    NSNumber* distribution = stateOf(self, @selector(segmentDistribution));
    return static_cast<NSSegmentDistribution>(distribution.integerValue);
}
@end

@implementation NSImageView (MacosCheck)
+ (instancetype)imageViewWithImage:(NSImage*)image {
    NSImageView* view = [[self alloc] initWithFrame:NSMakeRect(0, 0, 32, 32)];
    view.image = image;
    return view;
}
- (void)setContentTintColor:(NSColor*)color {
    setState(self, @selector(contentTintColor), color);
}
- (NSColor*)contentTintColor {
    return stateOf(self, @selector(contentTintColor));
}
- (void)setSymbolConfiguration:(NSImageSymbolConfiguration*)configuration {
    setState(self, @selector(symbolConfiguration), configuration);
}
@end

@implementation NSMenuItem (MacosCheckTitle)
- (void)setAttributedTitle:(NSAttributedString*)title {
    setState(self, @selector(attributedTitle), title);
}
- (NSAttributedString*)attributedTitle {
    return stateOf(self, @selector(attributedTitle));
}
@end
