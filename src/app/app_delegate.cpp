#include "app/app_delegate.h"

#include "app/app_style.h"
#include "views/popover/menu_popover_style.h"

#include <string>
#include <utility>

namespace kestrel {

AppDelegate::AppDelegate(const AppPorts& ports) : ports_(ports), itemsManager_(ports.store) {}

AppDelegate::~AppDelegate() {
    if (settingsWindow_)
        settingsWindow_->setDelegate(nullptr);
}

void AppDelegate::applicationDidFinishLaunching() {
    ports_.application.setActivationPolicy(ActivationPolicy::accessory);
    setupStatusItem();
    setupPopover();
}

void AppDelegate::setupStatusItem() {
    statusItem_ = ports_.statusBar.statusItemWithLength(squareStatusItemLength);
    StatusBarButton* const button = statusItem_->button();
    if (!button)
        return;
    const auto symbol = ports_.symbolImages.imageWithSystemSymbolName(
        app_style::statusSymbol, std::string(app_style::applicationName));
    if (symbol) {
        button->setImage(ports_.symbolImages.imageWithSymbolConfiguration(
            symbol, app_style::statusSymbolConfiguration));
        button->setImageIsTemplate(true);
    }
    button->setAction([weak = anchor_.weak()](StatusBarButton& clicked) {
        if (const auto self = weak.lock())
            self->statusBarButtonClicked(clicked);
    });
    button->sendActionOn(EventMask::leftMouseUp);
}

void AppDelegate::setupPopover() {
    const auto weak = anchor_.weak();
    MenuPopoverView::Callbacks callbacks{
        .onOpenSettings =
            [weak] {
                if (const auto self = weak.lock())
                    self->openSettings();
            },
        .onQuit = [&application = ports_.application] { application.terminate(); },
        .onClose =
            [weak] {
                if (const auto self = weak.lock())
                    self->popover_->performClose();
            },
    };
    auto controller = ports_.viewHosts.hostMenuPopoverView(std::make_unique<MenuPopoverView>(
        itemsManager_, ports_.store.mainQueue, ports_.store.clock, std::move(callbacks)));
    const Size size = menu_popover_style::contentSize(itemsManager_.items.size());
    controller->setPreferredContentSize(size);

    popover_ = ports_.viewHosts.makePopover();
    popover_->setContentViewController(std::move(controller));
    popover_->setContentSize(size);
    popover_->setBehavior(PopoverBehavior::transient);
    popover_->setAnimates(true);
}

void AppDelegate::statusBarButtonClicked(StatusBarButton& button) {
    if (popover_->isShown())
        popover_->performClose();
    else
        showPopover(button);
}

void AppDelegate::showPopover(StatusBarButton& button) {
    const Size size = menu_popover_style::contentSize(itemsManager_.items.size());
    popover_->setContentSize(size);
    popover_->contentViewController()->setPreferredContentSize(size);
    popover_->showRelativeTo(button, RectEdge::minY);
    popover_->contentViewController()->makeWindowKey();
}

void AppDelegate::applicationShouldHandleReopen() {
    StatusBarButton* const button = statusItem_->button();
    if (button && !popover_->isShown())
        showPopover(*button);
}

void AppDelegate::openSettings() {
    popover_->performClose();
    ports_.application.setActivationPolicy(ActivationPolicy::regular);
    ports_.application.activateIgnoringOtherApps();
    if (!settingsWindow_)
        settingsWindow_ = makeSettingsWindow();
    settingsWindow_->makeKeyAndOrderFront();
}

std::unique_ptr<Window> AppDelegate::makeSettingsWindow() {
    auto controller = ports_.viewHosts.hostSettingsView(
        std::make_unique<SettingsView>(itemsManager_, ports_.store.clock, ports_.openPanel));
    auto window =
        ports_.windowServer.makeWindow(app_style::settingsContentRect, app_style::settingsStyleMask,
                                       BackingStore::buffered, WindowCreation::immediate);
    window->setTitle(app_style::applicationName);
    window->setContentViewController(std::move(controller));
    window->setReleasedWhenClosed(false);
    window->center();
    window->setDelegate(this);
    return window;
}

void AppDelegate::windowWillClose(Window* window) {
    if (window != settingsWindow_.get())
        return;
    settingsWindow_.reset();
    ports_.application.setActivationPolicy(ActivationPolicy::accessory);
}

} // namespace kestrel
