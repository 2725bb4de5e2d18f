#include "shells/macos/desktop/main_menu.h"

#import <AppKit/AppKit.h>

namespace kestrel::macos_shell {

namespace {

/// Whoever has the keyboard answers the item: it has no target.
NSMenuItem* addItem(NSMenu* menu, NSString* title, SEL action, NSString* key) {
    return [menu addItemWithTitle:title action:action keyEquivalent:key];
}

void addSubmenu(NSMenu* mainMenu, NSMenu* submenu) {
    NSMenuItem* const item = [[NSMenuItem alloc] initWithTitle:submenu.title
                                                        action:nil
                                                 keyEquivalent:@""];
    item.submenu = submenu;
    [mainMenu addItem:item];
}

NSMenu* applicationMenu() {
    NSMenu* const menu = [[NSMenu alloc] initWithTitle:@"Kestrel"];
    addItem(menu, NSLocalizedString(@"About Kestrel", nil),
            @selector(orderFrontStandardAboutPanel:), @"");
    [menu addItem:[NSMenuItem separatorItem]];
    addItem(menu, NSLocalizedString(@"Hide Kestrel", nil), @selector(hide:), @"h");
    NSMenuItem* const hideOthers = addItem(menu, NSLocalizedString(@"Hide Others", nil),
                                           @selector(hideOtherApplications:), @"h");
    hideOthers.keyEquivalentModifierMask = NSEventModifierFlagCommand | NSEventModifierFlagOption;
    addItem(menu, NSLocalizedString(@"Show All", nil), @selector(unhideAllApplications:), @"");
    [menu addItem:[NSMenuItem separatorItem]];
    addItem(menu, NSLocalizedString(@"Quit Kestrel", nil), @selector(terminate:), @"q");
    return menu;
}

NSMenu* editMenu() {
    // A key of its own: several languages name the menu otherwise than the button that edits.
    NSString* const title = [NSBundle.mainBundle localizedStringForKey:@"Edit (menu)"
                                                                 value:@"Edit"
                                                                 table:nil];
    NSMenu* const menu = [[NSMenu alloc] initWithTitle:title];
    // No class declares these two: a text view's undo manager answers them.
    addItem(menu, NSLocalizedString(@"Undo", nil), NSSelectorFromString(@"undo:"), @"z");
    addItem(menu, NSLocalizedString(@"Redo", nil), NSSelectorFromString(@"redo:"), @"Z");
    [menu addItem:[NSMenuItem separatorItem]];
    addItem(menu, NSLocalizedString(@"Cut", nil), @selector(cut:), @"x");
    addItem(menu, NSLocalizedString(@"Copy", nil), @selector(copy:), @"c");
    addItem(menu, NSLocalizedString(@"Paste", nil), @selector(paste:), @"v");
    addItem(menu, NSLocalizedString(@"Delete", nil), @selector(delete:), @"");
    addItem(menu, NSLocalizedString(@"Select All", nil), @selector(selectAll:), @"a");
    return menu;
}

NSMenu* windowMenu() {
    NSMenu* const menu = [[NSMenu alloc] initWithTitle:NSLocalizedString(@"Window", nil)];
    addItem(menu, NSLocalizedString(@"Minimize", nil), @selector(performMiniaturize:), @"m");
    addItem(menu, NSLocalizedString(@"Zoom", nil), @selector(performZoom:), @"");
    addItem(menu, NSLocalizedString(@"Close", nil), @selector(performClose:), @"w");
    [menu addItem:[NSMenuItem separatorItem]];
    addItem(menu, NSLocalizedString(@"Bring All to Front", nil), @selector(arrangeInFront:), @"");
    return menu;
}

} // namespace

void installMainMenu() {
    NSMenu* const menu = [[NSMenu alloc] initWithTitle:@""];
    NSMenu* const windows = windowMenu();
    addSubmenu(menu, applicationMenu());
    addSubmenu(menu, editMenu());
    addSubmenu(menu, windows);
    NSApp.mainMenu = menu;
    NSApp.windowsMenu = windows; // which lists the open window from now on
}

} // namespace kestrel::macos_shell
