// Either side may die first: the core with its objects of the system still there, or those with
// the core still at work.
#include "shells/macos/foundation/text.h"
#include "shells/macos/ports.h"
#include "tests/macos_standins/app_fixture.h"

/// A delegate of the test's own, which hands on what the shell's does.
@interface LifetimeTarget : NSObject <KSTStatusBarButtonTarget, NSWindowDelegate>
@property(nonatomic) kestrel::macos_shell::Ports* ports;
@end

@implementation LifetimeTarget
- (void)statusBarButtonClicked:(NSStatusBarButton*)sender {
    self.ports->desktop.statusBarButtonClicked(sender);
}
- (void)windowWillClose:(NSNotification*)notification {
    self.ports->desktop.windowWillClose(notification);
}
@end

namespace kestrel::tests {
namespace {

class LifetimeTest : public AppFixture {};

TEST_F(LifetimeTest, TheDelegateEndsWithEverythingItMade) {
    launch();
    recording::click(button());
    delegate.core->openSettings();
    __weak KSTAppDelegate* const weak = delegate;
    @autoreleasepool {
        NSApp.delegate = nil;
        delegate = nil;
    }
    EXPECT_TRUE(weak == nil);
    EXPECT_EQ(recording::statusItems().count, 0U);
    EXPECT_EQ(recording::shownPopover(), nil);
    runMainQueue();
    EXPECT_EQ(ordinaryWindows().count, 0U);
}

TEST_F(LifetimeTest, WhatIsOnItsWayWhenTheDelegateEndsArrivesNowhere) {
    [NSUserDefaults.standardUserDefaults setObject:macos_shell::toNSData(listOf("Stored"))
                                            forKey:@"launcherItems"];
    launch();
    NSStatusBarButton* const icon = button();
    recording::changeCloud(@"launcherItems", nil, NSUbiquitousKeyValueStoreServerChange);
    @autoreleasepool {
        NSApp.delegate = nil;
        delegate = nil;
    }
    recording::reset();
    runMainQueue();
    recording::changeCloud(@"launcherItems", nil, NSUbiquitousKeyValueStoreServerChange);
    recording::click(icon);
    runMainQueue();
    EXPECT_EQ(linesOf({"NSUserDefaults ", "NSPopover ", "NSUbiquitousKeyValueStore "}), Lines{});
}

TEST_F(LifetimeTest, TheCoreMayDieBeforeTheAdapters) {
    LifetimeTarget* const target = [[LifetimeTarget alloc] init];
    macos_shell::Ports ports(target);
    target.ports = &ports;
    auto core = std::make_unique<kestrel::AppDelegate>(ports.all());
    core->applicationDidFinishLaunching();
    core->openSettings();
    NSStatusBarButton* const icon = button();
    NSWindow* const window = ordinaryWindows().firstObject;
    ASSERT_TRUE(icon != nil && window != nil);
    recording::changeCloud(@"launcherItems", nil, NSUbiquitousKeyValueStoreServerChange);
    core.reset();
    recording::reset();
    recording::click(icon);
    [target statusBarButtonClicked:icon];
    [window close];
    [target windowWillClose:[NSNotification notificationWithName:NSWindowWillCloseNotification
                                                          object:window]];
    recording::changeCloud(@"launcherItems", nil, NSUbiquitousKeyValueStoreServerChange);
    runMainQueue();
    EXPECT_EQ(linesOf({"NSPopover ", "NSApplication ", "NSUserDefaults "}), Lines{});
}

TEST_F(LifetimeTest, TheTargetOfTheSystemsCallsMayDieBeforeTheCore) {
    LifetimeTarget* target = [[LifetimeTarget alloc] init];
    macos_shell::Ports ports(target);
    target.ports = &ports;
    kestrel::AppDelegate core(ports.all());
    core.applicationDidFinishLaunching();
    @autoreleasepool {
        target = nil;
    }
    EXPECT_EQ(button().target, nil);
    EXPECT_NO_THROW(recording::click(button()));
    EXPECT_EQ(recording::shownPopover(), nil);
}

} // namespace
} // namespace kestrel::tests
