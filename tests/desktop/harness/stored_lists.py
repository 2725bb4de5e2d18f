"""Base class of the tests of the program's files: the files, and quick ways to make it save."""
import os
import shutil

import dbus

from harness.case import DesktopTest
from harness.processes import DEFAULT_TIMEOUT
from harness.program import BUS_NAME, encoded, item
from harness.system_calls import SystemCalls, can_listen

LASTING = ("launcherItems", "lastLocalSync")


def items(titles):
    """Items with these letters as their titles."""
    return [item("App", title, f"/opt/{title}", f"00000000-0000-4000-8000-{ord(title):012X}")
            for title in titles]


def list_of(titles):
    """The bytes of a stored list of them; None for None."""
    return None if titles is None else encoded(items(titles))


class StoredListsTest(DesktopTest):
    """The lists are in `data`, a folder on the test's desktop, which may be mounted."""

    calls = None
    mounts = None

    def setUp(self):
        super().setUp()
        self.addCleanup(lambda: self.calls and self.calls.close())
        self.addCleanup(lambda: self.mounts and self.mounts.close())

    def start_desktop(self, **options):
        super().start_desktop(**options)
        self.data = self.desktop.path("data")
        return self.desktop

    @property
    def folder(self):
        return os.path.join(self.data, "kestrel")

    @property
    def local(self):
        return os.path.join(self.folder, "launcherItems")

    @property
    def cloud(self):
        return os.path.join(self.folder, "cloud", "launcherItems")

    @staticmethod
    def read(path):
        try:
            with open(path, "rb") as file:
                return file.read()
        except FileNotFoundError:
            return None

    def store(self, local=None, cloud=None):
        """Makes the data folder anew with these lists; None: no such file, and with neither no
        folder for it. An empty `cloud` is a cloud folder without a list."""
        shutil.rmtree(self.data, ignore_errors=True)
        os.mkdir(self.data, 0o700)
        for path, data in ((self.local, local), (self.cloud, cloud)):
            if data is not None:
                os.makedirs(os.path.dirname(path), 0o700, exist_ok=True)
            if data:
                with open(path, "wb") as file:
                    file.write(data)

    def leftovers(self):
        """The files in the data folder that do not belong there between two saves."""
        return [os.path.join(folder, name)
                for folder, _, names in os.walk(self.data)
                for name in names if name not in LASTING]

    def wait_for_bus_name(self, owned=True):
        self.wait_until(lambda: self.desktop.has_bus_name(BUS_NAME) == owned,
                        f"{BUS_NAME} to be {'owned' if owned else 'free'}")

    def listen(self):
        """A listener to the calls of a program that starts next."""
        if self.calls:
            self.calls.close()
        elif not can_listen():
            self.skipTest("this machine does not let a program's system calls be intercepted")
        self.calls = SystemCalls(self.data)
        return self.calls

    def activate(self):
        """Opens the popover. The program has taken in its list when this ends."""
        self.wait_for_bus_name()
        program = self.desktop.bus.get_object(BUS_NAME, "/" + BUS_NAME.replace(".", "/"),
                                              introspect=False)
        program.Activate(dbus.Dictionary(signature="sv"), timeout=DEFAULT_TIMEOUT,
                         dbus_interface="org.freedesktop.Application")

    def open_settings(self):
        """The quick way: over the buses, without the pointer."""
        self.activate()
        self.kestrel.accessible.press("push button", "Settings")
        self.wait_until(lambda: "Kestrel" in self.desktop.run(
            "xdotool", "getwindowfocus", "getwindowname"), "the keyboard focus")

    def swap_first(self, titles):
        """Saves by moving the first row down; the titles then. The save is over when this ends."""
        return self._swap(titles[1] + titles[0] + titles[2:], "Home", "alt+Down")

    def swap_last(self, titles):
        """Saves by moving the last row up."""
        return self._swap(titles[:-2] + titles[-1] + titles[-2], "End", "alt+Up")

    def _swap(self, titles, *keys):
        self.desktop.key(*keys)
        self.kestrel.wait_for_rows(list(titles))
        return titles

    def assert_stored(self, titles, *paths):
        """The lists are those, whole, and nothing else is there."""
        for path in paths:
            self.assertEqual(self.read(path), list_of(titles), path)
        self.assertEqual(self.leftovers(), [])
