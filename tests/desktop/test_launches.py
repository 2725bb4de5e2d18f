"""Real launches from the popover: what was started, and how."""
import json
import os
import re
import shutil
import signal
import socket

from harness.launching import LaunchingTest, descriptors, state

APPIMAGE_MAGIC = b"AI\x02"

# What a session tells a program about its own start.
OWN_START = ("XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID", "DESKTOP_AUTOSTART_ID",
             "GIO_LAUNCHED_DESKTOP_FILE", "GIO_LAUNCHED_DESKTOP_FILE_PID",
             "DBUS_STARTER_ADDRESS", "DBUS_STARTER_BUS_TYPE", "NOTIFY_SOCKET", "FDSTORE",
             "LISTEN_PID", "LISTEN_PIDFDID", "LISTEN_FDS", "LISTEN_FDNAMES", "WATCHDOG_PID",
             "WATCHDOG_USEC", "MAINPID", "MAINPIDFDID", "MANAGERPID", "MANAGERPIDFDID",
             "SYSTEMD_EXEC_PID", "INVOCATION_ID", "JOURNAL_STREAM", "MEMORY_PRESSURE_WATCH",
             "MEMORY_PRESSURE_WRITE")

# An application that runs on the bus: each call of its interface becomes a line of its log.
SERVICE = """
import json, sys, dbus, dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib
DBusGMainLoop(set_as_default=True)
class Application(dbus.service.Object):
    def log(self, *words):
        with open({log!r}, "a") as file:
            print(*words, file=file)
    @dbus.service.method("org.freedesktop.Application", in_signature="a{{sv}}")
    def Activate(self, data):
        self.log("activate", json.dumps(data, sort_keys=True))
    @dbus.service.method("org.freedesktop.Application", in_signature="asa{{sv}}")
    def Open(self, uris, data):
        self.log("open", *uris)
bus = dbus.SessionBus()
name = dbus.service.BusName({name!r}, bus)
application = Application(bus, "/" + {name!r}.replace(".", "/"))
application.log("start", *sys.argv[1:])
GLib.MainLoop().run()
"""


class LaunchesTest(LaunchingTest):
    """One desktop, one list, a click for each row."""

    def elf(self, name, magic=b""):
        """A copy of bash under another name, with other bytes at 8. What it then runs, it reads
        from the file that BASH_ENV names and, in a terminal, from its start file."""
        path = self.desktop.path("home", name)
        shutil.copy("/bin/bash", path)
        with open(path, "r+b") as file:
            file.seek(8)
            file.write(magic)
        return path

    def bash_env(self):
        return {"BASH_ENV": self.desktop.write(
            "home/.bashrc", f'unset BASH_ENV\nexec {self.recording()} "$0"\n')}

    def test_applications_start_cleanly_whatever_they_are(self):
        self.start_desktop()
        program = self.script("program")
        entry = self.entry("codes.desktop", f'Icon=bird\nExec="{program}" %U %i %c %k %% %f '
                           r'"a b" "q\\"q" "\\$HOME" end')
        elsewhere = self.entry("path.desktop", f"Exec={program}\nPath=/usr")
        terminal = self.entry("terminal.desktop", f"Terminal=true\nExec={program} 'x y' %U")
        image = self.elf("tool.AppImage", APPIMAGE_MAGIC)
        script = self.script("script.AppImage")
        self.start_with([("App", "Entry", entry), ("App", "Elsewhere", elsewhere),
                         ("App", "Terminal", terminal), ("App", "Executable", program),
                         ("App", "Image", image), ("App", "Script", script)], self.bash_env())

        record = self.launch_and_record("Entry")
        self.assertEqual(record["arguments"], [program, "--icon", "bird", "Entry", entry, "%",
                                               "a b", 'q"q', "$HOME", "end"])
        self.assert_started_cleanly(record)
        self.assertEqual(self.launch_and_record("Elsewhere")["folder"], "/usr")
        for title, path in (("Executable", program), ("Image", image), ("Script", script)):
            record = self.launch_and_record(title)
            self.assertEqual(record["arguments"], [path])
            self.assert_started_cleanly(record)
        self.assertEqual(self.clients(), [])
        record = self.launch_and_record("Terminal")
        self.assertEqual(record["arguments"], [program, "x y"])
        self.assertRegex(record["descriptors"]["0"], "^/dev/pts/")
        self.assertEqual(record["folder"], self.desktop.path("home"))
        self.wait_for_no_children()

    def test_entry_is_activated_over_the_bus(self):
        self.start_desktop()
        names = ("org.example.Good", "org.example.Broken", "org.example.Missing")
        log = self.install_service(names[0], {names[1]: "/bin/false"})
        program = self.script("program")
        entries = [self.entry(f"{name}.desktop", f"DBusActivatable=true\nExec={program} {name} %U",
                              "data/applications") for name in names]
        self.desktop.write("config/mimeapps.list", "[Default Applications]\n"
                           f"text/plain={names[0]}.desktop\n")
        text = self.desktop.write("home/a b.txt", "text\n")
        self.start_with([("App", name, entry) for name, entry in zip(names, entries)]
                        + [("Command File", "Text", text)])

        expected = ["start"]
        for title, line in ((names[0], "activate"), (names[0], "activate"),
                            ("Text", f"open file://{text}".replace(" b", "%20b"))):
            expected.append(line)
            self.launch(title)
            self.wait_until(lambda: len(self.lines(log)) >= len(expected), title)
            self.assertEqual([re.sub("^activate .*", "activate", found)
                              for found in self.lines(log)], expected)
        self.assertEqual(self.records(), [])
        for name in names[1:]:
            record = self.launch_and_record(name)
            self.assertEqual(record["arguments"], [program, name])
            self.assert_started_cleanly(record)
        self.wait_for_no_children()

    def install_service(self, name, others=None):
        """Installs an application that the bus starts, and further services by their names and
        commands. The path of the application's log."""
        log = self.desktop.path("log")
        service = self.desktop.write("service.py", SERVICE.format(log=log, name=name))
        for each, command in {name: f"/usr/bin/python3 {service}", **(others or {})}.items():
            self.desktop.write(f"data/dbus-1/services/{each}.service",
                               f"[D-BUS Service]\nName={each}\nExec={command}\n")
        self.desktop.bus.get_object("org.freedesktop.DBus", "/org/freedesktop/DBus") \
            .ReloadConfig(dbus_interface="org.freedesktop.DBus")
        return log

    def test_what_is_launched_may_raise_its_window(self):
        self.start_desktop(panel_options=["--bar=dock", "--token=panel's"])
        name = "org.example.Service"
        log = self.install_service(name)
        program = self.script("program")
        window = self.entry("window.desktop", f"Terminal=true\nExec={program}")
        self.start_with([("App", "Executable", program),
                         ("App", "Entry", self.entry("entry.desktop", f"Exec={program}")),
                         ("App", "Service", self.entry(f"{name}.desktop", "DBusActivatable=true")),
                         ("App", "Window", window), ("Command File", "File", program),
                         ("Inline Command", "Command", self.recording())])

        def activation(title, opened):
            opened()
            self.kestrel.wait_for_popover()
            self.forget_records()
            self.kestrel.click_row(title)
            self.kestrel.wait_for_no_popover()
            found = self.wait_for_records(1)[0]["environment"]
            return found.get("XDG_ACTIVATION_TOKEN"), found.get("DESKTOP_STARTUP_ID")

        icon = self.desktop.icon_rect().center
        def click(): self.desktop.click(*icon)
        for title in ("Executable", "Entry"):
            self.assertEqual(activation(title, click), ("panel's", "panel's"))
            # The panel's token is used up, and this is no session of Wayland's.
            token, identity = activation(title, self.kestrel.activate)
            self.assertIsNone(token)
            self.assertRegex(identity, "^kestrel/.*_TIME[1-9][0-9]*$")
            self.assertNotEqual(activation(title, self.kestrel.activate)[1], identity)
        for title in ("Window", "File", "Command"):
            self.assertEqual(activation(title, click), (None, None), title)
        click()
        self.kestrel.wait_for_popover()
        self.kestrel.click_row("Service")
        self.wait_until(lambda: len(self.lines(log)) == 2, "the service's two lines")
        self.assertEqual(json.loads(self.lines(log)[1].removeprefix("activate ")),
                         dict.fromkeys(("activation-token", "desktop-startup-id"), "panel's"))

    def test_what_is_launched_inherits_nothing_of_the_start_of_the_program(self):
        self.start_desktop()
        program = self.script("program")
        entry = self.entry("entry.desktop", f"Exec={program}")
        window = self.entry("window.desktop", f"Terminal=true\nExec={program}")
        opener = self.entry("text.desktop", f"Exec={program} %f", "data/applications")
        self.desktop.write("config/mimeapps.list",
                           "[Default Applications]\ntext/plain=text.desktop\n")
        text = self.desktop.write("home/text.txt", "text\n")
        items = [("App", "Entry", entry), ("App", "Executable", program),
                 ("App", "Window", window), ("Command File", "File", program),
                 ("Command File", "Text", text), ("Inline Command", "Command", self.recording())]
        self.start_with(items, {**dict.fromkeys(OWN_START, "the program's"), "KEPT": "yes"})
        for _, title, _ in items:
            record = self.launch_and_record(title)
            environment = record["environment"]
            self.assertEqual(environment["KEPT"], "yes")
            self.assertEqual([name for name, value in environment.items()
                              if value == "the program's"], [], title)
            # GIO tells the program of an entry which entry that is.
            file = environment.get("GIO_LAUNCHED_DESKTOP_FILE")
            self.assertEqual(file, {"Entry": entry, "Text": opener}.get(title), title)
            if file is not None:
                self.assertEqual(environment["GIO_LAUNCHED_DESKTOP_FILE_PID"], str(record["pid"]))

    def test_command_files_are_run_or_opened_by_what_they_are(self):
        self.start_desktop()
        viewer = self.script("viewer")
        for name in ("text", "folder", "octets"):
            self.entry(f"{name}.desktop", f"Exec={viewer} {name} %f", "data/applications")
        self.desktop.write("config/mimeapps.list", "[Default Applications]\n"
                           "text/plain=text.desktop\napplication/x-shellscript=text.desktop\n"
                           "inode/directory=folder.desktop\n"
                           "application/octet-stream=octets.desktop\n")
        home = self.desktop.path("home")
        kinds = [(path, None) for path in self.special_files()]
        kinds += [(self.script(name, first=first), "terminal") for name, first in (
            ("shebang", "#!/bin/sh\n"), ("plain.command", ""), ("plain.sh", ""),
            ("-rf a 'b' \"c\" $d %f.sh", "#!/bin/sh\n"), ("two\nlines", "#!/bin/sh\n"))]
        kinds += [(self.elf("program"), "terminal"), (home, "folder"),
                  (self.script("shebang.txt", 0o644), "text"),
                  (self.script("no-bit.sh", 0o644), "text"),
                  (self.desktop.write("home/bit.txt", "a text\n", 0o755), "text"),
                  (self.desktop.write("home/-a 'b' \"c\" $d %f\n\u00fc\u4e2d.txt",
                                       "a text\n"), "text"),
                  (self.desktop.write("home/octets", b"\0\1\2\xff"), "octets"),
                  (self.entry("entry.desktop", f"Exec={viewer} entry"), "entry"),
                  ("/", "folder")]
        self.start_with([("Command File", f"Item {i}", path) for i, (path, _) in enumerate(kinds)],
                        self.bash_env())
        started = 0
        for i, (path, kind) in enumerate(kinds):
            self.launch_row(i)
            if kind is None:
                continue
            started += 1
            record = self.wait_for_records(started)[-1]
            expected = {"terminal": [path], "entry": [viewer, kind]}
            self.assertEqual(record["arguments"], expected.get(kind, [viewer, kind, path]))
            self.assertEqual(record["folder"], home)
            if kind == "terminal":
                self.assertRegex(record["descriptors"]["0"], "^/dev/pts/")
            else:
                self.assert_started_cleanly(record)
        self.assertEqual(len(self.records()), started)
        self.wait_for_no_children()
        self.wait_for_no_scratch()

    def special_files(self):
        """Paths that name nothing that could be opened."""
        pipe, peer = self.desktop.path("home", "pipe.sh"), self.desktop.path("home", "socket.sh")
        os.mkfifo(pipe)
        with socket.socket(socket.AF_UNIX) as listener:
            listener.bind(peer)
        link, loop = self.desktop.path("home", "link.sh"), self.desktop.path("home", "loop.sh")
        os.symlink("nowhere", link)
        os.symlink("loop.sh", loop)
        return [pipe, peer, link, loop, "/dev/zero", "/dev/tty", self.desktop.path("missing"),
                "relative.sh", "~/shebang"]

    def test_children_outlive_the_program(self):
        self.start_desktop()
        entry = self.entry("entry.desktop", "Exec=" + self.staying("entry"))
        window = self.entry("window.desktop", "Terminal=true\nExec=" + self.staying("window"))
        items = [("App", "Entry", entry), ("App", "Executable", self.staying("executable")),
                 ("App", "Window", window), ("Inline Command", "Command", self.staying("command"))]
        for end in (self.quit, signal.SIGTERM, signal.SIGKILL):
            self.forget_records()
            self.start_with(items)
            for _, title, _ in items:
                self.launch(title)
            records = self.wait_for_records(len(items))
            for record in records:
                self.assert_shares_nothing(record["pid"])
            self.wait_for_no_children()
            if end == self.quit:
                self.quit()
            else:
                os.kill(self.kestrel.process.pid, end)
                self.kestrel.process.wait()
            for record in records:
                self.assertEqual(state(record["pid"]), "S", record["arguments"])
                os.kill(record["pid"], signal.SIGKILL)
        self.wait_for_no_scratch()

    def staying(self, name):
        """A program that records its start and then stays."""
        return self.desktop.write(f"home/{name}", "#!/bin/sh\n"
                                  f"exec {self.recording()} --stay {name}\n", 0o755)

    def quit(self):
        self.assertEqual(self.kestrel.quit(), 0)

    def test_launches_leave_nothing_in_the_program(self):
        self.start_desktop()
        entry = self.entry("entry.desktop", "Exec=" + self.script("program"))
        missing = self.entry("org.example.Missing.desktop",
                             "DBusActivatable=true\nExec=" + self.script("program"))
        items = [("App", "Entry", entry), ("App", "Missing service", missing),
                 ("App", "Executable", self.script("program")),
                 ("App", "No program", self.entry("none.desktop", "Exec=/nowhere/program")),
                 ("App", "No interpreter", self.script("broken", first="#!/nowhere/sh\n")),
                 ("Command File", "No interpreter in a window",
                  self.script("broken.sh", first="#!/nowhere/sh\n")),
                 ("Inline Command", "Command", self.recording())]
        self.start_with(items)
        counts = []
        for _ in range(3):
            self.forget_records()
            for _, title, _ in items:
                self.launch(title)
            self.wait_for_records(4)
            self.wait_for_no_children()
            counts.append(self.settled_descriptors(counts[1:]))
        self.assertEqual(counts[1], counts[2])
        self.wait_for_no_scratch()

    def settled_descriptors(self, expected):
        """How many descriptors the program has, once they are as many as expected."""
        def count():
            return len(descriptors(self.kestrel.process.pid))
        if expected:
            self.wait_until(lambda: count() <= expected[0], "no more descriptors than before")
        return count()

    def lines(self, path):
        if not os.path.exists(path):
            return []
        with open(path, encoding="utf-8") as file:
            return file.read().splitlines()
