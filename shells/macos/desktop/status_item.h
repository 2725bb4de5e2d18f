#pragma once
// The icon in the menu bar. The application's delegate is the target of its button, and hands each
// click to it.

#import <AppKit/AppKit.h>

#include "platform/status_item.h"
#include "store/weak_anchor.h"

#include <functional>
#include <memory>
#include <string_view>

NS_ASSUME_NONNULL_BEGIN

/// Receives the action of the status item's button.
@protocol KSTStatusBarButtonTarget
- (void)statusBarButtonClicked:(NSStatusBarButton*)sender;
@end

namespace kestrel::macos_shell {

/// Main thread only.
class AppKitStatusItem final : public StatusItem {
  public:
    /// In the bar from now on; without an image where the system has no such symbol. Does not keep
    /// `target` alive; clicks do nothing once it is gone.
    AppKitStatusItem(std::string_view symbol, std::string_view description,
                     id<KSTStatusBarButtonTarget> _Nullable target, std::function<void()> onClick);
    ~AppKitStatusItem() override;
    AppKitStatusItem(const AppKitStatusItem&) = delete;
    AppKitStatusItem& operator=(const AppKitStatusItem&) = delete;

    /// The button has sent its action: calls `onClick`.
    void clicked(NSStatusBarButton* sender);

    /// Nil where the system has given the item none.
    NSStatusBarButton* _Nullable button() const { return item_.button; }

    /// The button whose action runs now; nil while none does.
    NSStatusBarButton* _Nullable clickedButton() const { return clickedButton_; }

    std::weak_ptr<AppKitStatusItem> weak() const { return anchor_.weak(); }

  private:
    NSStatusItem* item_; // the status bar does not keep it
    NSStatusBarButton* _Nullable clickedButton_ = nil;
    std::function<void()> onClick_;
    WeakAnchor<AppKitStatusItem> anchor_{*this};
};

} // namespace kestrel::macos_shell

NS_ASSUME_NONNULL_END
