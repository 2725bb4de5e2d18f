#pragma once
// The settings window. The application's delegate is the window's as well.

#import <AppKit/AppKit.h>

#import "shells/macos/desktop/view_state_owner.h"

#include "platform/geometry.h"
#include "platform/window.h"
#include "store/weak_anchor.h"

#include <memory>
#include <string_view>

namespace kestrel::macos_shell {

/// Main thread only.
class AppKitSettingsWindow final : public Window {
  public:
    /// Not shown yet, in the middle of the screen. Its content is `contentSize`, whatever the size
    /// of the controller's view is. Does not keep `delegate` alive.
    AppKitSettingsWindow(NSViewController<KSTViewStateOwner>* content, Size contentSize,
                         std::string_view title, id<NSWindowDelegate> delegate);

    /// The core's view dies with it, even where the system still holds `content`.
    ~AppKitSettingsWindow() override;
    AppKitSettingsWindow(const AppKitSettingsWindow&) = delete;
    AppKitSettingsWindow& operator=(const AppKitSettingsWindow&) = delete;

    void bringForward() override;

    NSWindow* window() const { return window_; }
    std::weak_ptr<AppKitSettingsWindow> weak() const { return anchor_.weak(); }

  private:
    NSViewController<KSTViewStateOwner>* content_;
    NSWindow* window_;
    WeakAnchor<AppKitSettingsWindow> anchor_{*this};
};

} // namespace kestrel::macos_shell
