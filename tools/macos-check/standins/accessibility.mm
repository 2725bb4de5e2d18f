// What assistive programs are told, none of which runs here.
#import "presets.h"
#import "state.h"

void NSAccessibilityPostNotificationWithUserInfo(id element, NSString* notification,
                                                 NSDictionary* userInfo) {
    recording::add(@"NSAccessibilityPostNotificationWithUserInfo %@ %@ %@ %@",
                   NSStringFromClass([element class]), notification,
                   userInfo[NSAccessibilityAnnouncementKey], userInfo[NSAccessibilityPriorityKey]);
    presets().announcingElement = element;
}

id recording::announcingElement() { return presets().announcingElement; }

@implementation NSView (MacosCheckAccessibility)
- (void)setAccessibilityLabel:(NSString*)text {
    setState(self, @selector(accessibilityLabel), text);
}
- (NSString*)accessibilityLabel {
    return stateOf(self, @selector(accessibilityLabel));
}
- (void)setAccessibilityIdentifier:(NSString*)text {
    setState(self, @selector(accessibilityIdentifier), text);
}
- (NSString*)accessibilityIdentifier {
    return stateOf(self, @selector(accessibilityIdentifier));
}
- (void)setAccessibilityElement:(BOOL)flag {
    setState(self, @selector(isAccessibilityElement), @(flag));
}
- (BOOL)isAccessibilityElement {
    return [stateOf(self, @selector(isAccessibilityElement)) boolValue];
}
- (void)setAccessibilityRole:(NSString*)role {
    setState(self, @selector(accessibilityRole), role);
}
- (NSString*)accessibilityRole {
    return stateOf(self, @selector(accessibilityRole));
}
@end

/// A cell is an element unless it is told otherwise, as on a Mac.
@implementation NSCell (MacosCheckAccessibility)
- (void)setAccessibilityElement:(BOOL)flag {
    setState(self, @selector(isAccessibilityElement), @(flag));
}
- (BOOL)isAccessibilityElement {
    NSNumber* const flag = stateOf(self, @selector(isAccessibilityElement));
    return flag == nil || flag.boolValue;
}
- (void)setAccessibilityLabel:(NSString*)text {
    setState(self, @selector(accessibilityLabel), text);
}
- (NSString*)accessibilityLabel {
    return stateOf(self, @selector(accessibilityLabel));
}
@end
