#include "shells/linux/launching/terminal_choice.h"

#include <gtest/gtest.h>

#include <map>

namespace kestrel::linux_shell {
namespace {

/// Programs by name, each in /usr/bin, and where their links lead.
TerminalEnvironment environmentWith(std::vector<std::string> installed,
                                    std::map<std::string, std::string> links = {}) {
    TerminalEnvironment result;
    result.findProgram = [installed](const std::string& name) -> std::optional<std::string> {
        for (const std::string& program : installed) {
            if (name == program && program.starts_with('/'))
                return program;
            if (name == program)
                return "/usr/bin/" + program;
        }
        return std::nullopt;
    };
    result.resolve = [links](const std::string& path) {
        const auto found = links.find(path);
        return found == links.end() ? path : found->second;
    };
    return result;
}

struct Choice {
    const char* description;
    std::vector<std::string> installed;
    std::string terminal;
    std::string desktop;
    bool wayland;
    std::map<std::string, std::string> links;
    std::optional<TerminalCommand> expected;
};

TEST(TerminalChoiceTest, FollowsTheTable) {
    const std::vector<Choice> table = {
        {"nothing installed", {}, "xterm", "GNOME", true, {}, std::nullopt},
        {"xdg-terminal-exec before all others",
         {"xterm", "x-terminal-emulator", "xdg-terminal-exec"},
         "xterm",
         "GNOME",
         false,
         {},
         TerminalCommand{"/usr/bin/xdg-terminal-exec", ""}},
        {"$TERMINAL before the alternative",
         {"x-terminal-emulator", "kitty"},
         "kitty",
         "",
         false,
         {},
         TerminalCommand{"/usr/bin/kitty", "-e"}},
        {"$TERMINAL as a path",
         {"/opt/t/xfce4-terminal"},
         "/opt/t/xfce4-terminal",
         "",
         false,
         {},
         TerminalCommand{"/opt/t/xfce4-terminal", "-x"}},
        {"$TERMINAL as a relative path is passed over",
         {"./xterm", "konsole"},
         "./xterm",
         "",
         false,
         {},
         TerminalCommand{"/usr/bin/konsole", "-e"}},
        {"$TERMINAL that is not installed is passed over",
         {"x-terminal-emulator"},
         "kitty",
         "",
         false,
         {},
         TerminalCommand{"/usr/bin/x-terminal-emulator", "-e"}},
        {"the alternative is told what the terminal behind it takes",
         {"x-terminal-emulator"},
         "",
         "",
         false,
         {{"/usr/bin/x-terminal-emulator", "/usr/bin/terminator"}},
         TerminalCommand{"/usr/bin/x-terminal-emulator", "-x"}},
        {"a wrapper understands -e",
         {"x-terminal-emulator"},
         "",
         "",
         false,
         {{"/usr/bin/x-terminal-emulator", "/usr/bin/gnome-terminal.wrapper"}},
         TerminalCommand{"/usr/bin/x-terminal-emulator", "-e"}},
        {"the alternative before the desktop",
         {"x-terminal-emulator", "konsole"},
         "",
         "KDE",
         false,
         {},
         TerminalCommand{"/usr/bin/x-terminal-emulator", "-e"}},
        {"the desktop's own terminal",
         {"gnome-terminal", "konsole", "xterm"},
         "",
         "KDE",
         false,
         {},
         TerminalCommand{"/usr/bin/konsole", "-e"}},
        {"the second name of the desktop",
         {"konsole", "kgx"},
         "",
         "ubuntu:GNOME",
         false,
         {},
         TerminalCommand{"/usr/bin/kgx", "--"}},
        {"empty names of desktops",
         {"xterm", "lxterminal"},
         "",
         "::LXDE:",
         false,
         {},
         TerminalCommand{"/usr/bin/lxterminal", "-e"}},
        {"an unknown desktop",
         {"xterm", "mate-terminal"},
         "",
         "unknown",
         false,
         {},
         TerminalCommand{"/usr/bin/mate-terminal", "-x"}},
        {"a desktop whose terminal is missing",
         {"xterm"},
         "",
         "XFCE",
         false,
         {},
         TerminalCommand{"/usr/bin/xterm", "-e"}},
        {"foot without Wayland",
         {"foot", "xterm"},
         "",
         "sway",
         false,
         {},
         TerminalCommand{"/usr/bin/xterm", "-e"}},
        {"foot on Wayland",
         {"foot", "xterm"},
         "",
         "sway",
         true,
         {},
         TerminalCommand{"/usr/bin/foot", "-e"}},
    };
    for (const Choice& row : table) {
        SCOPED_TRACE(row.description);
        TerminalEnvironment environment = environmentWith(row.installed, row.links);
        environment.terminal = row.terminal;
        environment.currentDesktop = row.desktop;
        environment.wayland = row.wayland;
        const auto chosen = chooseTerminal(environment);
        ASSERT_EQ(chosen.has_value(), row.expected.has_value());
        if (chosen) {
            EXPECT_EQ(chosen->program, row.expected->program);
            EXPECT_EQ(chosen->flag, row.expected->flag);
        }
    }
}

TEST(TerminalChoiceTest, EveryCommonTerminalIsFoundWithItsFlag) {
    const std::map<std::string, std::string> flags = {
        {"gnome-terminal", "--"}, {"kgx", "--"},        {"ptyxis", "--"},  {"xfce4-terminal", "-x"},
        {"mate-terminal", "-x"},  {"terminator", "-x"}, {"konsole", "-e"}, {"qterminal", "-e"},
        {"lxterminal", "-e"},     {"tilix", "-e"},      {"kitty", "-e"},   {"alacritty", "-e"},
        {"foot", "-e"},           {"urxvt", "-e"},      {"xterm", "-e"},   {"st", "-e"}};
    for (const auto& [name, flag] : flags) {
        TerminalEnvironment environment = environmentWith({name});
        environment.wayland = true;
        const auto chosen = chooseTerminal(environment);
        ASSERT_TRUE(chosen) << name;
        EXPECT_EQ(chosen->prefix(), (std::vector<std::string>{"/usr/bin/" + name, flag}));
    }
}

TEST(TerminalChoiceTest, TheProgramFollowsXdgTerminalExecAtOnce) {
    const auto chosen = chooseTerminal(environmentWith({"xdg-terminal-exec"}));
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->prefix(), std::vector<std::string>{"/usr/bin/xdg-terminal-exec"});
}

TEST(TerminalChoiceTest, TheVisibleTerminalIsNeverXdgTerminalExec) {
    const auto chosen = chooseVisibleTerminal(environmentWith({"xdg-terminal-exec", "konsole"}));
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->program, "/usr/bin/konsole");
    EXPECT_FALSE(chooseVisibleTerminal(environmentWith({"xdg-terminal-exec"})));
}

TEST(TerminalChoiceTest, TheNameOfATerminalIsThatBehindLinksAndWrappers) {
    const auto environment =
        environmentWith({}, {{"/usr/bin/x-terminal-emulator", "/usr/bin/gnome-terminal.wrapper"}});
    EXPECT_EQ(terminalName(environment, "/usr/bin/x-terminal-emulator"), "gnome-terminal");
    EXPECT_EQ(terminalName(environment, "/usr/bin/xterm"), "xterm");
    EXPECT_EQ(terminalName(environment, "/usr/bin/lxterm"), "xterm");
    EXPECT_EQ(terminalName(environment, "/opt/kitty.app/bin/kitty"), "kitty");
}

} // namespace
} // namespace kestrel::linux_shell
