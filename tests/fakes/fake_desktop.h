#pragma once
// The desktop in memory: status item, popover and settings window. Every call is logged with its
// values; what the delegate owns is reached through the FakeDesktop that made it.

#include "app/desktop.h"
#include "tests/fakes/call_log.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace kestrel::tests {

class FakePopover final : public Popover {
  public:
    FakePopover(CallLog& log, std::unique_ptr<MenuPopoverView> content)
        : view(std::move(content)), log_(log) {}

    bool isShown() const override { return isShown_; }
    void show(Size size) override;
    void setContentSize(Size size) override;
    void close() override;

    std::unique_ptr<MenuPopoverView> view;

  private:
    CallLog& log_;
    bool isShown_ = false;
};

class FakeWindow final : public Window {
  public:
    FakeWindow(CallLog& log, std::unique_ptr<SettingsView> content)
        : view(std::move(content)), log_(log) {}
    ~FakeWindow() override { log_.add("window.destroyed"); }

    void bringForward() override { log_.add("window.bringForward"); }

    std::unique_ptr<SettingsView> view;

  private:
    CallLog& log_;
};

/// Keeps pointers to what it made last, which die with their owners, and the callbacks that it was
/// given, which do not.
class FakeDesktop final : public Desktop {
  public:
    explicit FakeDesktop(CallLog& log) : log_(log) {}

    FakePopover* popover = nullptr;
    FakeWindow* window = nullptr;
    std::function<void()> click;       ///< the user clicks the status item
    std::function<void()> closeWindow; ///< the user closes the settings window

    std::unique_ptr<StatusItem> makeStatusItem(std::string_view symbol,
                                               std::string_view description,
                                               std::function<void()> onClick) override;
    std::unique_ptr<Popover> makePopover(std::unique_ptr<MenuPopoverView> view) override;
    std::unique_ptr<Window> makeSettingsWindow(std::unique_ptr<SettingsView> view, Size contentSize,
                                               std::function<void()> onClosed) override;

  private:
    CallLog& log_;
};

} // namespace kestrel::tests
