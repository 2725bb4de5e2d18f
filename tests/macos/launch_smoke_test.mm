// The program from its start to its end, as the user sees it: on a Mac against the system itself.
#include "app/app_delegate.h"
#include "shells/macos/app_delegate.h"
#include "tests/macos/views_support.h"

/// The shell's delegate, which stays for the rest of the test when the program is asked to quit.
@interface LaunchSmokeDelegate : KSTAppDelegate
@property(nonatomic) NSInteger terminations;
@end

@implementation LaunchSmokeDelegate
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

    /// What the entry does, with the launching that its event loop begins with.
    void launch() {
        @autoreleasepool {
            delegate = [[LaunchSmokeDelegate alloc] init];
            NSApplication.sharedApplication.delegate = delegate;
            [NSApp finishLaunching];
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
};

TEST_F(LaunchSmokeTest, ItStartsShowsItsPopoverOpensAndClosesItsSettingsAndIsAskedToQuit) {
    launch();
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

} // namespace
} // namespace kestrel::tests
