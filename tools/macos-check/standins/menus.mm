// Windows in the menus that the system fills, and among those that it brings back at the next
// start.
#import "state.h"

static BOOL allowsTabbing = YES;

@implementation NSWindow (MacosCheckMenus)
+ (BOOL)allowsAutomaticWindowTabbing {
    return allowsTabbing;
}
+ (void)setAllowsAutomaticWindowTabbing:(BOOL)flag {
    allowsTabbing = flag;
}
/// On when nothing was set, as on a Mac for a window with a title bar.
- (BOOL)isRestorable {
    NSNumber* flag = stateOf(self, @selector(isRestorable));
    return flag == nil || flag.boolValue;
}
- (void)setRestorable:(BOOL)flag {
    setState(self, @selector(isRestorable), @(flag));
}
@end

@implementation NSApplication (MacosCheckMenus)
- (NSMenu*)windowsMenu {
    return stateOf(self, @selector(windowsMenu));
}
/// GNUstep's would add items of its own, and a Mac adds the windows.
- (void)setWindowsMenu:(NSMenu*)menu {
    setState(self, @selector(windowsMenu), menu);
}
@end
