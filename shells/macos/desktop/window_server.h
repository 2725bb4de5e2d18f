#pragma once
// WindowServer and Window on NSWindow. The windows' delegate is the application's, which hands
// what it hears to AppKitWindowServer::windowWillClose.

#import <AppKit/AppKit.h>

#include "platform/window.h"

#include <vector>

namespace kestrel::macos_shell {

class AppKitWindowServer;

class AppKitWindow final : public Window {
  public:
    AppKitWindow(AppKitWindowServer& server, NSWindow* window);
    ~AppKitWindow() override;
    AppKitWindow(const AppKitWindow&) = delete;
    AppKitWindow& operator=(const AppKitWindow&) = delete;

    void setTitle(std::string_view title) override;

    /// The window keeps its size, whatever that of the controller's view is.
    void setContentViewController(std::unique_ptr<HostingController> controller) override;
    void setReleasedWhenClosed(bool released) override;
    void center() override;
    void setDelegate(WindowDelegate* delegate) override;
    void makeKeyAndOrderFront() override;

    NSWindow* window() const { return window_; }
    WindowDelegate* delegate() const { return delegate_; }

  private:
    AppKitWindowServer& server_;
    std::unique_ptr<HostingController> controller_;
    NSWindow* window_;
    WindowDelegate* delegate_ = nullptr;
};

/// Outlives its windows.
class AppKitWindowServer final : public WindowServer {
  public:
    /// Does not keep `delegate` alive.
    explicit AppKitWindowServer(id<NSWindowDelegate> delegate) : delegate_(delegate) {}

    std::unique_ptr<Window> makeWindow(Rect contentRect, WindowStyleMask styleMask,
                                       BackingStore backing, WindowCreation creation) override;

    /// Tells the delegate of the window that `notification` is about. An object that is no window
    /// counts as none; a window that was not made here is nobody's.
    void windowWillClose(NSNotification* notification);

  private:
    friend class AppKitWindow;

    __weak id<NSWindowDelegate> delegate_;
    std::vector<AppKitWindow*> windows_;
};

} // namespace kestrel::macos_shell
