#pragma once
// What the tests of the view controllers share: a store over fakes, and looking into views.

#import <AppKit/AppKit.h>

#include "shells/macos/foundation/text.h"
#include "tests/fakes/fake_system.h"
#include "tests/fakes/store_fixture.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kestrel::tests {

/// Serves the application's events and the main queue until `condition` holds; false when it still
/// does not after half a minute.
inline bool runUntil(const std::function<bool()>& condition) {
    NSDate* const end = [NSDate dateWithTimeIntervalSinceNow:30];
    while (!condition()) {
        if (end.timeIntervalSinceNow <= 0)
            return false;
        @autoreleasepool {
            NSEvent* const event =
                [NSApp nextEventMatchingMask:NSEventMaskAny
                                   untilDate:[NSDate dateWithTimeIntervalSinceNow:0.01]
                                      inMode:NSDefaultRunLoopMode
                                     dequeue:YES];
            if (event)
                [NSApp sendEvent:event];
        }
    }
    return true;
}

/// Ends the application's event loop from inside it. An event follows, because the loop looks after
/// each whether it is to stop.
inline void stopApplication() {
    [NSApp stop:nil];
    NSEvent* const last = [NSEvent otherEventWithType:NSEventTypeApplicationDefined
                                             location:NSZeroPoint
                                        modifierFlags:0
                                            timestamp:0
                                         windowNumber:0
                                              context:nil
                                              subtype:0
                                                data1:0
                                                data2:0];
    [NSApp postEvent:last atStart:YES];
}

/// Waits for the redraw that a change has put on the main queue.
inline void redraw() {
    auto isDone = std::make_shared<bool>(false);
    dispatch_async(dispatch_get_main_queue(), ^{
        *isDone = true;
    });
    ASSERT_TRUE(runUntil([isDone] { return *isDone; }));
}

/// A text as a test prints it; "(nil)" for nil.
inline std::string textOf(NSString* text) { return text ? macos_shell::toUtf8(text) : "(nil)"; }

/// The first view below `root` that is a `viewClass` and fulfils `condition`; nil when none is.
template <class View>
View* findView(NSView* root, const std::function<bool(View*)>& condition = {}) {
    for (NSView* view in root.subviews) {
        if ([view isKindOfClass:[View class]] && (!condition || condition((View*)view)))
            return (View*)view;
        if (View* const found = findView<View>(view, condition))
            return found;
    }
    return nil;
}

/// The label or field that shows `text`; nil when none does.
inline NSTextField* fieldWith(NSView* root, const std::string& text) {
    return findView<NSTextField>(
        root, [&](NSTextField* field) { return macos_shell::toUtf8(field.stringValue) == text; });
}

/// The button with that title, or with that name for assistive programs; nil when none has it.
inline NSButton* buttonWith(NSView* root, const std::string& name) {
    return findView<NSButton>(root, [&](NSButton* button) {
        NSString* const label = button.accessibilityLabel;
        return macos_shell::toUtf8(button.title) == name ||
               (label && macos_shell::toUtf8(label) == name);
    });
}

/// Does what a click on the control does, as far as it is enabled.
inline void click(NSControl* control) {
    ASSERT_TRUE(control != nil);
    if (control.enabled)
        [NSApp sendAction:(SEL _Nonnull)control.action to:control.target from:control];
}

inline NSEvent* keyPress(unichar character, NSEventModifierFlags modifiers = 0) {
    NSString* const characters = [NSString stringWithCharacters:&character length:1];
    return [NSEvent keyEventWithType:NSEventTypeKeyDown
                            location:NSZeroPoint
                       modifierFlags:modifiers
                           timestamp:0
                        windowNumber:0
                             context:nil
                          characters:characters
         charactersIgnoringModifiers:characters
                           isARepeat:NO
                             keyCode:0];
}

/// What the key bindings of the system make of a key.
inline void command(SEL selector, NSResponder* responder) {
    ASSERT_TRUE([NSApp sendAction:selector to:responder from:nil]);
}

inline NSEvent* mouseEvent(NSEventType type, NSPoint locationInWindow, NSWindow* window) {
    return [NSEvent mouseEventWithType:type
                              location:locationInWindow
                         modifierFlags:0
                             timestamp:0
                          windowNumber:window.windowNumber
                               context:nil
                           eventNumber:0
                            clickCount:1
                              pressure:0];
}

/// A window on the screen with `controller`'s view in it, taken away at the end.
class ShownWindow {
  public:
    explicit ShownWindow(NSViewController* controller) {
        const NSSize size = controller.view.frame.size;
        window_ =
            [[NSWindow alloc] initWithContentRect:NSMakeRect(100, 100, size.width, size.height)
                                        styleMask:NSWindowStyleMaskTitled
                                          backing:NSBackingStoreBuffered
                                            defer:NO];
        window_.releasedWhenClosed = NO;
        window_.contentView = controller.view;
        [window_ makeKeyAndOrderFront:nil];
    }
    ShownWindow(const ShownWindow&) = delete;
    ShownWindow& operator=(const ShownWindow&) = delete;
    ~ShownWindow() { [window_ close]; }

    NSWindow* get() const { return window_; }

  private:
    NSWindow* window_;
};

/// A store that holds `first`, `second` and `third`.
class MacViewsFixture : public StoreFixture {
  protected:
    ItemsManager manager{ports};
    LauncherItem first = appItem("First");
    LauncherItem second = commandItem("Second");
    LauncherItem third = appItem("Third", "/apps/three");

    void SetUp() override { setItems({first, second, third}); }

    void setItems(std::vector<LauncherItem> items) {
        manager.items.assign(std::move(items));
        mainQueue.runAll();
        log.calls.clear();
    }
};

} // namespace kestrel::tests
