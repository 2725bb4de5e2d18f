#pragma once
// All the adapters of this shell together, as the core's AppDelegate needs them.

#include "app/app_delegate.h"
#include "shells/macos/appkit_desktop.h"
#include "shells/macos/desktop/application.h"
#include "shells/macos/desktop/main_queue.h"
#include "shells/macos/desktop/open_panel.h"
#include "shells/macos/launching/terminal.h"
#include "shells/macos/launching/workspace.h"
#include "shells/macos/storage/cloud.h"
#include "shells/macos/storage/system_clock.h"
#include "shells/macos/storage/user_defaults.h"

namespace kestrel::macos_shell {

/// Outlives the core's AppDelegate, which refers to the members: it stays where it was made.
struct Ports {
    explicit Ports(id<KSTStatusBarButtonTarget, NSWindowDelegate> delegate) : desktop(delegate) {}
    Ports(const Ports&) = delete;
    Ports& operator=(const Ports&) = delete;
    ~Ports() = default;

    AppPorts all() {
        return {{mainQueue, userDefaults, cloud, clock, workspace, terminal},
                application,
                openPanel,
                desktop};
    }

    DispatchMainQueue mainQueue;
    StandardUserDefaults userDefaults;
    ICloud cloud;
    SystemClock clock;
    AppKitWorkspace workspace;
    AppleScriptTerminal terminal;
    AppKitApplication application;
    AppKitOpenPanel openPanel;
    AppKitDesktop desktop;
};

} // namespace kestrel::macos_shell
