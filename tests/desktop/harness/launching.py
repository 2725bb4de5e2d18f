"""Base class of the tests of real launches: programs that record how they were started, and a look
at the processes and terminal windows that a launch makes."""
import glob
import json
import os
import re
import sys

from harness.case import DesktopTest
from harness.processes import wait_for
from harness.program import item, store_before_start

RECORDER = r"""
import json, os, sys, time
def target(link):
    try:
        return os.readlink(link)
    except OSError:
        return None
folder = os.path.dirname(os.path.abspath(__file__))
descriptors = {number: target("/proc/self/fd/" + number) for number in os.listdir("/proc/self/fd")}
# The process that starts a program for GLib may still be there, and be gone the next moment.
shell = target(f"/proc/{os.getppid()}/exe")
record = {"arguments": sys.argv[1:], "folder": os.getcwd(), "pid": os.getpid(),
          "descriptors": {n: t for n, t in descriptors.items() if t and "/proc/" not in t},
          "session": os.getsid(0), "environment": dict(os.environ),
          "shell": shell and os.path.basename(shell)}
name = os.path.join(folder, f"{time.monotonic_ns():020}-{os.getpid()}")
with open(name + ".new", "w") as file:
    json.dump(record, file)
os.rename(name + ".new", name + ".json")
if sys.argv[1:2] == ["--stay"]:
    time.sleep(1000)
"""


def identity(number):
    return f"00000000-0000-4000-8000-{number:012X}"


def descriptors(pid):
    """What each descriptor of a process leads to, by its number."""
    found = {}
    for number in os.listdir(f"/proc/{pid}/fd"):
        try:
            found[int(number)] = os.readlink(f"/proc/{pid}/fd/{number}")
        except FileNotFoundError:
            continue
    return found


def children(pid):
    """The ids and states of a process's children: "Z" is a zombie."""
    found = []
    for path in glob.glob("/proc/[0-9]*/stat"):
        try:
            with open(path, encoding="utf-8", errors="replace") as file:
                name, rest = file.read().rsplit(")", 1)
        except OSError:
            continue
        state, parent = rest.split()[:2]
        if int(parent) == pid:
            found.append((int(name.split()[0]), state))
    return found


def state(pid):
    """The letter of a process's state; None when there is no such process."""
    try:
        with open(f"/proc/{pid}/stat", encoding="utf-8", errors="replace") as file:
            return file.read().rsplit(")", 1)[1].split()[0]
    except FileNotFoundError:
        return None


def program_of(pid):
    """The path of the program that a process runs; None for a zombie and for no process."""
    try:
        return os.readlink(f"/proc/{pid}/exe")
    except FileNotFoundError:
        return None


class LaunchingTest(DesktopTest):
    """A desktop on which every launch leaves a record."""

    terminal = "xterm"

    def start_desktop(self, **options):
        desktop = super().start_desktop(**{"panel": "fake", **options})
        self.recorder = desktop.write("records/recorder.py", RECORDER)
        return desktop

    def start_with(self, items, environment=None, tracer=()):
        """Starts the program, under a tracer if there is one, with a list of (kind, title, path or
        command)."""
        store_before_start(self.desktop, [item(kind, title, text, identity(i))
                                          for i, (kind, title, text) in enumerate(items, 1)])
        return self.start_kestrel({"TERMINAL": self.terminal, "SHELL": "/bin/sh",
                                   **(environment or {})}, tracer=tracer)

    def recording(self):
        """The words of a shell command that records how it was started; more may follow."""
        return f"'{sys.executable}' -IS '{self.recorder}'"

    def script(self, name, mode=0o755, first="#!/bin/sh\n"):
        """A script that records how it was started: below the home folder, by its name."""
        return self.desktop.write(f"home/{name}", f'{first}exec {self.recording()} "$0" "$@"\n',
                                  mode)

    def entry(self, name, lines, folder="home"):
        """A desktop entry."""
        return self.desktop.write(f"{folder}/{name}",
                                  f"[Desktop Entry]\nType=Application\nName=Entry\n{lines}\n")

    def records(self):
        """What was started so far, in that order."""
        found = []
        for path in sorted(glob.glob(self.desktop.path("records", "*.json"))):
            with open(path, encoding="utf-8") as file:
                found.append(json.load(file))
        return found

    def wait_for_records(self, count):
        """The first `count` records."""
        try:
            wait_for(lambda: len(self.records()) >= count, 20)
        except AssertionError:
            raise AssertionError(f"{len(self.records())} of {count} started: "
                                 f"{[r['arguments'] for r in self.records()]}") from None
        return self.records()[:count]

    def forget_records(self):
        for path in glob.glob(self.desktop.path("records", "*.json")):
            os.remove(path)

    def launch(self, title):
        """A click on a row of the popover, which closes it."""
        self.kestrel.open_popover()
        self.kestrel.click_row(title)
        self.kestrel.wait_for_no_popover()

    def launch_row(self, row):
        """The same by keys, for a row that may be scrolled out of view."""
        self.kestrel.open_popover()
        wait_for(self.takes_keys, what="the popover to take keys")
        self.desktop.key(*["Down"] * row, "Return")
        self.kestrel.wait_for_no_popover()

    def takes_keys(self):
        """Whether Home leads to the first row: the popover has the keyboard a moment after it
        shows."""
        self.desktop.key("Home")
        first = self.desktop.accessibility.find_all("list item")[:1]
        return any("selected" in row.states for row in first)

    def launch_and_record(self, title):
        """The record of the one program that a click on a row starts."""
        self.forget_records()
        self.launch(title)
        return self.wait_for_records(1)[0]

    # What a launch must not leave behind.

    def assert_started_cleanly(self, record):
        """A program of the desktop that has nothing of ours."""
        self.assertEqual(record["descriptors"], dict.fromkeys("012", "/dev/null"))
        self.assertEqual(record["session"], record["pid"])
        self.assertEqual(record["folder"], self.desktop.path("home"))

    def assert_shares_nothing(self, pid):
        """No socket, pipe or other unnamed object of ours is open in another process."""
        nameless = {target for target in descriptors(self.kestrel.process.pid).values()
                    if target.startswith(("socket:", "pipe:", "/memfd:"))}
        self.assertTrue(nameless)
        self.assertFalse(nameless & set(descriptors(pid).values()))

    def wait_for_no_children(self):
        """The program has no children: what it starts is not its own, and none is a zombie."""
        pid = self.kestrel.process.pid
        wait_for(lambda: not children(pid), what=f"no child of the program: {children(pid)}")

    def wait_for_no_scratch(self):
        """Nothing of ours is left where the program keeps what it is about to run."""
        pattern = self.desktop.path("run", "kestrel-launch-*")
        wait_for(lambda: not glob.glob(pattern), what="no scratch folder")

    # Terminal windows.

    def clients(self):
        """The ids of the windows that the window manager manages, in the order of opening."""
        return re.findall(r"0x[0-9a-f]+",
                          self.desktop.run("xprop", "-root", "_NET_CLIENT_LIST"))

    def wait_for_client(self, known):
        """The one managed window that is not among `known`, once it has the keyboard."""
        def new():
            return [window for window in self.clients() if window not in known]
        window = wait_for(new, what="a new window")[0]
        wait_for(lambda: self.active_client() == window, what="the new window to be active")
        return window

    def active_client(self):
        """The window that has the keyboard, as the window manager says."""
        found = re.search(r"0x[0-9a-f]+",
                          self.desktop.run("xprop", "-root", "_NET_ACTIVE_WINDOW"))
        return found[0] if found else None

    def window_class(self, window):
        return self.desktop.run("xprop", "-id", window, "WM_CLASS").lower()
