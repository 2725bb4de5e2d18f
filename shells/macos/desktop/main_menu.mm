#include "shells/macos/desktop/main_menu.h"

namespace kestrel::macos_shell {

namespace {

/// Whoever has the keyboard answers the item: it has no target.
void addItem(NSMenu* menu, NSString* title, SEL action, NSString* key) {
    [menu addItemWithTitle:title action:action keyEquivalent:key];
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
    addItem(menu, NSLocalizedString(@"Quit Kestrel", nil), @selector(terminate:), @"q");
    return menu;
}

NSMenu* editMenu() {
    NSMenu* const menu = [[NSMenu alloc] initWithTitle:NSLocalizedString(@"Edit", nil)];
    // No class declares these two: a text view's undo manager answers them.
    addItem(menu, NSLocalizedString(@"Undo", nil), NSSelectorFromString(@"undo:"), @"z");
    addItem(menu, NSLocalizedString(@"Redo", nil), NSSelectorFromString(@"redo:"), @"Z");
    [menu addItem:[NSMenuItem separatorItem]];
    addItem(menu, NSLocalizedString(@"Cut", nil), @selector(cut:), @"x");
    addItem(menu, NSLocalizedString(@"Copy", nil), @selector(copy:), @"c");
    addItem(menu, NSLocalizedString(@"Paste", nil), @selector(paste:), @"v");
    addItem(menu, NSLocalizedString(@"Select All", nil), @selector(selectAll:), @"a");
    return menu;
}

NSMenu* windowMenu() {
    NSMenu* const menu = [[NSMenu alloc] initWithTitle:NSLocalizedString(@"Window", nil)];
    addItem(menu, NSLocalizedString(@"Close", nil), @selector(performClose:), @"w");
    return menu;
}

} // namespace

NSMenu* makeMainMenu() {
    NSMenu* const menu = [[NSMenu alloc] initWithTitle:@""];
    addSubmenu(menu, applicationMenu());
    addSubmenu(menu, editMenu());
    addSubmenu(menu, windowMenu());
    return menu;
}

} // namespace kestrel::macos_shell
