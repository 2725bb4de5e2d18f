#!/usr/bin/env python3
"""A fake settings portal on the session bus, which tells a desktop's look and changes it.

    fake_portal.py SCHEME [CONTRAST]     0: no preference, 1: dark, 2: light; 1: high contrast

Its Set(key, value) is no portal's: a test calls it as a user turns the desktop's switch.
"""
import pathlib
import sys

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

NAME = "org.freedesktop.portal.Desktop"
PATH = "/org/freedesktop/portal/desktop"
SETTINGS = "org.freedesktop.portal.Settings"
SWITCH = "app.kestrel.Test.Switch"
PROGRAM = str(pathlib.Path(__file__).resolve())
APPEARANCE = "org.freedesktop.appearance"


class Portal(dbus.service.Object):
    """The part of the settings interface that programs ask for the look."""

    def __init__(self, bus, scheme, contrast):
        self.values = {"color-scheme": dbus.UInt32(scheme), "contrast": dbus.UInt32(contrast)}
        super().__init__(bus, PATH)

    @dbus.service.method(SETTINGS, in_signature="as", out_signature="a{sa{sv}}")
    def ReadAll(self, namespaces):
        return {APPEARANCE: self.values} if APPEARANCE in namespaces else {}

    @dbus.service.signal(SETTINGS, signature="ssv")
    def SettingChanged(self, namespace, key, value):
        pass

    @dbus.service.method(SWITCH, in_signature="su")
    def Set(self, key, value):
        self.values[str(key)] = dbus.UInt32(value)
        self.SettingChanged(APPEARANCE, key, self.values[str(key)])


def main():
    DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    numbers = [int(word) for word in sys.argv[1:]] + [0]
    portal = Portal(bus, *numbers[:2])
    name = dbus.service.BusName(NAME, bus, do_not_queue=True)
    print("ready", portal, name.get_name(), flush=True)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
