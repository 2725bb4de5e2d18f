#include "shells/linux/launching/terminal_choice.h"

#include "shells/linux/glib/glib_ptr.h"
#include "shells/linux/posix/environment.h"

#include <algorithm>
#include <array>
#include <span>

namespace kestrel::linux_shell {

namespace {

/// In the order in which they are tried when nothing says what the user prefers.
constexpr std::array<std::string_view, 16> commonTerminals = {
    "gnome-terminal", "ptyxis", "kgx",        "konsole", "xfce4-terminal", "mate-terminal",
    "qterminal",      "tilix",  "lxterminal", "kitty",   "terminator",     "alacritty",
    "foot",           "urxvt",  "xterm",      "st"};

struct DesktopTerminals {
    std::string_view desktop;
    std::array<std::string_view, 3> terminals;
};

constexpr std::array<DesktopTerminals, 10> desktopTerminals = {{
    {"GNOME", {"gnome-terminal", "ptyxis", "kgx"}},
    {"X-Cinnamon", {"gnome-terminal", "", ""}},
    {"Unity", {"gnome-terminal", "", ""}},
    {"KDE", {"konsole", "", ""}},
    {"XFCE", {"xfce4-terminal", "", ""}},
    {"MATE", {"mate-terminal", "", ""}},
    {"LXQt", {"qterminal", "", ""}},
    {"LXDE", {"lxterminal", "", ""}},
    {"sway", {"foot", "kitty", "alacritty"}},
    {"Hyprland", {"kitty", "foot", "alacritty"}},
}};

std::string_view baseName(std::string_view path) { return path.substr(path.rfind('/') + 1); }

/// The option after which a terminal takes a program and its arguments as separate words.
std::string_view flagOf(std::string_view name) {
    if (name == "gnome-terminal" || name == "kgx" || name == "ptyxis")
        return "--";
    if (name == "xfce4-terminal" || name == "mate-terminal" || name == "terminator")
        return "-x";
    return "-e";
}

/// The name of the program. x-terminal-emulator may be any of them: the name of what it leads to.
std::string realName(const TerminalEnvironment& environment, const std::string& program) {
    const bool alternative = baseName(program) == "x-terminal-emulator";
    const std::string path = alternative ? environment.resolve(program) : program;
    return std::string(baseName(path));
}

std::optional<TerminalCommand> find(const TerminalEnvironment& environment, std::string_view name) {
    // foot draws on Wayland only.
    if (name.empty() || (name == "foot" && !environment.wayland))
        return std::nullopt;
    const auto program = environment.findProgram(std::string(name));
    if (!program)
        return std::nullopt;
    // A ".wrapper" exists to understand -e, whatever the terminal behind it takes.
    const std::string known = realName(environment, *program);
    return TerminalCommand{.program = *program, .flag = std::string(flagOf(known))};
}

std::optional<TerminalCommand> findFirst(const TerminalEnvironment& environment,
                                         std::span<const std::string_view> names) {
    for (const std::string_view name : names)
        if (auto found = find(environment, name))
            return found;
    return std::nullopt;
}

std::optional<TerminalCommand> findForDesktop(const TerminalEnvironment& environment) {
    std::string_view rest = environment.currentDesktop;
    while (!rest.empty()) {
        const std::size_t colon = std::min(rest.find(':'), rest.size());
        const std::string_view desktop = rest.substr(0, colon);
        rest.remove_prefix(std::min(colon + 1, rest.size()));
        const auto known = std::ranges::find(desktopTerminals, desktop, &DesktopTerminals::desktop);
        if (known == desktopTerminals.end())
            continue;
        if (auto found = findFirst(environment, known->terminals))
            return found;
    }
    return std::nullopt;
}

} // namespace

std::vector<std::string> TerminalCommand::prefix() const {
    if (flag.empty())
        return {program};
    return {program, flag};
}

std::optional<TerminalCommand> chooseTerminal(const TerminalEnvironment& environment) {
    if (auto program = environment.findProgram("xdg-terminal-exec"))
        return TerminalCommand{.program = *program, .flag = ""};
    return chooseVisibleTerminal(environment);
}

std::optional<TerminalCommand> chooseVisibleTerminal(const TerminalEnvironment& environment) {
    // A relative path would be looked up in our working folder, which the user cannot know.
    const std::string_view preferred = environment.terminal;
    if (preferred.find('/') == std::string_view::npos || preferred.starts_with('/'))
        if (auto found = find(environment, preferred))
            return found;
    if (auto found = find(environment, "x-terminal-emulator"))
        return found;
    if (auto found = findForDesktop(environment))
        return found;
    return findFirst(environment, commonTerminals);
}

TerminalEnvironment processEnvironment() {
    return {
        .findProgram = [](const std::string& name) -> std::optional<std::string> {
            const GlibText found(g_find_program_in_path(name.c_str()));
            // An entry of PATH may be relative; what it finds depends on where we happen to be.
            if (!found || found.get()[0] != '/')
                return std::nullopt;
            return std::string(found.get());
        },
        .resolve =
            [](const std::string& path) {
                const GlibText resolved(::realpath(path.c_str(), nullptr));
                return resolved ? std::string(resolved.get()) : path;
            },
        .terminal = environmentVariable("TERMINAL"),
        .currentDesktop = environmentVariable("XDG_CURRENT_DESKTOP"),
        .wayland = !environmentVariable("WAYLAND_DISPLAY").empty(),
    };
}

std::string terminalName(const TerminalEnvironment& environment, const std::string& program) {
    constexpr std::string_view wrapper = ".wrapper";
    std::string name = realName(environment, program);
    if (name.ends_with(wrapper))
        name.resize(name.size() - wrapper.size());
    // Debian's script around xterm, which no entry starts.
    return name == "lxterm" ? "xterm" : name;
}

} // namespace kestrel::linux_shell
