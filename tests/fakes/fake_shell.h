#pragma once
// The windows of a shell in memory: status bar, symbols, popover, settings window, controllers.
// Every call is logged with its values; the fakes that the delegate owns are reached through the
// FakeShell that made them.

#include "app/view_hosts.h"
#include "platform/status_bar.h"
#include "platform/window.h"
#include "tests/fakes/call_log.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kestrel::tests {

std::string describe(Size size);

class FakeImage final : public Image {
  public:
    explicit FakeImage(std::string text) : description(std::move(text)) {}
    std::string description;
};

class FakeButton final : public StatusBarButton {
  public:
    explicit FakeButton(CallLog& log) : log_(log) {}

    void setImage(std::shared_ptr<Image> image) override;
    void setImageIsTemplate(bool isTemplate) override;
    void setAction(std::function<void(StatusBarButton&)> action) override;
    void sendActionOn(EventMask mask) override;

    /// A click, as the platform reports it.
    void click() {
        if (action_)
            action_(*this);
    }

  private:
    CallLog& log_;
    std::function<void(StatusBarButton&)> action_;
};

class FakeController final : public HostingController {
  public:
    FakeController(CallLog& log, std::string name) : log_(log), name_(std::move(name)) {}

    void setPreferredContentSize(Size size) override;
    void makeWindowKey() override;

    std::unique_ptr<MenuPopoverView> menuPopoverView;
    std::unique_ptr<SettingsView> settingsView;

  private:
    CallLog& log_;
    std::string name_;
};

class FakePopover final : public Popover {
  public:
    explicit FakePopover(CallLog& log) : log_(log) {}

    void setContentViewController(std::unique_ptr<HostingController> controller) override;
    HostingController* contentViewController() override { return controller_.get(); }
    void setContentSize(Size size) override;
    void setBehavior(PopoverBehavior behavior) override;
    void setAnimates(bool animates) override;
    bool isShown() const override { return shown_; }
    void showRelativeTo(StatusBarButton& button, RectEdge preferredEdge) override;
    void performClose() override;

    Size contentSize;

  private:
    CallLog& log_;
    std::unique_ptr<HostingController> controller_;
    bool shown_ = false;
};

class FakeWindow final : public Window {
  public:
    explicit FakeWindow(CallLog& log) : log_(log) {}
    ~FakeWindow() override { log_.add("window.destroyed"); }

    void setTitle(std::string_view title) override;
    void setContentViewController(std::unique_ptr<HostingController> controller) override;
    void setReleasedWhenClosed(bool released) override;
    void center() override;
    void setDelegate(WindowDelegate* delegate) override;
    void makeKeyAndOrderFront() override;

    /// The user closes the window.
    void close() { delegate_->windowWillClose(this); }

    WindowDelegate* delegate() { return delegate_; }

  private:
    CallLog& log_;
    std::unique_ptr<HostingController> controller_;
    WindowDelegate* delegate_ = nullptr;
};

/// Makes all of them, and keeps pointers to the last ones made. The pointers die with their owners.
class FakeShell final : public StatusBar,
                        public SymbolImages,
                        public WindowServer,
                        public ViewHosts {
  public:
    explicit FakeShell(CallLog& log) : log_(log) {}

    bool hasButton = true;
    bool hasSymbol = true;

    FakeButton* button = nullptr;
    FakePopover* popover = nullptr;
    FakeWindow* window = nullptr;
    MenuPopoverView* menuPopoverView = nullptr;
    SettingsView* settingsView = nullptr;

    std::unique_ptr<StatusItem> statusItemWithLength(double length) override;
    std::shared_ptr<Image>
    imageWithSystemSymbolName(std::string_view name,
                              std::optional<std::string> accessibilityDescription) override;
    std::shared_ptr<Image>
    imageWithSymbolConfiguration(const std::shared_ptr<Image>& symbol,
                                 const SymbolConfiguration& configuration) override;
    std::unique_ptr<Window> makeWindow(Rect contentRect, WindowStyleMask styleMask,
                                       BackingStore backing, WindowCreation creation) override;
    std::unique_ptr<HostingController>
    hostMenuPopoverView(std::unique_ptr<MenuPopoverView> view) override;
    std::unique_ptr<HostingController>
    hostSettingsView(std::unique_ptr<SettingsView> view) override;
    std::unique_ptr<Popover> makePopover() override;

  private:
    CallLog& log_;
};

} // namespace kestrel::tests
