// The program from its start to its end, as the user sees it: on a Mac against the system itself.
#include "app/app_delegate.h"
#include "shells/macos/app_delegate.h"
#include "tests/macos/views_support.h"

/// The shell's delegate, which stays for the rest of the test when the program is asked to quit.
@interface LaunchSmokeDelegate : KSTAppDelegate
@property(nonatomic) NSInteger terminations;
@property(nonatomic) std::function<void()> work;
- (void)workThenStop;
@end

@implementation LaunchSmokeDelegate
- (void)workThenStop {
    self.work();
    kestrel::tests::stopApplication();
}

- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)sender {
    (void)sender;
    ++self.terminations;
    return NSTerminateCancel;
}
@end

namespace kestrel::tests {
namespace {

class LaunchSmokeTest : public testing::Test {
  protected:
    LaunchSmokeDelegate* delegate = nil;

    ~LaunchSmokeTest() override {
        NSApp.delegate = nil;
        delegate = nil;
        NSApp.windowsMenu = nil;
        NSApp.mainMenu = nil;
    }

    /// What the entry does. The work is that of a timer: inside a block of the main queue no other
    /// would be run.
    void runApplication(std::function<void()> work) {
        @autoreleasepool {
            delegate = [[LaunchSmokeDelegate alloc] init];
            delegate.work = std::move(work);
            NSApplication.sharedApplication.delegate = delegate;
            [delegate performSelector:@selector(workThenStop) withObject:nil afterDelay:0];
            [NSApp run];
        }
    }

    /// The icon in the menu bar, whose window is among the application's; nil while there is none.
    NSStatusBarButton* icon() const {
        for (NSWindow* window in NSApp.windows) {
            NSView* const content = window.contentView;
            NSView* const root = content.superview ? content.superview : content;
            NSStatusBarButton* const found = findView<NSStatusBarButton>(
                root, [this](NSStatusBarButton* button) { return button.target == delegate; });
            if (found)
                return found;
        }
        return nil;
    }

    static NSButton* buttonInPopover(const std::string& title) {
        for (NSWindow* window in NSApp.windows) {
            const bool isOrdinary = window.styleMask & NSWindowStyleMaskTitled;
            NSButton* const found =
                window.visible && !isOrdinary ? buttonWith(window.contentView, title) : nil;
            if (found)
                return found;
        }
        return nil;
    }

    static bool isPopoverShown() { return buttonInPopover("Settings") != nil; }

    static NSWindow* settingsWindow() {
        for (NSWindow* window in NSApp.windows)
            if (window.visible && (window.styleMask & NSWindowStyleMaskTitled) &&
                [window.title isEqualToString:@"Kestrel"])
                return window;
        return nil;
    }

    void openPopover() {
        [icon() performClick:nil];
        ASSERT_TRUE(runUntil([] { return isPopoverShown(); }));
    }

    void useTheProgram();
};

void LaunchSmokeTest::useTheProgram() {
    ASSERT_TRUE(runUntil([this] { return icon() != nil; }));
    EXPECT_EQ(NSApp.activationPolicy, NSApplicationActivationPolicyAccessory);
    EXPECT_EQ(NSApp.mainMenu.numberOfItems, 3);
    EXPECT_FALSE(isPopoverShown());

    openPopover();
    [icon() performClick:nil];
    ASSERT_TRUE(runUntil([] { return !isPopoverShown(); })) << "the icon closes it again";

    openPopover();
    click(buttonInPopover("Settings"));
    ASSERT_TRUE(runUntil([] { return settingsWindow() && !isPopoverShown(); }));
    EXPECT_EQ(NSApp.activationPolicy, NSApplicationActivationPolicyRegular);

    [settingsWindow() performClose:nil];
    ASSERT_TRUE(runUntil([] { return !settingsWindow(); }));
    EXPECT_FALSE(delegate.core->hasSettingsWindow());
    EXPECT_EQ(NSApp.activationPolicy, NSApplicationActivationPolicyAccessory);

    openPopover();
    click(buttonInPopover("Quit"));
    EXPECT_EQ(delegate.terminations, 1);
}

TEST_F(LaunchSmokeTest, ItStartsShowsItsPopoverOpensAndClosesItsSettingsAndIsAskedToQuit) {
    bool isDone = false;
    runApplication([&] {
        useTheProgram();
        isDone = true;
    });
    EXPECT_TRUE(isDone);
}

} // namespace
} // namespace kestrel::tests
