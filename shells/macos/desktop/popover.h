#pragma once
// The popover at the status item.

#import <AppKit/AppKit.h>

#import "shells/macos/desktop/view_state_owner.h"

#include "platform/popover.h"

@class KSTPopoverDelegate;

namespace kestrel::macos_shell {

class AppKitStatusItem;

/// Main thread only.
class AppKitPopover final : public Popover {
  public:
    /// `size` is the content's until it is shown. `statusItem` outlives the popover.
    AppKitPopover(NSViewController<KSTViewStateOwner>* content, Size size,
                  const AppKitStatusItem& statusItem);

    /// Closes the popover. The core's view dies with it, even where the system still holds
    /// `content`.
    ~AppKitPopover() override;
    AppKitPopover(const AppKitPopover&) = delete;
    AppKitPopover& operator=(const AppKitPopover&) = delete;

    bool isShown() const override;
    void show(Size size) override;
    void setContentSize(Size size) override;
    void close() override;

  private:
    void applySize(Size size);

    const AppKitStatusItem& statusItem_;
    NSViewController<KSTViewStateOwner>* content_;
    NSPopover* popover_;
    KSTPopoverDelegate* delegate_; // the popover holds it weakly
};

} // namespace kestrel::macos_shell
