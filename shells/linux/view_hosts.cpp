#include "shells/linux/view_hosts.h"

#include "shells/linux/views/menu_popover_widget.h"
#include "shells/linux/views/settings_widget.h"

#include <utility>

namespace kestrel::linux_shell {

std::unique_ptr<HostingController>
LinuxViewHosts::hostMenuPopoverView(std::unique_ptr<MenuPopoverView> view) {
    auto widget = std::make_unique<MenuPopoverWidget>(std::move(view), fileIcons_);
    QObject::connect(widget.get(), &MenuPopoverWidget::contentChanged, widget.get(), [this] {
        if (popover_ != nullptr) {
            popover_->prepareSoon();
        }
    });
    return std::make_unique<WidgetController>(std::move(widget));
}

std::unique_ptr<HostingController>
LinuxViewHosts::hostSettingsView(std::unique_ptr<SettingsView> view) {
    return std::make_unique<WidgetController>(
        std::make_unique<SettingsWidget>(std::move(view), fileIcons_));
}

std::unique_ptr<Popover> LinuxViewHosts::makePopover() {
    auto popover = std::make_unique<PopoverWindow>();
    popover_ = popover.get();
    return popover;
}

} // namespace kestrel::linux_shell
