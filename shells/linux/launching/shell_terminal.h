#pragma once
// The Terminal port over whatever terminal the user has.

#include "platform/terminal.h"
#include "shells/linux/launching/activation.h"
#include "shells/linux/launching/launch_worker.h"
#include "shells/linux/launching/terminal_application.h"

#include <functional>

namespace kestrel::linux_shell {

/// The worker must outlive it.
class ShellTerminal final : public Terminal {
  public:
    /// `applicationChanged` is called on another thread when `applicationPath` has become another
    /// one. Also has the worker remove what windows that never opened have left behind.
    explicit ShellTerminal(LaunchWorker& worker, ActivationSource activation = noActivation,
                           std::function<void()> applicationChanged = {});

    void runInNewWindow(std::string_view command) override;

    /// The terminal's desktop entry; its program when no entry starts it.
    std::optional<std::string> applicationPath() override { return application_.path(); }

  private:
    LaunchWorker& worker_;
    ActivationSource activation_;
    TerminalApplication application_;
};

} // namespace kestrel::linux_shell
