"""The installed program as its user meets it: the popover, the settings, the service of the bus.

    KESTREL_PROGRAM=/usr/bin/kestrel /usr/bin/python3 debian/tests/installed_program.py

With KESTREL_KEPT_DATA=FOLDER, which must not exist yet, the list that one of the tests makes is kept
there and stays when the test has ended.
"""
import json
import os
import pathlib
import signal
import sys
import unittest

import dbus

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests/desktop"))

from harness.case import DesktopTest  # noqa: E402
from harness.program import BUS_NAME, Kestrel, item, store_before_start  # noqa: E402

SERVICE = f"/usr/share/dbus-1/services/{BUS_NAME}.service"
DAEMON = "org.freedesktop.DBus"
OBJECT = "/" + BUS_NAME.replace(".", "/")
FIRST = item("Inline Command", "Hello", "echo hello", "00000000-0000-4000-8000-000000000001")


class InstalledProgramTest(DesktopTest):
    """On a display, a session bus and a panel of the test's own."""

    def test_click_on_the_icon_opens_the_popover(self):
        self.start_desktop(panel="fake", panel_options=("--bar=dock",))
        store_before_start(self.desktop, [FIRST])
        kestrel = self.start_kestrel()
        self.desktop.click(*self.desktop.icon_rect().center)
        kestrel.wait_for_popover()
        kestrel.wait_for_rows(["Hello"])
        self.assertEqual(kestrel.quit(), 0)

    def test_item_that_is_added_is_kept(self):
        self.start_desktop(panel="fake")
        folder = os.environ.get("KESTREL_KEPT_DATA", self.desktop.path("kept"))
        os.makedirs(folder, mode=0o700)
        kestrel = self.start_kestrel({"XDG_DATA_HOME": folder})
        kestrel.open_settings()
        kestrel.add("Inline Command", "Hello", "echo hello")

        def stored():
            try:
                return json.loads(pathlib.Path(folder, "kestrel/launcherItems").read_bytes())
            except FileNotFoundError:
                return None
        self.wait_until(stored, "the list to be stored")
        self.assertEqual([each["title"] for each in stored()], ["Hello"])

    def test_bus_starts_it_with_its_icon_and_opens_the_popover_the_next_time(self):
        self.start_desktop(panel="fake")
        self.desktop.write(f"data/dbus-1/services/{BUS_NAME}.service",
                           pathlib.Path(SERVICE).read_bytes())
        daemon = dbus.Interface(self.desktop.bus.get_object(DAEMON, "/org/freedesktop/DBus"), DAEMON)
        daemon.ReloadConfig()
        daemon.UpdateActivationEnvironment(self.desktop.environment)
        application = dbus.Interface(self.desktop.bus.get_object(BUS_NAME, OBJECT),
                                     "org.freedesktop.Application")
        application.Activate(dbus.Dictionary(signature="sv"))
        started = int(daemon.GetConnectionUnixProcessID(BUS_NAME))
        self.addCleanup(os.kill, started, signal.SIGTERM)
        self.assertEqual(os.readlink(f"/proc/{started}/exe"), os.environ["KESTREL_PROGRAM"])
        self.desktop.status_item()
        application.Activate(dbus.Dictionary(signature="sv"))
        self.desktop.wait_for_window(role="popover")

    def test_second_start_opens_the_popover_of_the_first(self):
        self.start_desktop(panel="fake")
        kestrel = self.start_kestrel()
        self.desktop.status_item()
        second = Kestrel(self.desktop, [os.environ["KESTREL_PROGRAM"]])
        self.assertEqual(second.process.wait(), 0)
        kestrel.wait_for_popover()


if __name__ == "__main__":
    unittest.main()
