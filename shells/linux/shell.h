#pragma once
// The program on Linux: every adapter and the core on top of them. `main` keeps one next to the
// application object, which outlives it.

#include "app/app_delegate.h"
#include "shells/linux/desktop/activation_tokens.h"
#include "shells/linux/desktop/appearance/appearance.h"
#include "shells/linux/desktop/application.h"
#include "shells/linux/desktop/language.h"
#include "shells/linux/desktop/main_queue.h"
#include "shells/linux/desktop/startup.h"
#include "shells/linux/launching/file_icons.h"
#include "shells/linux/launching/gio_workspace.h"
#include "shells/linux/launching/launch_worker.h"
#include "shells/linux/launching/shell_terminal.h"
#include "shells/linux/linux_desktop.h"
#include "shells/linux/linux_open_panel.h"
#include "shells/linux/storage/file_user_defaults.h"
#include "shells/linux/storage/folder_cloud.h"
#include "shells/linux/storage/system_clock.h"

#include <QApplication>

#include <optional>
#include <string>

namespace kestrel::linux_shell {

/// Main thread only.
class Shell {
  public:
    explicit Shell(QApplication& application);
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;
    ~Shell() = default;

    /// Starts the program and runs the event loop until the user quits. The exit status.
    int run(const Startup& startup);

    /// The user has started the program once more: the popover opens.
    void reopen(const Startup& startup);

    /// The user has started this program by hand: the popover opens as soon as it is certain that
    /// no panel shows the icon.
    void startedByHand(const Startup& startup);

  private:
    void applicationDidFinishLaunching();
    void showPopover(const QString& activationToken);
    void showOnce(const QString& activationToken);
    void lateIconsArrived();

    std::optional<Language> language_;
    QtMainQueue mainQueue_;
    SystemClock clock_;
    std::string dataDirectory_;
    FileUserDefaults userDefaults_;
    FolderCloud cloud_;
    ActivationTokens activationTokens_;
    LaunchWorker launchWorker_;
    GioWorkspace workspace_;
    ShellTerminal terminal_;
    FileIcons fileIcons_;
    FileIconSource iconSource_;
    QtApplication application_;
    Appearance appearance_;
    LinuxOpenPanel openPanel_;
    LinuxDesktop desktop_;
    AppDelegate delegate_;
    bool hasShownItself_ = false; ///< the popover, for want of a panel
};

} // namespace kestrel::linux_shell
