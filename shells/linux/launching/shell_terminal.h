#pragma once
// The Terminal port over whatever terminal the user has.

#include "platform/terminal.h"
#include "shells/linux/launching/activation.h"
#include "shells/linux/launching/launch_worker.h"

#include <map>

namespace kestrel::linux_shell {

/// The worker must outlive it.
class ShellTerminal final : public Terminal {
  public:
    /// Also has the worker remove what windows that never opened have left behind.
    explicit ShellTerminal(LaunchWorker& worker, ActivationSource activation = noActivation);

    void runInNewWindow(std::string_view command) override;

    /// The terminal's desktop entry; its program when no entry starts it.
    std::optional<std::string> applicationPath() override;

  private:
    LaunchWorker& worker_;
    ActivationSource activation_;
    std::map<std::string, std::string> entryOfTerminal_; ///< by the terminal's name
};

} // namespace kestrel::linux_shell
