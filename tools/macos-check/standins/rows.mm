// What lists and their rows use: cells that a table keeps and gives back, windows beneath the
// pointer, colours of selected rows. Nothing is drawn.
#import "presets.h"

static NSMutableDictionary<NSNumber*, NSView*>* cellsOf(NSTableView* table) {
    NSMutableDictionary* cells = stateOf(table, @selector(viewAtColumn:row:makeIfNecessary:));
    if (!cells) {
        cells = [NSMutableDictionary dictionary];
        setState(table, @selector(viewAtColumn:row:makeIfNecessary:), cells);
    }
    return cells;
}

static NSMutableArray<NSView*>* sparesOf(NSTableView* table) {
    NSMutableArray* spares = stateOf(table, @selector(makeViewWithIdentifier:owner:));
    if (!spares) {
        spares = [NSMutableArray array];
        setState(table, @selector(makeViewWithIdentifier:owner:), spares);
    }
    return spares;
}

static IMP trueReload;

static void reloadWithReuse(id self, SEL selector) {
    NSMutableDictionary<NSNumber*, NSView*>* cells = cellsOf(self);
    for (NSView* view in cells.allValues) {
        [view removeFromSuperview];
        [sparesOf(self) addObject:view];
    }
    [cells removeAllObjects];
    reinterpret_cast<void (*)(id, SEL)>(trueReload)(self, selector);
}

/// The views of one column. A table here makes a view when it is asked for it, whether or not it is
/// necessary; the next reload takes all of them away and keeps them for another row.
@implementation NSTableView (MacosCheckRows)
+ (void)load {
    Method method = class_getInstanceMethod(self, @selector(reloadData));
    trueReload = method_setImplementation(method, reinterpret_cast<IMP>(reloadWithReuse));
}
- (NSView*)makeViewWithIdentifier:(NSString*)identifier owner:(id)owner {
    (void)owner;
    NSMutableArray<NSView*>* spares = sparesOf(self);
    for (NSView* spare in spares) {
        NSView* view = spare; // kept while it is taken out
        if (![view.identifier isEqualToString:identifier])
            continue;
        [spares removeObjectIdenticalTo:view];
        [view prepareForReuse];
        return view;
    }
    return nil;
}
- (NSView*)viewAtColumn:(NSInteger)column row:(NSInteger)row makeIfNecessary:(BOOL)make {
    (void)make;
    if (NSView* kept = cellsOf(self)[@(row)])
        return kept;
    id delegate = self.delegate;
    NSView* view = [delegate tableView:self
                    viewForTableColumn:self.tableColumns[static_cast<NSUInteger>(column)]
                                   row:row];
    if (view) {
        view.frame = [self frameOfCellAtColumn:column row:row];
        cellsOf(self)[@(row)] = view;
        [self addSubview:view];
    }
    return view;
}
@end

// ---- a view's controller is its next responder

@interface MacosCheckController : NSObject
@property(nonatomic, weak) NSViewController* controller;
@end
@implementation MacosCheckController
@end

@implementation NSViewController (MacosCheckRows)
- (void)setView:(NSView*)view {
    MacosCheckController* holder = [[MacosCheckController alloc] init];
    holder.controller = self;
    setState(view, @selector(nextResponder), holder);
    setState(self, @selector(view), view);
}
- (NSView*)view {
    if (!self.isViewLoaded)
        [self loadView];
    return stateOf(self, @selector(view));
}
- (BOOL)isViewLoaded {
    return stateOf(self, @selector(view)) != nil;
}
@end

@implementation NSView (MacosCheckRows)
- (void)keyDown:(NSEvent*)event {
    MacosCheckController* holder = stateOf(self, @selector(nextResponder));
    [holder.controller ?: self.nextResponder keyDown:event];
}
- (void)viewDidChangeEffectiveAppearance {
}
@end

@implementation NSViewController (MacosCheckKeys)
/// What the library's own bindings make of Escape, which is another command on a Mac.
- (void)complete:(id)sender {
    (void)sender;
    [NSApp sendAction:@selector(cancelOperation:) to:self from:nil];
}
@end

// ---- what covers a window: its sheet and nothing else

@implementation NSWindow (MacosCheckRows)
+ (NSInteger)windowNumberAtPoint:(NSPoint)point belowWindowWithWindowNumber:(NSInteger)number {
    (void)number;
    for (NSWindow* window in NSApp.windows) {
        const bool isSheet = window.sheetParent != nil;
        NSWindow* top = window.attachedSheet ?: window;
        if (!isSheet && window.visible && NSPointInRect(point, window.frame))
            return top.windowNumber;
    }
    return 0;
}
- (NSPoint)convertPointToScreen:(NSPoint)point {
    return [self convertRectToScreen:NSMakeRect(point.x, point.y, 0, 0)].origin;
}
@end

// ---- colours

@implementation NSColor (MacosCheckRows)
+ (NSColor*)alternateSelectedControlTextColor {
    return [NSColor colorWithCalibratedRed:1 green:1 blue:1 alpha:1];
}
/// As the provider answers now; it is not asked again.
+ (NSColor*)colorWithName:(NSString*)name dynamicProvider:(NSColor* (^)(NSAppearance*))provider {
    (void)name;
    return provider([[NSAppearance alloc] init]);
}
@end

@implementation NSColorSpace (MacosCheckRows)
+ (NSColorSpace*)sRGBColorSpace {
    return NSColorSpace.genericRGBColorSpace;
}
@end

@implementation NSAppearance (MacosCheckRows)
- (void)performAsCurrentDrawingAppearance:(void (^)(void))block {
    block();
}
@end

// ---- assistive programs

/// A control is represented by its cell, as on a Mac.
NSArray* NSAccessibilityUnignoredChildren(NSArray* elements) {
    NSMutableArray* seen = [NSMutableArray array];
    for (id element in elements) {
        id shown = [element isKindOfClass:NSControl.class] ? [element cell] : element;
        if ([shown isAccessibilityElement])
            [seen addObject:shown];
    }
    return seen;
}

/// The setting "Keyboard navigation", where the system keeps it.
@implementation NSApplication (MacosCheckRows)
- (BOOL)isFullKeyboardAccessEnabled {
    return ([NSUserDefaults.standardUserDefaults integerForKey:@"AppleKeyboardUIMode"] & 2) != 0;
}
@end
