"""Where a launch keeps its scratch files, and that no text of an item is ever read by a shell that
did not get it as the user's command."""
import os

from harness.case import DesktopTest
from harness.program import item, store_before_start

# Each would make the file "canary" in the home folder if something took it for shell text.
HOSTILE = ("$(touch canary)", "`touch canary`", "; touch canary #", "' ; touch canary ; '",
           "\" ; touch canary ; \"", "&& touch canary", "| touch canary", "\ntouch canary\n",
           "-e touch canary", "--help", "%f %k %c %%", "${IFS}touch${IFS}canary", "a\\ b\\n",
           "~/canary", "*", "!!", "name=value")

# Runs what it is told to, as a terminal does, and first tells what that is. Without input the
# shell that stays ends at once.
TERMINAL = """#!/bin/sh
folder=${2%/*}
{
    printf '%s\\n' "$#" "$2"
    stat -c '%a %U %n' "$folder" "$folder"/* "$folder"/.zshenv
} 2>&1 >>"$HOME/terminal.log.new"
mv "$HOME/terminal.log.new" "$HOME/terminal.log"
shift
exec "$@" </dev/null
"""


def identity(number):
    return f"00000000-0000-4000-8000-{number:012X}"


class LaunchesTest(DesktopTest):
    """Items are launched with the keyboard; what runs leaves a mark."""

    def start(self, items, environment=None, umask=None):
        terminal = self.desktop.write("home/terminal", TERMINAL, 0o755)
        store_before_start(self.desktop, items)
        command = None
        if umask is not None:
            command = ["/bin/sh", "-c", f"umask {umask:03o}; exec \"$0\"",
                       os.environ["KESTREL_PROGRAM"]]
        return self.start_kestrel({"TERMINAL": terminal, "SHELL": "/bin/sh",
                                   **(environment or {})}, command=command)

    def launch(self, row):
        self.kestrel.open_popover()
        self.desktop.key("Home", *["Down"] * row, "Return")
        self.kestrel.wait_for_no_popover()

    def home(self, *parts):
        return self.desktop.path("home", *parts)

    def lines(self, name):
        """What a file in the home folder says, once it is there."""
        path = self.home(name)
        self.wait_until(lambda: os.path.exists(path), name)
        with open(path, encoding="utf-8") as file:
            return file.read().split("\n")[:-1]

    def assert_no_canary(self):
        for folder, _, names in os.walk(self.desktop.folder):
            self.assertNotIn("canary", names, folder)

    # Scratch files.

    def scratch_of_a_launch(self, environment, umask=None):
        """The folder that an inline command was handed over in."""
        if os.path.exists(self.home("terminal.log")):
            os.unlink(self.home("terminal.log"))
        self.start([item("Inline Command", "Any", "true", identity(1))], environment, umask)
        self.launch(0)
        log = self.lines("terminal.log")
        self.assertEqual(self.kestrel.quit(), 0)
        self.assertEqual(log[0], "2")
        folder, name = os.path.split(log[1])
        self.assertEqual(name, "run")
        user = log[2].split()[1]
        self.assertEqual(sorted(log[2:]), sorted(
            [f"700 {user} {folder}", f"700 {user} {folder}/run"]
            + [f"600 {user} {folder}/{name}" for name in ("shell", "cmd", "bashrc",
                                                         ".zshenv", "init.fish")]))
        self.wait_until(lambda: not os.path.exists(folder), "the scratch folder to go")
        return os.path.dirname(folder)

    def folder(self, name, mode, owner=None):
        path = self.home(name)
        os.mkdir(path)
        os.chmod(path, mode)
        if owner is not None:
            os.chown(path, owner, owner)
        return path

    def test_scratch_files_are_private_whatever_the_umask(self):
        self.start_desktop(panel="fake")
        for umask in (0o000, 0o022, 0o777):
            self.assertEqual(self.scratch_of_a_launch({}, umask), self.desktop.path("run"))

    def test_scratch_folder_is_made_only_where_nobody_else_can_take_it_away(self):
        self.start_desktop(panel="fake")
        good, sticky = self.folder("good", 0o700), self.folder("sticky", 0o1777)
        file = self.desktop.write("home/file", "")
        link = self.home("link")
        os.symlink(good, link)
        bad = [self.folder("open", 0o777), self.folder("group", 0o770), file, "relative", "",
               self.folder("a b", 0o700), self.folder("$(touch canary)", 0o700)]
        if os.geteuid() == 0:
            bad += [self.folder("others", 0o755, 65534), self.folder("bait", 0o1777, 65534)]
        for number, runtime in enumerate(bad):
            with self.subTest(runtime):
                other = sticky if number % 2 else good
                self.assertEqual(self.scratch_of_a_launch(
                    {"XDG_RUNTIME_DIR": runtime, "TMPDIR": other}), other)
        self.assertEqual(self.scratch_of_a_launch({"XDG_RUNTIME_DIR": bad[0], "TMPDIR": bad[1]}),
                         "/tmp")
        self.assertEqual(self.scratch_of_a_launch({"XDG_RUNTIME_DIR": link}), link)
        left = [name for folder in bad if os.path.isdir(folder) for name in os.listdir(folder)]
        self.assertEqual([name for name in left if name.startswith("kestrel")], [])
        self.assert_no_canary()

    # Texts.

    def marking_script(self, name):
        """An executable of that name which tells its own path and its arguments."""
        mark = self.home(f"mark-{len(self.marks)}")
        path = self.desktop.write(
            f"home/odd/{name}", f"#!/bin/sh\nprintf '%s\\n' \"$0\" \"$@\" >'{mark}.new'\n"
            f"mv '{mark}.new' '{mark}'\n", 0o755)
        self.marks.append((path, os.path.basename(mark)))
        return path

    def launch_all(self, items):
        self.start(items)
        for row in range(len(items)):
            self.launch(row)

    def assert_marks(self, arguments=()):
        for path, mark in self.marks:
            self.assertEqual("\n".join(self.lines(mark)), "\n".join([path, *arguments]))
        self.assert_no_canary()
        self.assertTrue(self.kestrel.process.is_running)

    def test_paths_of_command_files_are_no_shell_text(self):
        self.start_desktop(panel="fake")
        self.marks = []
        names = [name.replace("/", "_") for name in HOSTILE]
        self.launch_all([item("Command File", text, self.marking_script(name), identity(i))
                         for i, (text, name) in enumerate(zip(HOSTILE, names), 1)])
        self.assert_marks()

    def test_paths_and_titles_of_entries_in_a_terminal_are_no_shell_text(self):
        self.start_desktop(panel="fake")
        self.marks = []
        script = self.marking_script("tell")
        items = []
        for number, text in enumerate(HOSTILE, 1):
            name = text.replace("/", "_")
            entry = self.desktop.write(
                f"home/entries/{name}.desktop", "[Desktop Entry]\nType=Application\nName=Any\n"
                f"Terminal=true\nExec=\"{script}\" first %k\n")
            items.append(item("App" if number % 2 else "Command File", text, entry,
                              identity(number)))
        self.start(items)
        path, mark = self.marks[0]
        for row, record in enumerate(items):
            self.launch(row)
            with self.subTest(record["title"]):
                self.assertEqual("\n".join(self.lines(mark)),
                                 "\n".join([path, "first", record["path"]]))
            os.unlink(self.home(mark))
        self.assert_no_canary()

    def test_paths_of_documents_are_no_shell_text(self):
        self.start_desktop(panel="fake")
        self.marks = []
        script = self.marking_script("viewer")
        self.desktop.write("data/applications/viewer.desktop", "[Desktop Entry]\n"
                           "Type=Application\nName=Viewer\nMimeType=text/plain;\n"
                           f"Exec=\"{script}\" %f\n")
        self.desktop.write("config/mimeapps.list",
                           "[Default Applications]\ntext/plain=viewer.desktop\n")
        path, mark = self.marks[0]
        names = [name.replace("/", "_") + ".txt" for name in HOSTILE]
        items = [item("Command File", text,
                      self.desktop.write(f"home/papers/{name}", "text\n"), identity(i))
                 for i, (text, name) in enumerate(zip(HOSTILE, names), 1)]
        self.start(items)
        for row, record in enumerate(items):
            self.launch(row)
            with self.subTest(record["path"]):
                self.assertEqual("\n".join(self.lines(mark)), "\n".join([path, record["path"]]))
            os.unlink(self.home(mark))
        self.assert_no_canary()

    def test_command_is_run_by_the_users_shell_once_and_its_title_by_none(self):
        self.start_desktop(panel="fake")
        command = "printf '%s\\n' \"$0\" '$(touch canary)' >>told; printf '%s\\n' end >>told"
        items = [item("Inline Command", text, command, identity(i))
                 for i, text in enumerate(HOSTILE[:4], 1)]
        self.start(items)
        for row in range(len(items)):
            self.launch(row)
            self.wait_until(lambda: self.lines("told")[-1:] == ["end"], "the command's end")
            told = self.lines("told")
            self.assertEqual(told[1:], ["$(touch canary)", "end"])
            os.unlink(self.home("told"))
        self.assert_no_canary()
