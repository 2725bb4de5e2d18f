#pragma once
// Which terminal the user means, and how it is told to run a program. A pure function over what it
// may ask of the system, so that a table can test it.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::linux_shell {

/// A terminal and the option after which it expects the program to run.
struct TerminalCommand {
    std::string program; ///< absolute path
    std::string flag;    ///< empty: the program follows at once

    /// The words that go before the program to run.
    std::vector<std::string> prefix() const;

    friend bool operator==(const TerminalCommand&, const TerminalCommand&) = default;
};

/// What the choice may ask.
struct TerminalEnvironment {
    /// The absolute path of the program of that name (or at that absolute path); nothing when it
    /// is not installed or not executable.
    std::function<std::optional<std::string>(const std::string& name)> findProgram;
    /// `path` with every symbolic link followed; `path` itself when that fails.
    std::function<std::string(const std::string& path)> resolve;
    std::string terminal;       ///< $TERMINAL: a name or an absolute path
    std::string currentDesktop; ///< $XDG_CURRENT_DESKTOP: names separated by colons
    bool wayland = false;       ///< the session has a Wayland display
};

/// xdg-terminal-exec, then $TERMINAL, then x-terminal-emulator, then the terminals of the current
/// desktop, then the common ones; nothing when none is installed.
std::optional<TerminalCommand> chooseTerminal(const TerminalEnvironment& environment);

/// The same without xdg-terminal-exec, which starts a terminal but is none: for its icon.
std::optional<TerminalCommand> chooseVisibleTerminal(const TerminalEnvironment& environment);

/// That of this process, read now.
TerminalEnvironment processEnvironment();

/// The name by which a desktop entry would call the program at that path: its last component, for
/// x-terminal-emulator that of what it leads to, without the wrappers of Debian's alternatives.
std::string terminalName(const TerminalEnvironment& environment, const std::string& program);

} // namespace kestrel::linux_shell
