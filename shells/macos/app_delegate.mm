#include "shells/macos/app_delegate.h"

#include "shells/macos/desktop/main_menu.h"
#include "shells/macos/ports.h"

@implementation KSTAppDelegate {
    std::unique_ptr<kestrel::macos_shell::Ports> _ports;
    std::unique_ptr<kestrel::AppDelegate> _core; // after the ports, so that it dies before them
}

- (instancetype)init {
    if ((self = [super init])) {
        _ports = std::make_unique<kestrel::macos_shell::Ports>(self);
        _core = std::make_unique<kestrel::AppDelegate>(_ports->all());
    }
    return self;
}

- (kestrel::AppDelegate*)core {
    return _core.get();
}

- (void)applicationWillFinishLaunching:(NSNotification*)notification {
    (void)notification;
    NSWindow.allowsAutomaticWindowTabbing = NO; // there is one window, and no menu of tabs
    kestrel::macos_shell::installMainMenu();
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    (void)notification;
    _core->applicationDidFinishLaunching();
}

/// The Dock icon is there exactly while the settings window is: a click on it is about that
/// window, which AppKit brings back itself.
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)flag {
    (void)sender;
    (void)flag;
    if (!_core->hasSettingsWindow())
        _core->applicationShouldHandleReopen();
    return YES;
}

- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)app {
    (void)app;
    return YES;
}

- (void)statusBarButtonClicked:(NSStatusBarButton*)sender {
    _ports->desktop.statusBarButtonClicked(sender);
}

- (void)windowWillClose:(NSNotification*)notification {
    _ports->desktop.windowWillClose(notification);
}

@end
