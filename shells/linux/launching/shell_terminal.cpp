#include "shells/linux/launching/shell_terminal.h"

#include "shells/linux/launching/scratch_folder.h"
#include "shells/linux/launching/terminal_window.h"

#include <chrono>
#include <utility>

namespace kestrel::linux_shell {

namespace {

constexpr auto leftoverAge = std::chrono::hours(1);

} // namespace

ShellTerminal::ShellTerminal(LaunchWorker& worker, ActivationSource activation,
                             std::function<void()> applicationChanged)
    : worker_(worker),
      activation_(std::move(activation)),
      application_(std::move(applicationChanged)) {
    worker_.async([] { sweepScratchFolders(scratchBases(), leftoverAge); });
}

void ShellTerminal::runInNewWindow(std::string_view command) {
    worker_.async([text = std::string(command), activation = activation_()] {
        openTerminalWindow(StartScript::command, text, activation);
    });
}

} // namespace kestrel::linux_shell
