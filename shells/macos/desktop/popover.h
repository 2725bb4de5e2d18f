#pragma once
// Popover on NSPopover.

#import <AppKit/AppKit.h>

#include "platform/popover.h"

@class PopoverDelegate;

namespace kestrel::macos_shell {

class AppKitStatusBar;

class AppKitPopover final : public Popover {
  public:
    /// `statusBar` is the one whose buttons the popover is shown at; it outlives the popover.
    explicit AppKitPopover(const AppKitStatusBar& statusBar);

    /// Closes the popover.
    ~AppKitPopover() override;
    AppKitPopover(const AppKitPopover&) = delete;
    AppKitPopover& operator=(const AppKitPopover&) = delete;

    void setContentViewController(std::unique_ptr<HostingController> controller) override;
    HostingController* contentViewController() override { return controller_.get(); }
    void setContentSize(Size size) override;
    void setBehavior(PopoverBehavior behavior) override;
    void setAnimates(bool animates) override;
    bool isShown() const override;
    void showRelativeTo(StatusBarButton& button, RectEdge preferredEdge) override;
    void performClose() override;

  private:
    const AppKitStatusBar& statusBar_;
    std::unique_ptr<HostingController> controller_;
    NSPopover* popover_;
    PopoverDelegate* delegate_; // the popover holds it weakly
};

} // namespace kestrel::macos_shell
