#include "shells/macos/appkit_desktop.h"

#include "app/app_style.h"
#include "shells/macos/views/menu_popover_view_controller.h"
#include "shells/macos/views/settings_view_controller.h"
#include "views/popover/menu_popover_style.h"

#include <utility>

namespace kestrel::macos_shell {

std::unique_ptr<StatusItem> AppKitDesktop::makeStatusItem(std::string_view symbol,
                                                          std::string_view description,
                                                          std::function<void()> onClick) {
    auto item =
        std::make_unique<AppKitStatusItem>(symbol, description, delegate_, std::move(onClick));
    statusItem_ = item->weak();
    return item;
}

std::unique_ptr<Popover> AppKitDesktop::makePopover(std::unique_ptr<MenuPopoverView> view) {
    const Size size = menu_popover_style::contentSize(view->items().size());
    auto popover = std::make_unique<AppKitPopover>(
        [[KSTMenuPopoverViewController alloc] initWithMenuPopoverView:std::move(view)], size,
        *statusItem_.lock());
    popover_ = popover->weak();
    return popover;
}

std::unique_ptr<Window> AppKitDesktop::makeSettingsWindow(std::unique_ptr<SettingsView> view,
                                                          Size contentSize,
                                                          std::function<void()> onClosed) {
    auto window = std::make_unique<AppKitSettingsWindow>(
        [[KSTSettingsViewController alloc] initWithSettingsView:std::move(view)], contentSize,
        app_style::applicationName, delegate_);
    settingsWindow_ = window->weak();
    onSettingsWindowClosed_ = std::move(onClosed);
    return window;
}

void AppKitDesktop::statusBarButtonClicked(NSStatusBarButton* sender) {
    const auto popover = popover_.lock();
    if (popover && popover->hasEndedClick())
        return;
    if (const auto item = statusItem_.lock())
        item->clicked(sender);
}

void AppKitDesktop::windowWillClose(NSNotification* notification) {
    const id object = notification.object;
    NSWindow* const closing = [object isKindOfClass:NSWindow.class] ? object : nil;
    const auto window = settingsWindow_.lock();
    if (closing != (window ? window->window() : nil))
        return;
    const auto onClosed = onSettingsWindowClosed_; // none before the first window
    if (onClosed)
        onClosed();
}

} // namespace kestrel::macos_shell
