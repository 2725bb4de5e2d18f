#pragma once
// ViewHosts: wraps each view of the core in the view controller that draws it.

#include "app/view_hosts.h"

namespace kestrel::macos_shell {

class AppKitStatusBar;

class AppKitViewHosts final : public ViewHosts {
  public:
    /// `statusBar` outlives the popovers made here.
    explicit AppKitViewHosts(const AppKitStatusBar& statusBar) : statusBar_(statusBar) {}

    std::unique_ptr<HostingController>
    hostMenuPopoverView(std::unique_ptr<MenuPopoverView> view) override;
    std::unique_ptr<HostingController>
    hostSettingsView(std::unique_ptr<SettingsView> view) override;
    std::unique_ptr<Popover> makePopover() override;

  private:
    const AppKitStatusBar& statusBar_;
};

} // namespace kestrel::macos_shell
