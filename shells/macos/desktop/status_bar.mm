#include "shells/macos/desktop/status_bar.h"

#include "shells/macos/desktop/images.h"

#include <algorithm>
#include <utility>

namespace kestrel::macos_shell {

namespace {

static_assert(static_cast<NSUInteger>(EventMask::leftMouseUp) == NSEventMaskLeftMouseUp);

class AppKitStatusItem final : public StatusItem {
  public:
    AppKitStatusItem(AppKitStatusBar& bar, NSStatusItem* item) : item_(item) {
        if (NSStatusBarButton* const button = item.button)
            button_ = std::make_unique<AppKitStatusBarButton>(bar, button);
    }
    AppKitStatusItem(const AppKitStatusItem&) = delete;
    AppKitStatusItem& operator=(const AppKitStatusItem&) = delete;
    ~AppKitStatusItem() override {
        button_.reset();
        [NSStatusBar.systemStatusBar removeStatusItem:item_];
    }

    StatusBarButton* button() override { return button_.get(); }

  private:
    NSStatusItem* item_; // the status bar does not keep it
    std::unique_ptr<AppKitStatusBarButton> button_;
};

} // namespace

AppKitStatusBarButton::AppKitStatusBarButton(AppKitStatusBar& bar, NSStatusBarButton* button)
    : bar_(bar), button_(button) {
    bar_.buttons_.push_back(this);
}

AppKitStatusBarButton::~AppKitStatusBarButton() {
    std::erase(bar_.buttons_, this);
    button_.target = nil;
}

void AppKitStatusBarButton::setImage(std::shared_ptr<Image> image) {
    button_.image = static_cast<const AppKitImage&>(*image).image();
}

void AppKitStatusBarButton::setImageIsTemplate(bool isTemplate) {
    [button_.image setTemplate:isTemplate];
}

void AppKitStatusBarButton::setAction(std::function<void(StatusBarButton&)> action) {
    action_ = std::move(action);
    button_.target = bar_.target_;
    button_.action = @selector(statusBarButtonClicked:);
}

void AppKitStatusBarButton::sendActionOn(EventMask mask) {
    [button_ sendActionOn:static_cast<NSEventMask>(mask)];
}

void AppKitStatusBarButton::sendAction() {
    const auto action = action_; // the action may end this button
    if (action)
        action(*this);
}

std::unique_ptr<StatusItem> AppKitStatusBar::statusItemWithLength(double length) {
    return std::make_unique<AppKitStatusItem>(
        *this, [NSStatusBar.systemStatusBar statusItemWithLength:length]);
}

void AppKitStatusBar::buttonClicked(NSStatusBarButton* button) {
    const auto found = std::ranges::find_if(
        buttons_, [button](const AppKitStatusBarButton* one) { return one->button() == button; });
    if (found == buttons_.end())
        return;
    struct Clicked { // reset also when the action throws
        explicit Clicked(AppKitStatusBar& bar, NSStatusBarButton* clicked) : bar(bar) {
            bar.clickedButton_ = clicked;
        }
        Clicked(const Clicked&) = delete;
        Clicked& operator=(const Clicked&) = delete;
        ~Clicked() { bar.clickedButton_ = nil; }
        AppKitStatusBar& bar;
    } const clicked(*this, button);
    (*found)->sendAction();
}

} // namespace kestrel::macos_shell
