#pragma once
// Wraps the core's views in this shell's widgets and windows.

#include "app/view_hosts.h"
#include "shells/linux/desktop/popover_window.h"
#include "shells/linux/views/item_icon_pixmap.h"

#include <QPointer>

namespace kestrel::linux_shell {

/// Main thread only. The source of the icons outlives it and its widgets.
class LinuxViewHosts final : public ViewHosts {
  public:
    explicit LinuxViewHosts(const FileIconSource& fileIcons) : fileIcons_(fileIcons) {}

    std::unique_ptr<HostingController>
    hostMenuPopoverView(std::unique_ptr<MenuPopoverView> view) override;
    std::unique_ptr<HostingController>
    hostSettingsView(std::unique_ptr<SettingsView> view) override;
    std::unique_ptr<Popover> makePopover() override;

    /// The popover made last; null when it is gone.
    PopoverWindow* popover() const { return popover_; }

  private:
    const FileIconSource& fileIcons_;
    QPointer<PopoverWindow> popover_;
};

} // namespace kestrel::linux_shell
