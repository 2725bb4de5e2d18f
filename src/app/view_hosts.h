#pragma once
// How the application gets its views onto the screen: the shell wraps each in a controller of its
// toolkit.

#include "platform/popover.h"
#include "views/popover/menu_popover_view.h"
#include "views/settings/settings_view.h"

#include <memory>

namespace kestrel {

/// Main thread only. Every result is new and never null.
class ViewHosts {
  public:
    virtual ~ViewHosts() = default;

    /// The controller owns the view.
    virtual std::unique_ptr<HostingController>
    hostMenuPopoverView(std::unique_ptr<MenuPopoverView> view) = 0;
    virtual std::unique_ptr<HostingController>
    hostSettingsView(std::unique_ptr<SettingsView> view) = 0;

    virtual std::unique_ptr<Popover> makePopover() = 0;
};

} // namespace kestrel
