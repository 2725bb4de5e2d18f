#pragma once
// Ordinary windows, as the desktop's window manager shows them.

#include "platform/window.h"
#include "shells/linux/desktop/widget_controller.h"

#include <QIcon>
#include <QWidget>

#include <memory>

namespace kestrel::linux_shell {

class WindowFrame;

/// Main thread only.
class SettingsWindowShell final : public Window {
  public:
    SettingsWindowShell(Rect contentRect, WindowStyleMask styleMask, const QIcon& icon);
    ~SettingsWindowShell() override;
    SettingsWindowShell(const SettingsWindowShell&) = delete;
    SettingsWindowShell& operator=(const SettingsWindowShell&) = delete;

    void setTitle(std::string_view title) override;
    void setContentViewController(std::unique_ptr<HostingController> controller) override;

    /// The frame is hidden when closed and lives as long as this in either case.
    void setReleasedWhenClosed(bool released) override { static_cast<void>(released); }
    void center() override;
    void setDelegate(WindowDelegate* delegate) override { delegate_ = delegate; }
    void makeKeyAndOrderFront() override;

    QWidget* widget() const;

    /// The user has asked the frame to close.
    void willClose();

  private:
    /// The frame may be handling the very event that ends the window.
    struct DeleteLater {
        void operator()(WindowFrame* frame) const;
    };

    std::unique_ptr<WindowFrame, DeleteLater> frame_;
    WindowDelegate* delegate_ = nullptr;
};

class QtWindowServer final : public WindowServer {
  public:
    std::unique_ptr<Window> makeWindow(Rect contentRect, WindowStyleMask styleMask,
                                       BackingStore backing, WindowCreation creation) override;

  private:
    /// Kept, because the pictures of each new icon would stay in the toolkit's cache.
    QIcon icon_;
};

} // namespace kestrel::linux_shell
