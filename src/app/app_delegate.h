#pragma once
// The program's one long-lived controller. It owns the item store, the status item, the popover
// and, while it is open, the settings window. `main` keeps it for the whole run; its ports outlive
// it.

#include "app/desktop.h"
#include "platform/application.h"
#include "store/items_manager.h"
#include "store/weak_anchor.h"

#include <functional>
#include <memory>

namespace kestrel {

struct AppPorts {
    ItemsManagerPorts store;
    Application& application;
    OpenPanel& openPanel;
    Desktop& desktop;
};

/// Main thread only.
class AppDelegate {
  public:
    /// Creates the item store, which loads the stored list.
    explicit AppDelegate(const AppPorts& ports);
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;
    ~AppDelegate() = default;

    /// Called once, when the platform has finished launching. Until then there is neither a status
    /// item nor a popover, and no other function may be called.
    void applicationDidFinishLaunching();

    /// The user started the program once more while it runs: the popover opens, or stays open.
    void applicationShouldHandleReopen();

    /// The status item's action: closes the popover when it is shown, else opens it.
    void statusBarButtonClicked();

    /// Closes the popover and brings the one settings window to the front, made when there is none.
    void openSettings();

    ItemsManager& itemsManager() { return itemsManager_; }
    bool hasSettingsWindow() const { return settingsWindow_ != nullptr; }

  private:
    void setupStatusItem();
    void setupPopover();
    void closePopover();
    void fitPopover();
    Size popoverSize() const;
    std::unique_ptr<Window> makeSettingsWindow();
    void settingsWindowClosed();
    std::function<void()> weakly(void (AppDelegate::*action)());

    AppPorts ports_;
    ItemsManager itemsManager_;              // before all that shows it, so that it dies after them
    std::unique_ptr<StatusItem> statusItem_; // before the popover that opens at it
    std::unique_ptr<Popover> popover_;
    std::unique_ptr<Window> settingsWindow_;
    Subscription itemsWillChange_;
    WeakAnchor<AppDelegate> anchor_{*this};
};

} // namespace kestrel
