#pragma once
// Makes the status item, the popover and the settings window, with this shell's view controllers
// in them.

#include "app/desktop.h"
#include "shells/macos/desktop/popover.h"
#include "shells/macos/desktop/settings_window.h"
#include "shells/macos/desktop/status_item.h"

namespace kestrel::macos_shell {

/// Main thread only.
class AppKitDesktop final : public Desktop {
  public:
    /// `delegate` hands on what it hears as the target of the status item's button and as the
    /// settings window's delegate. It is not kept alive.
    explicit AppKitDesktop(id<KSTStatusBarButtonTarget, NSWindowDelegate> delegate)
        : delegate_(delegate) {}

    std::unique_ptr<StatusItem> makeStatusItem(std::string_view symbol,
                                               std::string_view description,
                                               std::function<void()> onClick) override;
    std::unique_ptr<Popover> makePopover(std::unique_ptr<MenuPopoverView> view) override;
    std::unique_ptr<Window> makeSettingsWindow(std::unique_ptr<SettingsView> view, Size contentSize,
                                               std::function<void()> onClosed) override;

    /// A click on the icon. Nothing once the item is gone, and nothing where the popover has
    /// already closed on this click.
    void statusBarButtonClicked(NSStatusBarButton* sender);

    /// The settings window has been closed when `notification` is about it. An object that is no
    /// window counts as none, and none is the same as a settings window that is not there.
    void windowWillClose(NSNotification* notification);

  private:
    __weak id<KSTStatusBarButtonTarget, NSWindowDelegate> delegate_;
    // The ones made last.
    std::weak_ptr<AppKitStatusItem> statusItem_;
    std::weak_ptr<AppKitPopover> popover_;
    std::weak_ptr<AppKitSettingsWindow> settingsWindow_;
    std::function<void()> onSettingsWindowClosed_; // outlives that window
};

} // namespace kestrel::macos_shell
