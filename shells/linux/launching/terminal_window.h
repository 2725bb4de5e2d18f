#pragma once
// A new window of the user's terminal, running one of the two start scripts in terminal/.
//
// A command reaches the shell byte for byte, in any length and with every character but one: a NUL
// ends what a shell reads, or is left out of it, so that another command would run than the one
// that stands in the list. With a NUL in it nothing runs, in no shell.

#include "shells/linux/launching/activation.h"

#include <string>
#include <string_view>

namespace kestrel::linux_shell {

enum class StartScript {
    command, ///< the text is typed into the user's shell
    file,    ///< the text is the absolute path of an executable file, which is run
};

/// Opens the window in the home folder; afterwards the user's shell stays open in it. The
/// activation is the terminal's: the shell does not inherit it. Blocks on the disk, so it belongs
/// on the launch worker. Nothing happens when there is no terminal, and for a text with a NUL.
void openTerminalWindow(StartScript script, std::string_view text, const Activation& activation);

} // namespace kestrel::linux_shell
