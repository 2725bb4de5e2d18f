#include "shells/macos/desktop/view_hosts.h"

#include "shells/macos/desktop/hosting_controller.h"
#include "shells/macos/desktop/popover.h"
#include "shells/macos/views/menu_popover_view_controller.h"
#include "shells/macos/views/settings_view_controller.h"

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
