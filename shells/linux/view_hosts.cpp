#include "shells/linux/view_hosts.h"

#include "shells/linux/views/menu_popover_widget.h"

#include <utility>

namespace kestrel::linux_shell {

LinuxViewHosts::LinuxViewHosts(std::function<QIcon(const QString&)> iconForFile)
    : iconForFile_(std::move(iconForFile)) {}

std::unique_ptr<HostingController>
LinuxViewHosts::hostMenuPopoverView(std::unique_ptr<MenuPopoverView> view) {
    return std::make_unique<WidgetController>(
        std::make_unique<MenuPopoverWidget>(std::move(view), iconForFile_));
}

std::unique_ptr<HostingController>
LinuxViewHosts::hostSettingsView(std::unique_ptr<SettingsView> view) {
    static_cast<void>(view);
    return std::make_unique<WidgetController>(std::make_unique<QWidget>());
}

std::unique_ptr<Popover> LinuxViewHosts::makePopover() {
    auto popover = std::make_unique<PopoverWindow>();
    popover_ = popover.get();
    return popover;
}

} // namespace kestrel::linux_shell
