#include "tests/fakes/fake_shell.h"

#include <array>
#include <cstdio>

namespace kestrel::tests {

namespace {

std::string number(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g", value);
    return text.data();
}

const char* yesOrNo(bool value) { return value ? "yes" : "no"; }

class FakeStatusItem final : public StatusItem {
  public:
    explicit FakeStatusItem(std::unique_ptr<FakeButton> button) : button_(std::move(button)) {}
    StatusBarButton* button() override { return button_.get(); }

  private:
    std::unique_ptr<FakeButton> button_;
};

} // namespace

std::string describe(Size size) { return number(size.width) + "x" + number(size.height); }

void FakeButton::setImage(std::shared_ptr<Image> image) {
    log_.add("button.setImage " + static_cast<const FakeImage&>(*image).description);
}
void FakeButton::setImageIsTemplate(bool isTemplate) {
    log_.add(std::string("button.setImageIsTemplate ") + yesOrNo(isTemplate));
}
void FakeButton::setAction(std::function<void(StatusBarButton&)> action) {
    log_.add("button.setAction");
    action_ = std::move(action);
}
void FakeButton::sendActionOn(EventMask mask) {
    log_.add("button.sendActionOn " + std::to_string(static_cast<unsigned>(mask)));
}

void FakeController::setPreferredContentSize(Size size) {
    log_.add(name_ + ".setPreferredContentSize " + describe(size));
}
void FakeController::makeWindowKey() { log_.add(name_ + ".makeWindowKey"); }

void FakePopover::setContentViewController(std::unique_ptr<HostingController> controller) {
    log_.add("popover.setContentViewController");
    controller_ = std::move(controller);
}
void FakePopover::setContentSize(Size size) {
    log_.add("popover.setContentSize " + describe(size));
    contentSize = size;
}
void FakePopover::setBehavior(PopoverBehavior behavior) {
    log_.add("popover.setBehavior " + std::to_string(static_cast<int>(behavior)));
}
void FakePopover::setAnimates(bool animates) {
    log_.add(std::string("popover.setAnimates ") + yesOrNo(animates));
}
void FakePopover::showRelativeTo(StatusBarButton& button, RectEdge preferredEdge) {
    const bool isButton = dynamic_cast<FakeButton*>(&button) != nullptr;
    log_.add("popover.showRelativeTo " + std::string(isButton ? "button" : "other") + " edge " +
             std::to_string(static_cast<int>(preferredEdge)));
    shown_ = true;
}
void FakePopover::performClose() {
    log_.add("popover.performClose");
    shown_ = false;
}

void FakeWindow::setTitle(std::string_view title) {
    log_.add("window.setTitle " + std::string(title));
}
void FakeWindow::setContentViewController(std::unique_ptr<HostingController> controller) {
    log_.add("window.setContentViewController");
    controller_ = std::move(controller);
}
void FakeWindow::setReleasedWhenClosed(bool released) {
    log_.add(std::string("window.setReleasedWhenClosed ") + yesOrNo(released));
}
void FakeWindow::center() { log_.add("window.center"); }
void FakeWindow::setDelegate(WindowDelegate* delegate) {
    log_.add(delegate ? "window.setDelegate" : "window.setDelegate none");
    delegate_ = delegate;
}
void FakeWindow::makeKeyAndOrderFront() { log_.add("window.makeKeyAndOrderFront"); }

std::unique_ptr<StatusItem> FakeShell::statusItemWithLength(double length) {
    log_.add("statusBar.statusItemWithLength " + number(length));
    auto made = hasButton ? std::make_unique<FakeButton>(log_) : nullptr;
    button = made.get();
    return std::make_unique<FakeStatusItem>(std::move(made));
}

std::shared_ptr<Image>
FakeShell::imageWithSystemSymbolName(std::string_view name,
                                     std::optional<std::string> accessibilityDescription) {
    const std::string description =
        std::string(name) + " '" + accessibilityDescription.value_or("none") + "'";
    log_.add("symbols.named " + description);
    return hasSymbol ? std::make_shared<FakeImage>(description) : nullptr;
}

std::shared_ptr<Image>
FakeShell::imageWithSymbolConfiguration(const std::shared_ptr<Image>& symbol,
                                        const SymbolConfiguration& configuration) {
    const auto& image = static_cast<const FakeImage&>(*symbol);
    const char* const weight =
        configuration.weight == FontWeight::regular ? "regular" : "not regular";
    return std::make_shared<FakeImage>(image.description + " at " +
                                       number(configuration.pointSize) + " " + weight);
}

std::unique_ptr<Window> FakeShell::makeWindow(Rect contentRect, WindowStyleMask styleMask,
                                              BackingStore backing, WindowCreation creation) {
    log_.add("windows.makeWindow " + number(contentRect.x) + "," + number(contentRect.y) + " " +
             describe({contentRect.width, contentRect.height}) + " style " +
             std::to_string(static_cast<unsigned>(styleMask)) + " backing " +
             std::to_string(static_cast<int>(backing)) +
             (creation == WindowCreation::deferred ? " deferred" : " not deferred"));
    auto made = std::make_unique<FakeWindow>(log_);
    window = made.get();
    return made;
}

std::unique_ptr<HostingController>
FakeShell::hostMenuPopoverView(std::unique_ptr<MenuPopoverView> view) {
    log_.add("hosts.hostMenuPopoverView");
    menuPopoverView = view.get();
    auto controller = std::make_unique<FakeController>(log_, "popoverController");
    controller->menuPopoverView = std::move(view);
    return controller;
}

std::unique_ptr<HostingController> FakeShell::hostSettingsView(std::unique_ptr<SettingsView> view) {
    log_.add("hosts.hostSettingsView");
    settingsView = view.get();
    auto controller = std::make_unique<FakeController>(log_, "settingsController");
    controller->settingsView = std::move(view);
    return controller;
}

std::unique_ptr<Popover> FakeShell::makePopover() {
    log_.add("hosts.makePopover");
    auto made = std::make_unique<FakePopover>(log_);
    popover = made.get();
    return made;
}

} // namespace kestrel::tests
