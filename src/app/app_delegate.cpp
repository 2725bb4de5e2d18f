#include "app/app_delegate.h"

#include "app/app_style.h"
#include "views/popover/menu_popover_style.h"

#include <utility>

namespace kestrel {

AppDelegate::AppDelegate(const AppPorts& ports) : ports_(ports), itemsManager_(ports.store) {}

void AppDelegate::applicationDidFinishLaunching() {
    ports_.application.setActivationPolicy(ActivationPolicy::accessory);
    setupStatusItem();
    setupPopover();
}

void AppDelegate::setupStatusItem() {
    statusItem_ = ports_.desktop.makeStatusItem(app_style::statusSymbol, app_style::applicationName,
                                                weakly(&AppDelegate::statusBarButtonClicked));
}

void AppDelegate::setupPopover() {
    MenuPopoverView::Callbacks callbacks{
        .onOpenSettings = weakly(&AppDelegate::openSettings),
        .onQuit = [&application = ports_.application] { application.terminate(); },
        .onClose = weakly(&AppDelegate::closePopover),
    };
    popover_ = ports_.desktop.makePopover(std::make_unique<MenuPopoverView>(
        itemsManager_, ports_.store.mainQueue, ports_.store.clock, std::move(callbacks)));
    itemsWillChange_ = itemsManager_.objectWillChange.subscribe([this] {
        if (popover_->isShown())
            ports_.store.mainQueue.async(weakly(&AppDelegate::fitPopover));
    });
}

// The height rule, for the list as it is now.
Size AppDelegate::popoverSize() const {
    return menu_popover_style::contentSize(itemsManager_.items.size());
}

void AppDelegate::statusBarButtonClicked() {
    if (popover_->isShown())
        closePopover();
    else
        popover_->show(popoverSize());
}

// The list has changed under the open popover.
void AppDelegate::fitPopover() {
    if (popover_->isShown())
        popover_->setContentSize(popoverSize());
}

void AppDelegate::closePopover() { popover_->close(); }

void AppDelegate::applicationShouldHandleReopen() {
    if (!popover_->isShown())
        popover_->show(popoverSize());
}

void AppDelegate::openSettings() {
    closePopover();
    ports_.application.setActivationPolicy(ActivationPolicy::regular);
    ports_.application.activate();
    if (!settingsWindow_)
        settingsWindow_ = makeSettingsWindow();
    settingsWindow_->bringForward();
}

std::unique_ptr<Window> AppDelegate::makeSettingsWindow() {
    return ports_.desktop.makeSettingsWindow(
        std::make_unique<SettingsView>(itemsManager_, ports_.store.clock, ports_.openPanel),
        app_style::settingsContentSize, weakly(&AppDelegate::settingsWindowClosed));
}

void AppDelegate::settingsWindowClosed() {
    settingsWindow_.reset();
    ports_.application.setActivationPolicy(ActivationPolicy::accessory);
}

// What others keep of the delegate does nothing once it is gone.
std::function<void()> AppDelegate::weakly(void (AppDelegate::*action)()) {
    return [weak = anchor_.weak(), action] {
        if (const auto self = weak.lock())
            (self.get()->*action)();
    };
}

} // namespace kestrel
