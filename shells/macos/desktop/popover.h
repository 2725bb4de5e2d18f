#pragma once
// The popover at the status item.

#import <AppKit/AppKit.h>

#import "shells/macos/desktop/view_state_owner.h"

#include "platform/popover.h"
#include "store/weak_anchor.h"

#include <memory>

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

    /// For the icon's action, once for each: the click went down while the popover was shown and
    /// has closed it already, so that there is nothing left to do.
    bool hasEndedClick();

    std::weak_ptr<AppKitPopover> weak() const { return anchor_.weak(); }

  private:
    void applySize(Size size);

    const AppKitStatusItem& statusItem_;
    NSViewController<KSTViewStateOwner>* content_;
    NSPopover* popover_;
    KSTPopoverDelegate* delegate_; // the popover holds it weakly
    WeakAnchor<AppKitPopover> anchor_{*this};
};

} // namespace kestrel::macos_shell
