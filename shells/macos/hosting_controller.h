#pragma once
// HostingController around a view controller of the system.

#import <AppKit/AppKit.h>

#include "platform/popover.h"

namespace kestrel::macos_shell {

/// The only HostingController of this shell.
class AppKitHostingController final : public HostingController {
  public:
    explicit AppKitHostingController(NSViewController* controller) : controller_(controller) {}

    void setPreferredContentSize(Size size) override;
    void makeWindowKey() override;

    NSViewController* controller() const { return controller_; }

  private:
    NSViewController* controller_;
};

} // namespace kestrel::macos_shell
