#!/usr/bin/python3
"""Measures how long the program with many items keeps its main thread from anything else.

    benchmarks/load.py [BUILD_FOLDER]        (build/bench, by default)

On a virtual desktop of its own, the program is worked by pointer and keyboard: opened, scrolled,
hovered, searched by typing, edited, saved, changed from outside. Meanwhile its main thread is asked
for something small again and again, and the longest wait for an answer counts: it is what a user
would have waited. Prints a table of what process.py shows in one row; the exit status says whether
all goals were met. Needs /usr/bin/python3.
"""
import contextlib
import json
import os
import pathlib
import statistics
import sys
import tempfile
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "desktop"))

import dbus  # noqa: E402
import dbus.bus  # noqa: E402

from harness.desktop import ITEM, Desktop  # noqa: E402
from harness.processes import wait_for  # noqa: E402
from harness.program import encoded, item  # noqa: E402
from harness.x11_client import X11Client  # noqa: E402
from table import Table  # noqa: E402

TURNS = 3
# The questions load the thread that they measure, so they are few.
PAUSE_SECONDS = 0.002
HOMES = "/var/tmp"


def delayed(pid, thread):
    """The seconds for which a thread was ready and had to wait for a processor."""
    text = pathlib.Path(f"/proc/{pid}/task/{thread}/schedstat").read_text()
    return int(text.split()[1]) / 1e9


class Asking(threading.Thread):
    """Asks the main thread, all the time, for the icon's title, and keeps the longest wait.

    The toolkit answers on the main thread. What the two threads waited for a processor while others
    had it is taken off.
    """

    def __init__(self, desktop, pid):
        super().__init__(daemon=True)
        bus = dbus.bus.BusConnection(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        name, _, path = desktop.status_items()[0].partition("/")
        self._icon = bus.get_object(name, "/" + (path or "StatusNotifierItem"), introspect=False)
        self._pid, self._longest, self._ends = pid, 0.0, False
        self._answers = threading.Condition()
        self.start()

    def _now(self):
        return (time.monotonic() - delayed(self._pid, self._pid)
                - delayed(os.getpid(), threading.get_native_id()))

    def run(self):
        while not self._ends:
            asked = self._now()
            self._icon.Get(ITEM, "Title", dbus_interface=dbus.PROPERTIES_IFACE, timeout=60)
            with self._answers:
                self._longest = max(self._longest, self._now() - asked)
                self._answers.notify_all()
            time.sleep(PAUSE_SECONDS)

    def take(self):
        """The longest wait since the last call in milliseconds, the one under way included."""
        with self._answers:
            # Two, because the first may have been on its way before.
            for _ in range(2):
                if not self._answers.wait(60):
                    raise AssertionError("the main thread does not answer")
            longest, self._longest = self._longest, 0.0
        return longest * 1000

    def stop(self):
        self._ends = True
        self.join(60)


class Load:
    """The program on a desktop of its own, driven over one connection to the X server.

    The longest pause of all acts is a row of the table; `tell` is called with each act's.
    """

    # The longest pause by the number of items: one frame at 60 Hz, and what no user notices.
    GOALS_MS = {10_000: 1000 / 60, 100_000: 50}

    def __init__(self, program, count, table, tell=lambda act, milliseconds: None):
        self.program, self.count, self.table, self.tell = program, count, table, tell
        self.pauses = {}
        self.rows = [item(("App", "Command File", "Inline Command")[i % 3],
                          f"{'Zebra' if i == count - 1 else 'Launcher'} {i}",
                          f"/usr/local/share/applications/launcher-number-{i}",
                          f"00000000-0000-4000-8000-{i:012X}") for i in range(count)]

    def settle(self):
        """Waits until the program has nothing to do any more."""
        def busy():
            text = pathlib.Path(f"/proc/{self.process.pid}/task/{self.process.pid}/schedstat")
            return int(text.read_text().split()[0]) / 1e6
        before = busy()
        while True:
            time.sleep(0.15)
            now = busy()
            # The questions alone take about a tenth of the time.
            if now - before < 60:
                return
            before = now

    def measure(self, what, act):
        """Notes the median of the waits while `act` and what follows it is done."""
        waits = []
        for turn in range(TURNS):
            self.settle()
            self.asking.take()
            act(turn)
            time.sleep(0.05)
            self.settle()
            waits.append(self.asking.take())
        self.pauses[what] = statistics.median(waits)
        self.tell(what, self.pauses[what])

    # The user's acts.

    def toggle(self, shown):
        call = self.desktop.status_item().get_dbus_method("Activate", ITEM)
        call(0, 0, signature="ii", timeout=60)
        if self.popover:
            self.client.wait_until_shown(self.popover, shown)

    def popover_acts(self):
        self.popover = None
        self.toggle(True)
        window = self.desktop.wait_for_window(role="popover")
        self.popover, rect = window.id, window.rect
        self.toggle(False)

        def opening(_):
            self.toggle(True)
            self.toggle(False)
        self.measure("popover opened and closed", opening)

        @contextlib.contextmanager
        def opened():
            self.toggle(True)
            yield self.client.place(self.popover)
            self.toggle(False)

        def keys(*names):
            def act(_):
                with opened():
                    for name in names:
                        self.client.key(name)
                        time.sleep(0.02)
            return act

        def hover(_):
            with opened() as (x, y):
                for step in range(40):
                    self.client.move(x + 120, y + 20 + step * 7 % rect.height)
                    time.sleep(0.005)

        self.measure("popover, hover", hover)
        self.measure("popover, scrolled by keys to its end", keys(*["Next"] * 10, "End", "Home"))
        self.measure("popover, search by typing, last row", keys("z", "e"))
        self.measure("popover, search by typing, in vain", keys("q", "x"))

    def settings_acts(self):
        def open_window(_=None):
            self.toggle(True)
            x, y = self.client.place(self.popover)
            self.client.click(x + 40, y + 361 - 20)
            self.window = wait_for(self.client.managed_windows, 30, "the window", pause=0.002)[0]
            self.client.wait_until_shown(self.window)

        def close_window():
            self.client.key("Alt_L", "F4")
            wait_for(lambda: not self.client.managed_windows(), 30, "the window to go")

        def opening(_):
            open_window()
            self.settle()
            close_window()
        self.measure("settings window opened and closed", opening)
        open_window()
        self.settle()
        x, y = self.client.place(self.window)

        def keys(*names):
            def act(_):
                for name in names:
                    self.client.key(*name.split("+"))
                    time.sleep(0.03)
            return act

        def drag_bar(_):
            self.client.drag((x + 510, y + 70), (x + 510, y + 330), 25)

        def hover(_):
            for step in range(40):
                self.client.move(x + 200, y + 60 + step * 9 % 300)
                time.sleep(0.005)

        self.client.click(x + 200, y + 80)
        self.measure("settings, hover", hover)
        self.measure("settings, scrolled by keys", keys(*["Next"] * 10, "End", "Home"))
        self.measure("settings, scrolled by the bar", drag_bar)
        self.measure("settings, search by typing, last row", keys("z", "e"))
        self.measure("settings, form opened and cancelled", keys("Return", "Escape"))
        self.measure("settings, title edited and saved",
                     keys("Return", "End", "x", "Control_L+Return"))
        self.measure("settings, row moved and saved", keys("Alt_L+Up"))
        self.measure("settings, row deleted and saved", keys("Home", "Delete"))
        self.measure("settings, window made larger", lambda turn: self.desktop.run(
            "xdotool", "windowsize", self.window, str(560 + 20 * turn), "480"))
        with_cloud = self.desktop.path("data", "kestrel", "cloud")
        os.mkdir(with_cloud)
        self.settle()
        self.measure("settings, row moved and saved, with a cloud", keys("Home", "Alt_L+Down"))
        close_window()
        self.check_saved(with_cloud)

    def check_saved(self, cloud):
        """That all of it was really done: a title per turn longer, a row per turn less."""
        data = pathlib.Path(cloud, "launcherItems").read_bytes()
        stored = json.loads(data)
        if (pathlib.Path(cloud).parent.joinpath("launcherItems").read_bytes() != data
                or len(stored) != self.count - TURNS
                or not any(row["title"].endswith("x" * TURNS) for row in stored)):
            raise AssertionError("what was measured did not save what it was meant to")

    def outside_acts(self):
        lists = [encoded(self.rows[1:] + self.rows[:1]), encoded(self.rows)]
        self.measure("list from another machine", lambda turn: self.desktop.write(
            "data/kestrel/cloud/launcherItems", lists[turn % 2]))

    def run(self):
        with Desktop(window_manager="openbox") as self.desktop:
            self.desktop.write("data/kestrel/launcherItems", encoded(self.rows))
            self.desktop.start_panel("fake")
            self.client = X11Client(self.desktop.environment["DISPLAY"])
            self.process = self.desktop.start([str(self.program)],
                                              {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": None})
            wait_for(self.desktop.status_items, 30, "the icon")
            self.asking = Asking(self.desktop, self.process.pid)
            self.settle()
            self.measure("nothing", lambda _: time.sleep(0.3))
            self.popover_acts()
            self.settings_acts()
            self.outside_acts()
            self.asking.stop()
            self.client.close()
        longest = max(self.pauses, key=self.pauses.get)
        self.table.limit(f"longest pause, {self.count:,} items: {longest}", self.pauses[longest],
                         self.GOALS_MS[self.count], "the most that is allowed")


def main():
    build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "build" / "bench").resolve()
    tempfile.tempdir = HOMES
    table = Table()
    for count, goal in Load.GOALS_MS.items():
        Load(build / "shells/linux/kestrel", count, table,
             lambda act, pause, count=count, goal=goal: table.limit(
                 f"longest pause, {count:,} items: {act}", pause, goal, "the most allowed")).run()
    return table.finish()


if __name__ == "__main__":
    sys.exit(main())
