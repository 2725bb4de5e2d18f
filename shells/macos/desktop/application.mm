#include "shells/macos/desktop/application.h"

#import <AppKit/AppKit.h>

namespace kestrel::macos_shell {

namespace {

static_assert(static_cast<long>(ActivationPolicy::regular) == NSApplicationActivationPolicyRegular);
static_assert(static_cast<long>(ActivationPolicy::accessory) ==
              NSApplicationActivationPolicyAccessory);

} // namespace

void AppKitApplication::setActivationPolicy(ActivationPolicy policy) {
    [NSApplication.sharedApplication
        setActivationPolicy:static_cast<NSApplicationActivationPolicy>(policy)];
}

void AppKitApplication::activate() {
    [NSApplication.sharedApplication activateIgnoringOtherApps:YES];
}

void AppKitApplication::terminate() { [NSApplication.sharedApplication terminate:nil]; }

} // namespace kestrel::macos_shell
