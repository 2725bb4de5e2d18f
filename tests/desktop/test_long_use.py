"""A day of use in a minute: the popover and the settings window open and close again and again,
with lists that change, rows of all kinds and forms that are cancelled. Nothing may add up.

KESTREL_OPENINGS sets how often the popover opens; the settings window opens a tenth as often.
"""
import os
import pathlib
import time

import dbus

from harness.case import DesktopTest
from harness.desktop import ITEM
from harness.processes import DEFAULT_TIMEOUT, wait_for
from harness.program import encoded, item
from harness.x11_client import X11Client

OPENINGS = int(os.environ.get("KESTREL_OPENINGS", "1500"))
WINDOWS = OPENINGS // 10
ROUNDS = 20
# What the second half of the day may add to the memory: the heap's own variation. A settings window
# or an opening that left anything behind would show as far more.
ALLOWED_KIB = 512
# The toolkit keeps one cursor of each shape from its first use: the arrow, the closed hand of a drag,
# and the text cursor that the pointer gets whenever it happens to rest on a form's field.
CURSOR_SHAPES = 3
ENTRY = "[Desktop Entry]\nType=Application\nName={0}\nExec=/bin/true\nIcon={1}\n"
SVG = '<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64"><circle r="30"/></svg>'


class LongUseTest(DesktopTest):
    limit = 540 if OPENINGS <= 1500 else 3600

    def setUp(self):
        super().setUp()
        self.start_desktop(panel="fake")
        self.client = X11Client(self.desktop.environment["DISPLAY"])
        self.addCleanup(self.client.close)

    def lists(self):
        """None, few, a screenful and many rows, of every kind and with every kind of icon."""
        write = self.desktop.write
        image = write("home/own.svg", SVG)
        paths = [write(f"home/{name}.desktop", ENTRY.format(name, icon)) for name, icon in (
            ("themed", "utilities-terminal"), ("own", image), ("missing", "no-such-icon"))]
        paths += [write(f"home/file{ending}", "#!/bin/sh\n", 0o755) for ending in (
            "", ".sh", ".txt", ".png", ".pdf")]
        paths += [self.desktop.path("home"), "/no/such/file", ""]
        kinds = ("App", "Command File", "Inline Command")
        rows = [item(kinds[i % 3], f"Row {i} " + "long title " * (i % 7), paths[i % len(paths)],
                     f"00000000-0000-4000-8000-{i:012X}") for i in range(120)]
        return [rows[:12], [], rows[5:8], rows, rows[40:52], rows[:1]]

    def store(self, items):
        """As another machine does."""
        self.desktop.write("data/kestrel/cloud/launcherItems", encoded(items))
        path = self.desktop.path("data", "kestrel", "launcherItems")
        wait_for(lambda: pathlib.Path(path).read_bytes() == encoded(items), what="the new list")

    def start(self, environment):
        self.all_lists = self.lists()
        self.desktop.write("data/kestrel/cloud/launcherItems", encoded(self.all_lists[0]))
        kestrel = self.start_kestrel(environment)
        self.toggle = self.desktop.status_item().get_dbus_method("Activate", ITEM)
        kestrel.activate()
        window = kestrel.wait_for_popover()
        self.popover, self.popover_rect = window.id, window.rect
        self.show_popover(False)
        return kestrel

    def show_popover(self, shown):
        self.toggle(dbus.Int32(0), dbus.Int32(0), timeout=DEFAULT_TIMEOUT)
        self.client.wait_until_shown(self.popover, shown)

    def open_popovers(self, count):
        x, y, width, _ = self.popover_rect
        for i in range(count):
            self.show_popover(True)
            self.client.move(x + width // 2, y + 20 + 34 * (i % 9))
            if i % 5 == 0:
                self.client.key(("Down", "End", "Page_Up", "r")[i // 5 % 4])
            self.show_popover(False)

    def open_settings(self):
        """The window, opened as users do: by the popover's own button."""
        self.show_popover(True)
        # The list's length has changed the popover's place or height since.
        x, y = self.client.place(self.popover)
        height = 41 + (min(len(self.shown) * 34 + 12, 320) if self.shown else 140)
        self.client.click(x + 40, y + height - 20)
        return wait_for(self.client.managed_windows, what="the settings window", pause=0.002)[0]

    def use_settings(self, check=None):
        window = self.open_settings()
        self.client.wait_until_shown(window)
        x, y = self.client.place(window)
        for row in range(4):
            self.client.move(x + 200, y + 80 + 44 * row)
        self.client.click(x + 200, y + 80)
        self.client.key("Return")  # the form of that row, if there is one
        self.client.key("Escape")
        self.client.click(x + 32, y + 25)  # "Add"
        if check:
            check()
        self.client.key("Escape")
        self.client.key("Alt_L", "F4")
        wait_for(lambda: not self.client.managed_windows(), what="the window to close", pause=0.002)

    def play(self, round_number):
        self.shown = self.all_lists[round_number % len(self.all_lists)]
        self.store(self.shown)
        self.open_popovers(OPENINGS // ROUNDS)
        for _ in range(WINDOWS // ROUNDS):
            self.use_settings()
        self.store(self.all_lists[0])
        self.show_popover(True)
        self.client.key("Home")
        self.client.key("Return")  # launches
        self.client.wait_until_shown(self.popover, False)

    def figures(self):
        """What may not grow, each time in the same state."""
        process = pathlib.Path(f"/proc/{self.kestrel.process.pid}")

        resources, pixmap_bytes = self.client.resources(self.popover)
        cursors = resources.pop("CURSOR", 0)
        time.sleep(0.5)
        return {"memory": self.kestrel.own_memory(),
                "descriptors": len(list((process / "fd").iterdir())),
                "threads": len(list((process / "task").iterdir())),
                "X resources": sum(resources.values()), "cursors": cursors,
                "pixmap bytes": pixmap_bytes,
                "bus matches": self.bus_matches()}

    def bus_matches(self):
        """How many rules the program has on the session bus; 0 where the bus does not tell."""
        bus = self.desktop.bus.get_object("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                          introspect=False)
        try:
            rules = bus.GetAllMatchRules(dbus_interface="org.freedesktop.DBus.Debug.Stats")
        except dbus.DBusException:
            return 0
        owner = self.desktop.bus.get_name_owner("app.kestrel.Kestrel")
        return len(rules.get(owner, ()))

    def check_day(self):
        history = []
        for number in range(ROUNDS):
            self.play(number)
            history.append(self.figures())
        print(f"{OPENINGS} openings, {WINDOWS} windows:", *history[1::3], history[-1], sep="\n")
        # The first tenth fills caches, of icons and of rows; then all must stay as it is.
        early, late = history[1:ROUNDS // 4], history[-ROUNDS // 4:]
        for name in ("descriptors", "threads", "X resources", "pixmap bytes", "bus matches"):
            self.assertLessEqual(min(figures[name] for figures in late),
                                 max(figures[name] for figures in early), name)
        self.assertLessEqual(max(figures["cursors"] for figures in history), CURSOR_SHAPES)
        growth = (min(figures["memory"] for figures in late)
                  - max(figures["memory"] for figures in early))
        self.assertLess(growth, ALLOWED_KIB, "KiB more than after the first rounds")

    def test_a_day_of_use_adds_up_to_nothing(self):
        kestrel = self.start({"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": None})
        self.check_day()
        self.assertTrue(kestrel.process.is_running)

    def test_the_loop_of_a_day_reaches_what_it_means_to(self):
        kestrel = self.start({})
        self.shown = self.all_lists[0]
        self.use_settings(lambda: wait_for(kestrel.form_is_open, what="the form"))
        self.show_popover(True)
        self.wait_until(lambda: kestrel.rows()[:9] == [row["title"] for row in self.shown[:9]],
                        "the rows")
        self.show_popover(False)
