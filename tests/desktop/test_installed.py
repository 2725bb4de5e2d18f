"""The installed program, started by the message bus through the service file beside it."""
import os
import pathlib
import shutil
import subprocess
import unittest

import dbus

from harness.case import DesktopTest
from harness.desktop import Desktop
from harness.processes import DEFAULT_TIMEOUT
from harness.program import BUS_NAME
from harness.wayland import SwayDesktop

BUILD = pathlib.Path(os.environ["KESTREL_PROGRAM"]).resolve().parents[2]
OBJECT, APPLICATION = "/app/kestrel/Kestrel", "org.freedesktop.Application"
DAEMON = "org.freedesktop.DBus"
# What the root window hears, line by line: start-up notification is among it.
LISTENER = ["stdbuf", "-oL", "xev", "-root", "-event", "property"]


class PrefixDesktop(Desktop):
    """Its bus has the services of the prefix alone."""

    bus_services = ()


class PrefixSway(SwayDesktop):
    """The same in sway."""

    bus_services = ()


@unittest.skipUnless((BUILD / "packaging/cmake_install.cmake").exists() and shutil.which("cmake"),
                     "the program was not built here")
class InstalledTest(DesktopTest):
    def install(self):
        """Into a prefix that is on nobody's PATH."""
        self.prefix = pathlib.Path(self.desktop.path("prefix"))
        for part in ("packaging", "shells/linux"):
            subprocess.run(["cmake", "--install", BUILD / part, "--prefix", self.prefix],
                           check=True, capture_output=True, timeout=60)
        os.makedirs(self.desktop.path("data", "dbus-1"))
        os.symlink(self.prefix / "share/dbus-1/services",
                   self.desktop.path("data", "dbus-1", "services"))
        self.bus = self.desktop.bus.get_object(DAEMON, "/org/freedesktop/DBus")
        self.bus.ReloadConfig(dbus_interface=DAEMON)

    def activate(self, **data):
        """As a menu does it. The id of the process that answers, and whether it was running."""
        was_running = self.desktop.has_bus_name(BUS_NAME)
        program = self.desktop.bus.get_object(BUS_NAME, OBJECT, introspect=False)
        program.Activate(dbus.Dictionary(data, signature="sv"), dbus_interface=APPLICATION,
                         timeout=DEFAULT_TIMEOUT)
        return int(self.bus.GetConnectionUnixProcessID(BUS_NAME)), was_running

    def test_bus_starts_the_installed_program_once(self):
        """And each activation opens the popover and ends the start-up notification."""
        self.desktop = self.enterContext(PrefixDesktop())
        self.install()
        listener = self.desktop.start_service(LISTENER)

        def listens():
            self.desktop.run("xprop", "-root", "-f", "MARK", "8s", "-set", "MARK", "x")
            return any("MARK" in line for line in listener.lines)
        self.wait_until(listens, "the listener")

        def notifications():
            return sum("_NET_STARTUP_INFO_BEGIN" in line for line in listener.lines)
        pid, was_running = self.activate(**{"desktop-startup-id": "menu/kestrel/1_TIME1"})
        self.assertFalse(was_running)
        self.assertEqual(os.readlink(f"/proc/{pid}/exe"), str(self.prefix / "bin/kestrel"))
        self.desktop.wait_for_window(role="popover")
        self.wait_until(lambda: notifications() == 1, "the end of the first start")
        self.desktop.key("Escape")
        self.desktop.wait_for_no_window(role="popover")
        again = self.activate(**{"desktop-startup-id": "menu/kestrel/2_TIME2"})
        self.assertEqual(again, (pid, True))
        self.desktop.wait_for_window(role="popover")
        self.wait_until(lambda: notifications() == 2, "the end of the second start")

    def test_popover_gets_the_token_of_an_activation(self):
        """As the program tells the compositor, whether it was running or not."""
        self.desktop = self.enterContext(PrefixSway(bar=False))
        self.install()
        self.bus.UpdateActivationEnvironment(
            {"WAYLAND_DISPLAY": self.desktop.environment["WAYLAND_DISPLAY"],
             "WAYLAND_DEBUG": "client"}, dbus_interface=DAEMON)
        for token in ("first-token", "second-token"):
            self.activate(**{"activation-token": token})
            self.wait_until(lambda said=f'.activate("{token}"': any(
                said in line for line in self.desktop.bus_process.lines), token)
            self.desktop.wait_for_window(role="popover")
            self.desktop.key("Escape")
            self.desktop.wait_for_no_window(role="popover")
