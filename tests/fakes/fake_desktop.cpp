#include "tests/fakes/fake_desktop.h"

#include <array>
#include <cstdio>

namespace kestrel::tests {
namespace {

std::string describe(Size size) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%gx%g", size.width, size.height);
    return text.data();
}

} // namespace

void FakePopover::show(Size size) {
    log_.add("popover.show " + describe(size));
    isShown_ = true;
}

void FakePopover::setContentSize(Size size) {
    log_.add("popover.setContentSize " + describe(size));
}

void FakePopover::close() {
    log_.add("popover.close");
    isShown_ = false;
}

std::unique_ptr<StatusItem> FakeDesktop::makeStatusItem(std::string_view symbol,
                                                        std::string_view description,
                                                        std::function<void()> onClick) {
    log_.add("desktop.makeStatusItem " + std::string(symbol) + " '" + std::string(description) +
             "'");
    click = std::move(onClick);
    return std::make_unique<StatusItem>();
}

std::unique_ptr<Popover> FakeDesktop::makePopover(std::unique_ptr<MenuPopoverView> view) {
    log_.add("desktop.makePopover");
    auto made = std::make_unique<FakePopover>(log_, std::move(view));
    popover = made.get();
    return made;
}

std::unique_ptr<Window> FakeDesktop::makeSettingsWindow(std::unique_ptr<SettingsView> view,
                                                        Size contentSize,
                                                        std::function<void()> onClosed) {
    log_.add("desktop.makeSettingsWindow " + describe(contentSize));
    auto made = std::make_unique<FakeWindow>(log_, std::move(view));
    window = made.get();
    closeWindow = std::move(onClosed);
    return made;
}

} // namespace kestrel::tests
