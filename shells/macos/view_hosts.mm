#include "shells/macos/view_hosts.h"

#include "shells/macos/hosting_controller.h"
#include "shells/macos/menu_popover_view_controller.h"
#include "shells/macos/popover.h"
#include "shells/macos/settings_view_controller.h"

#include <utility>

namespace kestrel::macos_shell {

std::unique_ptr<HostingController>
AppKitViewHosts::hostMenuPopoverView(std::unique_ptr<MenuPopoverView> view) {
    return std::make_unique<AppKitHostingController>(
        [[MenuPopoverViewController alloc] initWithMenuPopoverView:std::move(view)]);
}

std::unique_ptr<HostingController>
AppKitViewHosts::hostSettingsView(std::unique_ptr<SettingsView> view) {
    return std::make_unique<AppKitHostingController>(
        [[SettingsViewController alloc] initWithSettingsView:std::move(view)]);
}

std::unique_ptr<Popover> AppKitViewHosts::makePopover() {
    return std::make_unique<AppKitPopover>(statusBar_);
}

} // namespace kestrel::macos_shell
