#pragma once
// HostingController around a view controller of the system.

#import <AppKit/AppKit.h>

#import "shells/macos/views/view_state_owner.h"

#include "platform/popover.h"

namespace kestrel::macos_shell {

/// The only HostingController of this shell. The core's view dies with it, even where the system
/// still holds the view controller.
class AppKitHostingController final : public HostingController {
  public:
    explicit AppKitHostingController(NSViewController<ViewStateOwner>* controller)
        : controller_(controller) {}
    ~AppKitHostingController() override;
    AppKitHostingController(const AppKitHostingController&) = delete;
    AppKitHostingController& operator=(const AppKitHostingController&) = delete;

    void setPreferredContentSize(Size size) override;
    void makeWindowKey() override;

    NSViewController* controller() const { return controller_; }

  private:
    NSViewController<ViewStateOwner>* controller_;
};

} // namespace kestrel::macos_shell
