// NSWindow: GNUstep's own work is done, and the calls that say how a window is made and shown are
// recorded.
#import "presets.h"

namespace {

IMP trueInit, trueSetTitle, trueSetReleased, trueSetDelegate, trueCenter, trueMakeKey,
    trueMakeKeyAndOrderFront, trueDeminiaturize, trueClose;

id init(id self, SEL selector, NSRect rect, NSWindowStyleMask style, NSBackingStoreType backing,
        BOOL defer) {
    recording::add(@"NSWindow initWithContentRect:styleMask:backing:defer: %g %g %g %g %lu %lu %d",
                   rect.origin.x, rect.origin.y, rect.size.width, rect.size.height,
                   static_cast<unsigned long>(style), static_cast<unsigned long>(backing), defer);
    auto* method =
        reinterpret_cast<id (*)(id, SEL, NSRect, NSWindowStyleMask, NSBackingStoreType, BOOL)>(
            trueInit);
    return method(self, selector, rect, style, backing, defer);
}

void setTitle(id self, SEL selector, NSString* title) {
    recording::add(@"%@ setTitle: %@", NSStringFromClass([self class]), title);
    reinterpret_cast<void (*)(id, SEL, NSString*)>(trueSetTitle)(self, selector, title);
}

void setReleasedWhenClosed(id self, SEL selector, BOOL flag) {
    recording::add(@"%@ setReleasedWhenClosed: %d", NSStringFromClass([self class]), flag);
    reinterpret_cast<void (*)(id, SEL, BOOL)>(trueSetReleased)(self, selector, flag);
}

void setDelegate(id self, SEL selector, id delegate) {
    recording::add(@"%@ setDelegate: %@", NSStringFromClass([self class]),
                   delegate ? NSStringFromClass([delegate class]) : @"nil");
    reinterpret_cast<void (*)(id, SEL, id)>(trueSetDelegate)(self, selector, delegate);
}

void center(id self, SEL selector) {
    recording::add(@"NSWindow center");
    reinterpret_cast<void (*)(id, SEL)>(trueCenter)(self, selector);
}

void makeKey(id self, SEL selector) {
    recording::add(@"NSWindow makeKeyWindow");
    reinterpret_cast<void (*)(id, SEL)>(trueMakeKey)(self, selector);
}

/// The content view controller hears of it as of every window that comes onto the screen.
void makeKeyAndOrderFront(NSWindow* self, SEL selector, id sender) {
    recording::add(@"NSWindow makeKeyAndOrderFront: %@",
                   sender ? NSStringFromClass([sender class]) : @"nil");
    NSViewController* appearing = self.visible ? nil : self.contentViewController;
    [appearing viewWillAppear];
    reinterpret_cast<void (*)(id, SEL, id)>(trueMakeKeyAndOrderFront)(self, selector, sender);
    [appearing viewDidAppear];
}

void deminiaturize(id self, SEL selector, id sender) {
    recording::add(@"NSWindow deminiaturize: %@",
                   sender ? NSStringFromClass([sender class]) : @"nil");
    reinterpret_cast<void (*)(id, SEL, id)>(trueDeminiaturize)(self, selector, sender);
}

void close(NSWindow* self, SEL selector) {
    NSViewController* disappearing = self.visible ? self.contentViewController : nil;
    [disappearing viewWillDisappear];
    reinterpret_cast<void (*)(id, SEL)>(trueClose)(self, selector);
    [disappearing viewDidDisappear];
}

template <typename Function>
void watch(SEL selector, Function replacement, IMP& original) {
    original = method_setImplementation(class_getInstanceMethod(NSWindow.class, selector),
                                        reinterpret_cast<IMP>(replacement));
}

} // namespace

void watchWindows() {
    if (trueInit)
        return;
    watch(@selector(initWithContentRect:styleMask:backing:defer:), init, trueInit);
    watch(@selector(setTitle:), setTitle, trueSetTitle);
    watch(@selector(setReleasedWhenClosed:), setReleasedWhenClosed, trueSetReleased);
    watch(@selector(setDelegate:), setDelegate, trueSetDelegate);
    watch(@selector(center), center, trueCenter);
    watch(@selector(makeKeyWindow), makeKey, trueMakeKey);
    watch(@selector(makeKeyAndOrderFront:), makeKeyAndOrderFront, trueMakeKeyAndOrderFront);
    watch(@selector(deminiaturize:), deminiaturize, trueDeminiaturize);
    watch(@selector(close), close, trueClose);
}

@implementation NSWindow (MacosCheckContent)
- (NSViewController*)contentViewController {
    return stateOf(self, @selector(contentViewController));
}
/// The window takes the size of the controller's view, as on a Mac.
- (void)setContentViewController:(NSViewController*)controller {
    recording::add(@"NSWindow setContentViewController: %@",
                   controller ? NSStringFromClass(controller.class) : @"nil");
    setState(self, @selector(contentViewController), controller);
    NSView* view = controller ? controller.view : [[NSView alloc] initWithFrame:NSZeroRect];
    const NSSize size = view.frame.size;
    if (controller)
        [self setContentSize:size];
    self.contentView = view;
}
@end
