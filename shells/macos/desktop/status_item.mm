#include "shells/macos/desktop/status_item.h"

#include "shells/macos/foundation/text.h"

#include <utility>

namespace kestrel::macos_shell {

namespace {

constexpr CGFloat symbolPointSize = 14;

void showSymbol(NSStatusBarButton* button, NSString* name, NSString* description) {
    NSImageSymbolConfiguration* const configuration =
        [NSImageSymbolConfiguration configurationWithPointSize:symbolPointSize
                                                        weight:NSFontWeightRegular];
    NSImage* const symbol = [NSImage imageWithSystemSymbolName:name
                                      accessibilityDescription:description];
    if (!symbol)
        return;
    NSImage* const sized = [symbol imageWithSymbolConfiguration:configuration];
    button.image = sized ? sized : symbol;
    [button.image setTemplate:YES];
}

} // namespace

AppKitStatusItem::AppKitStatusItem(std::string_view symbol, std::string_view description,
                                   id<KSTStatusBarButtonTarget> target,
                                   std::function<void()> onClick)
    : item_([NSStatusBar.systemStatusBar statusItemWithLength:NSSquareStatusItemLength]),
      onClick_(std::move(onClick)) {
    NSStatusBarButton* const button = item_.button;
    if (!button)
        return;
    showSymbol(button, toNSString(symbol), toNSString(description));
    button.target = target;
    button.action = @selector(statusBarButtonClicked:);
    [button sendActionOn:NSEventMaskLeftMouseUp];
}

AppKitStatusItem::~AppKitStatusItem() {
    item_.button.target = nil;
    [NSStatusBar.systemStatusBar removeStatusItem:item_];
}

void AppKitStatusItem::clicked(NSStatusBarButton* sender) {
    clickedButton_ = sender;
    onClick_();
    clickedButton_ = nil;
}

} // namespace kestrel::macos_shell
