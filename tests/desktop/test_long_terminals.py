"""A command typed into each terminal, for each shell that the user may have."""
import os
import shlex
import shutil
import signal

from harness.launching import LaunchingTest, state
from harness.processes import wait_for

TERMINALS = ("xterm", "xfce4-terminal", "gnome-terminal", "konsole", "kitty")
KIBIBYTE = 1024


def odd_text(size):
    """Every ASCII character that a keyboard has, some beyond it, and lines up to that size."""
    characters = "".join(map(chr, range(0x20, 0x7F)))
    parts = [characters, "\t!! !x ^a^b $HOME ${x} $(id) `id` \\n \\\\ %s %% ~ *\n\n",
             "'\" ''\"\" \\' \\\" é€😀 e\u0301\u202e\n"]
    while sum(len(part.encode()) for part in parts) < size:
        parts.append(f"{characters[len(parts) % 90:]} line {len(parts)}\n")
    return "".join(parts) + " end "


def quoted(text, shell):
    """The text as one word of the shell's language."""
    if shell == "fish":
        return "'" + text.replace("\\", "\\\\").replace("'", "\\'") + "'"
    return shlex.quote(text)


class TerminalsTest(LaunchingTest):
    """The text arrives as it is, in the user's own shell, which then stays."""

    limit = 240

    def write_start_files(self):
        common = "alias greet='echo hello'\n"
        for name in (".bashrc", ".zshrc", ".shrc"):
            self.desktop.write(f"home/{name}", common + "PS1='ready> '\n")
        self.desktop.write("config/fish/config.fish", common + "set -g fish_greeting\n")

    def shell(self, name):
        """A link to the shell at a place that is no login shell's, as some install their own."""
        path = self.desktop.path("home", "shells", name)
        if not os.path.lexists(path):
            os.makedirs(os.path.dirname(path), exist_ok=True)
            os.symlink(shutil.which(name), path)
        return path

    def command(self, text, shell):
        assignment = "set x 5" if shell == "fish" else "x=5"
        return (f"printf %s {quoted(text, shell)} > ~/text\n"
                f"greet > ~/greeting; {assignment}\n\n"
                f"{self.recording()}\ncd /usr\n{self.recording()} --stay")

    def content(self, name):
        """The bytes of a file in the home folder; None when it is not there."""
        try:
            with open(self.desktop.path("home", name), "rb") as file:
                return file.read()
        except FileNotFoundError:
            return None

    def wait_for_content(self, name, expected):
        try:
            wait_for(lambda: self.content(name) == expected, 20)
        except AssertionError:
            raise AssertionError(f"{name} holds {self.content(name)!r:.2000}") from None

    def end_program(self, with_a_crash):
        self.wait_for_no_children()
        if with_a_crash:
            os.kill(self.kestrel.process.pid, signal.SIGKILL)
            self.kestrel.process.wait()
        else:
            self.assertEqual(self.kestrel.quit(), 0)

    def type_into(self, terminal, shell, size, with_a_crash):
        """Launches the command; the program ends; the shell in the window takes further ones."""
        for name in ("text", "greeting", "typed"):
            if self.content(name) is not None:
                os.remove(self.desktop.path("home", name))
        self.forget_records()
        text = odd_text(size)
        known = self.clients()
        self.start_with([("Inline Command", "Command", self.command(text, shell))],
                        {"TERMINAL": terminal, "SHELL": self.shell(shell),
                         "ENV": self.desktop.path("home", ".shrc")})
        self.launch("Command")
        window = self.wait_for_client(known)
        self.assertIn(terminal.removesuffix("-terminal"), self.window_class(window))
        first, staying = self.wait_for_records(2)
        self.assertEqual(first["shell"], shell)
        self.assertEqual(first["folder"], self.desktop.path("home"))
        self.assertRegex(first["descriptors"]["0"], "^/dev/pts/")
        self.assertFalse([name for name in first["environment"] if "KESTREL_L" in name])
        self.assertNotIn("ZDOTDIR", first["environment"])
        self.assertEqual(self.content("text"), text.encode())
        self.assertEqual(self.content("greeting"), b"hello\n")
        self.wait_for_no_scratch()
        self.end_program(with_a_crash)

        self.assertEqual(state(staying["pid"]), "S")
        self.desktop.key("ctrl+c")
        self.wait_until(lambda: state(staying["pid"]) is None, "Ctrl-C to end the command")
        self.desktop.type("greet $x $PWD > ~/typed\n")
        self.wait_for_content("typed", b"hello 5 /usr\n")
        # A dash whose command was stopped stays, and after it comes the one that was to stay.
        self.desktop.type("exit\n" * (2 if shell == "dash" else 1))
        self.wait_until(lambda: window not in self.clients(), "the window to close")

    def type_into_all(self, shell):
        self.start_desktop()
        self.write_start_files()
        for i, terminal in enumerate(TERMINALS):
            self.type_into(terminal, shell, 160 * KIBIBYTE if i % 2 == 0 else KIBIBYTE,
                           with_a_crash=i % 2 == 1)

    def test_terminal_that_runs_already_opens_a_window_with_the_shell_of_the_program(self):
        self.start_desktop()
        for terminal in ("xfce4-terminal", "gnome-terminal"):
            first = self.clients()
            self.desktop.start([terminal], {"SHELL": "/bin/sh"})
            self.wait_for_client(first)
            known = self.clients()
            self.forget_records()
            self.start_with([("Inline Command", "Command", self.recording())],
                            {"TERMINAL": terminal, "SHELL": self.shell("zsh")})
            self.launch("Command")
            self.wait_for_client(known)
            record = self.wait_for_records(1)[0]
            self.assertEqual(record["shell"], "zsh")
            self.assertEqual(record["environment"]["SHELL"], self.shell("zsh"))
            self.end_program(with_a_crash=False)

    def test_terminal_is_the_one_that_the_session_means(self):
        """The named one, the system's, then the desktop's own, among many that are installed."""
        self.start_desktop()
        self.write_start_files()
        plain, alternative = self.programs("plain"), self.programs("alternative")
        os.symlink(shutil.which("konsole"), os.path.join(alternative, "x-terminal-emulator"))
        wrapped, launcher = self.programs("wrapped"), self.programs("launcher")
        os.symlink("/usr/bin/xfce4-terminal.wrapper",
                   os.path.join(wrapped, "x-terminal-emulator"))
        self.desktop.write("launcher/xdg-terminal-exec",
                           '#!/bin/sh\nexec kitty -e "$@"\n', 0o755)
        for expected, folder, variables in (
                ("konsole", plain, {"TERMINAL": "konsole"}),
                ("kitty", alternative, {"TERMINAL": shutil.which("kitty")}),
                ("konsole", alternative, {"XDG_CURRENT_DESKTOP": "XFCE"}),
                ("konsole", alternative, {"TERMINAL": "not-installed"}),
                ("xfce4-terminal", wrapped, {}),
                ("kitty", launcher, {"TERMINAL": "xterm", "XDG_CURRENT_DESKTOP": "KDE"}),
                ("xfce4-terminal", plain, {"XDG_CURRENT_DESKTOP": "XFCE"}),
                ("konsole", plain, {"XDG_CURRENT_DESKTOP": "Unknown:KDE:GNOME"}),
                ("gnome-terminal", plain, {"XDG_CURRENT_DESKTOP": "ubuntu:GNOME"}),
                ("kitty", plain, {"XDG_CURRENT_DESKTOP": "sway"}),
                ("gnome-terminal", plain, {})):
            self.open_one(expected, {"TERMINAL": None, "PATH": folder, **variables})

    def programs(self, name):
        """A folder with all programs of the machine but those that choose a terminal."""
        folder = self.desktop.path(name)
        os.mkdir(folder)
        for program in os.listdir("/usr/bin"):
            if program not in ("x-terminal-emulator", "xdg-terminal-exec"):
                os.symlink(f"/usr/bin/{program}", os.path.join(folder, program))
        return folder

    def open_one(self, terminal, environment):
        known = self.clients()
        self.forget_records()
        self.start_with([("Inline Command", "Command", self.recording())], environment)
        self.launch("Command")
        window = self.wait_for_client(known)
        self.assertIn(terminal.removesuffix("-terminal"), self.window_class(window), environment)
        self.wait_for_records(1)
        self.desktop.type("exit\n")
        self.wait_until(lambda: window not in self.clients(), "the window to close")
        self.end_program(with_a_crash=False)

    def test_terminals_take_a_command_for_bash(self):
        self.type_into_all("bash")

    def test_terminals_take_a_command_for_zsh(self):
        self.type_into_all("zsh")

    def test_terminals_take_a_command_for_fish(self):
        self.type_into_all("fish")

    def test_terminals_take_a_command_for_dash(self):
        self.type_into_all("dash")
