#include "shells/macos/desktop/application.h"

#import <AppKit/AppKit.h>

namespace kestrel::macos_shell {

namespace {

static_assert(static_cast<long>(ActivationPolicy::regular) == NSApplicationActivationPolicyRegular);
static_assert(static_cast<long>(ActivationPolicy::accessory) ==
              NSApplicationActivationPolicyAccessory);

} // namespace

void AppKitApplication::setActivationPolicy(ActivationPolicy policy) {
    NSApplication* const application = NSApplication.sharedApplication;
    const bool becomesAgent = policy == ActivationPolicy::accessory &&
                              application.activationPolicy == NSApplicationActivationPolicyRegular;
    [application setActivationPolicy:static_cast<NSApplicationActivationPolicy>(policy)];
    if (becomesAgent && application.active)
        [application deactivate]; // an agent without a window would keep the user's keys
}

void AppKitApplication::activate() {
    [NSApplication.sharedApplication activateIgnoringOtherApps:YES];
}

void AppKitApplication::terminate() { [NSApplication.sharedApplication terminate:nil]; }

} // namespace kestrel::macos_shell
