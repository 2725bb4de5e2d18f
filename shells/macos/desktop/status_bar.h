#pragma once
// StatusBar on the system's: the item, and its button, whose action goes to the application's
// delegate.

#import <AppKit/AppKit.h>

#include "platform/status_bar.h"

#include <vector>

NS_ASSUME_NONNULL_BEGIN

/// Receives the action of a status item's button and hands it to AppKitStatusBar::buttonClicked.
@protocol StatusBarButtonTarget
- (void)statusBarButtonClicked:(NSStatusBarButton*)sender;
@end

namespace kestrel::macos_shell {

class AppKitStatusBar;

class AppKitStatusBarButton final : public StatusBarButton {
  public:
    AppKitStatusBarButton(AppKitStatusBar& bar, NSStatusBarButton* button);
    ~AppKitStatusBarButton() override;
    AppKitStatusBarButton(const AppKitStatusBarButton&) = delete;
    AppKitStatusBarButton& operator=(const AppKitStatusBarButton&) = delete;

    void setImage(std::shared_ptr<Image> image) override;
    void setImageIsTemplate(bool isTemplate) override;
    void setAction(std::function<void(StatusBarButton&)> action) override;
    void sendActionOn(EventMask mask) override;

    NSStatusBarButton* button() const { return button_; }
    void sendAction();

  private:
    AppKitStatusBar& bar_;
    NSStatusBarButton* button_;
    std::function<void(StatusBarButton&)> action_;
};

/// Outlives its items.
class AppKitStatusBar final : public StatusBar {
  public:
    /// Does not keep `target` alive; clicks do nothing once it is gone.
    explicit AppKitStatusBar(id<StatusBarButtonTarget> target) : target_(target) {}

    std::unique_ptr<StatusItem> statusItemWithLength(double length) override;

    /// Runs the action that was set for `button`; nothing for a button that is not of an item made
    /// here, or of one that is gone.
    void buttonClicked(NSStatusBarButton* button);

    /// The button whose action runs now; nil while none does.
    NSStatusBarButton* _Nullable clickedButton() const { return clickedButton_; }

  private:
    friend class AppKitStatusBarButton;

    __weak id<StatusBarButtonTarget> _Nullable target_;
    std::vector<AppKitStatusBarButton*> buttons_;
    NSStatusBarButton* _Nullable clickedButton_ = nil;
};

} // namespace kestrel::macos_shell

NS_ASSUME_NONNULL_END
