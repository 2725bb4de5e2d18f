// Colours of the system that GNUstep lacks, the same in every appearance.
#import "presets.h"

@implementation NSColor (MacosCheck)
+ (NSColor*)controlAccentColor {
    return [NSColor colorWithCalibratedRed:0 green:0.4 blue:0.9 alpha:1];
}
+ (NSColor*)systemRedColor {
    return [NSColor colorWithCalibratedRed:1 green:0 blue:0 alpha:1];
}
+ (NSColor*)separatorColor {
    return [NSColor colorWithCalibratedWhite:0 alpha:0.1];
}
/// Stands for itself: a layer keeps it.
- (id)CGColor {
    return self;
}
@end
