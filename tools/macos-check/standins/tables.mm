// Tables: the calls that change their rows are recorded.
#import "presets.h"

// Classes that GNUstep lacks: clang makes their properties from the header.

@implementation NSTableCellView
- (void)prepareForReuse {
}
@end

@implementation NSTableRowView
@end

@implementation NSTableColumn (MacosCheck)
- (void)setTitle:(NSString*)title {
    setState(self, @selector(title), title);
}
- (NSString*)title {
    return stateOf(self, @selector(title)) ?: @"";
}
@end

@implementation NSTableView (MacosCheck)
- (void)setStyle:(NSTableViewStyle)style {
    setState(self, @selector(style), @(style));
}
- (NSTableViewStyle)style {
    return (NSTableViewStyle)[stateOf(self, @selector(style)) integerValue];
}
- (void)setAllowsTypeSelect:(BOOL)flag {
    setState(self, @selector(allowsTypeSelect), @(flag));
}
/// On when nothing was set.
- (BOOL)allowsTypeSelect {
    NSNumber* flag = stateOf(self, @selector(allowsTypeSelect));
    return flag == nil || flag.boolValue;
}
- (void)setUsesAutomaticRowHeights:(BOOL)flag {
    (void)flag;
}
- (void)moveRowAtIndex:(NSInteger)from toIndex:(NSInteger)to {
    recording::add(@"NSTableView moveRowAtIndex:toIndex: %ld %ld", static_cast<long>(from),
                   static_cast<long>(to));
    [self reloadData];
}
- (void)insertRowsAtIndexes:(NSIndexSet*)rows withAnimation:(NSTableViewAnimationOptions)animation {
    (void)animation;
    recording::add(@"NSTableView insertRowsAtIndexes:withAnimation: %lu",
                   static_cast<unsigned long>(rows.firstIndex));
    [self reloadData];
}
- (void)removeRowsAtIndexes:(NSIndexSet*)rows withAnimation:(NSTableViewAnimationOptions)animation {
    (void)animation;
    recording::add(@"NSTableView removeRowsAtIndexes:withAnimation: %lu",
                   static_cast<unsigned long>(rows.firstIndex));
    [self reloadData];
}
- (void)beginUpdates {
}
- (void)endUpdates {
}
@end

static IMP trueReloadData;

static void reloadData(id self, SEL selector) {
    recording::add(@"NSTableView reloadData");
    reinterpret_cast<void (*)(id, SEL)>(trueReloadData)(self, selector);
}

void watchTables() {
    if (trueReloadData)
        return;
    Method method = class_getInstanceMethod(NSTableView.class, @selector(reloadData));
    trueReloadData = method_setImplementation(method, reinterpret_cast<IMP>(reloadData));
}
