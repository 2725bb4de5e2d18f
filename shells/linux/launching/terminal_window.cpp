#include "shells/linux/launching/terminal_window.h"

#include "shells/linux/launching/child_process.h"
#include "shells/linux/launching/scratch_folder.h"
#include "shells/linux/launching/terminal_choice.h"
#include "shells/linux/posix/environment.h"
#include "terminal_scripts.h"

#include <array>

namespace kestrel::linux_shell {

void openTerminalWindow(StartScript script, std::string_view text, const Activation& activation) {
    if (text.find('\0') != std::string_view::npos)
        return;
    const auto terminal = chooseTerminal(processEnvironment());
    if (!terminal)
        return;
    const bool typed = script == StartScript::command;
    const std::string shell = userShell();
    const std::array<ScratchFile, 6> files = {{
        {.name = "run",
         .bytes = typed ? terminal_scripts::run : terminal_scripts::runFile,
         .executable = true},
        {.name = "shell", .bytes = shell},
        {.name = "cmd", .bytes = text},
        {.name = "bashrc", .bytes = terminal_scripts::bashrc},
        {.name = ".zshenv", .bytes = terminal_scripts::zshenv},
        {.name = "init.fish", .bytes = terminal_scripts::initFish},
    }};
    const auto folder = makeScratchFolder(scratchBases(), files);
    if (!folder)
        return;
    std::vector<std::string> arguments = terminal->prefix();
    arguments.push_back(*folder + "/run");
    if (!spawnDetached(arguments, activation))
        removeScratchFolder(*folder);
}

} // namespace kestrel::linux_shell
