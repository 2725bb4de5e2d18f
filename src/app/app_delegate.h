#pragma once
// The program's one long-lived controller. It owns the item store, the status item, the popover
// and, while it is open, the settings window. `main` keeps it for the whole run; its ports outlive
// it.

#include "app/view_hosts.h"
#include "platform/application.h"
#include "platform/status_bar.h"
#include "platform/window.h"
#include "store/items_manager.h"
#include "store/weak_anchor.h"

#include <memory>

namespace kestrel {

struct AppPorts {
    ItemsManagerPorts store;
    Application& application;
    StatusBar& statusBar;
    SymbolImages& symbolImages;
    WindowServer& windowServer;
    OpenPanel& openPanel;
    ViewHosts& viewHosts;
};

/// Main thread only.
class AppDelegate : private WindowDelegate {
  public:
    /// Creates the item store, which loads the stored list.
    explicit AppDelegate(const AppPorts& ports);
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;
    ~AppDelegate() override;

    /// Called once, when the platform has finished launching. Until then there is neither a status
    /// item nor a popover, and no other function may be called.
    void applicationDidFinishLaunching();

    /// The user started the program once more while it runs: the popover opens, or stays open.
    void applicationShouldHandleReopen();

    /// The status item's action: closes the popover when it is shown, else opens it at `button`.
    void statusBarButtonClicked(StatusBarButton& button);

    /// Closes the popover and brings the one settings window to the front, made when there is none.
    void openSettings();

    ItemsManager& itemsManager() { return itemsManager_; }
    bool hasSettingsWindow() const { return settingsWindow_ != nullptr; }

  private:
    void setupStatusItem();
    void setupPopover();
    void showPopover(StatusBarButton& button);
    std::unique_ptr<Window> makeSettingsWindow();
    void windowWillClose(Window* window) override;

    AppPorts ports_;
    ItemsManager itemsManager_; // before all that shows it, so that it dies after them
    std::unique_ptr<StatusItem> statusItem_;
    std::unique_ptr<Popover> popover_;
    std::unique_ptr<Window> settingsWindow_;
    WeakAnchor<AppDelegate> anchor_{*this};
};

} // namespace kestrel
