#!/usr/bin/env python3
"""A fake StatusNotifierWatcher and host on the session bus, one JSON line for each event,
with the seconds of the system's monotonic clock.

    (no option)          only the watcher and the host: no bar, a test calls Activate itself
    --bar=dock           also a bar that never takes the keyboard focus, like most panels
    --bar=normal         also a bar that takes the focus when it is clicked
    --on=release|press   which event of the pointer calls Activate (release)
    --at=pointer|zero    the position that it passes: the pointer's or 0, 0 (pointer)
    --edge=top|bottom    where the bar is (top)
    --token=TEXT         what it provides as an activation token before each Activate; without the
                         option it provides none
"""
import argparse
import json
import time

import dbus
import dbus.service
import gi
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
ICON_SIZE = 22
BAR_HEIGHT = 30
# The size of a bar's cell is known a moment after GTK has laid it out.
LAYOUT_DELAY_MS = 80

WATCHER_PROPERTIES = (("RegisteredStatusNotifierItems", "as"),
                      ("IsStatusNotifierHostRegistered", "b"), ("ProtocolVersion", "i"))


def say(event, **details):
    print(json.dumps({"event": event, "time": time.monotonic(), **details}), flush=True)


class Watcher(dbus.service.Object):
    """The watcher's D-Bus interface; it shows each item on the bar where there is one."""

    def __init__(self, bus, bar):
        self.owners = {}
        self.bus, self.bar = bus, bar
        super().__init__(bus, "/StatusNotifierWatcher")
        bus.add_signal_receiver(self.owner_changed, "NameOwnerChanged", "org.freedesktop.DBus")

    def owner_changed(self, name, _old, new):
        gone = [] if new else [item for item, owner in self.owners.items()
                               if name in (owner, item.split("/")[0])]
        for item in gone:
            del self.owners[item]
            self.StatusNotifierItemUnregistered(item)
            say("unregistered", item=item)
            if self.bar:
                self.bar.remove(item)

    @dbus.service.method(WATCHER, in_signature="s", sender_keyword="sender")
    def RegisterStatusNotifierItem(self, service, sender=None):
        service = str(service)
        item = sender + service if service[0] == "/" else service + "/StatusNotifierItem"
        self.owners[item] = str(sender)
        say("registered", item=item)
        self.StatusNotifierItemRegistered(item)
        GLib.idle_add(self.bar.add if self.bar else self.fetch, item)

    def fetch(self, item):
        """Reads the item, as a host does that shows it."""
        name, path = item.split("/", 1)
        self.bus.get_object(name, "/" + path, introspect=False).GetAll(
            ITEM, dbus_interface=dbus.PROPERTIES_IFACE, reply_handler=lambda _: None,
            error_handler=lambda error: say("error", what=str(error)))
        return False

    @dbus.service.method(WATCHER, in_signature="s")
    def RegisterStatusNotifierHost(self, _service):
        self.StatusNotifierHostRegistered()

    @dbus.service.signal(WATCHER, signature="s")
    def StatusNotifierItemRegistered(self, item):
        pass

    @dbus.service.signal(WATCHER, signature="s")
    def StatusNotifierItemUnregistered(self, item):
        pass

    @dbus.service.signal(WATCHER)
    def StatusNotifierHostRegistered(self):
        pass

    # Clients that read properties by introspection find none in what this library writes.
    @dbus.service.method(dbus.INTROSPECTABLE_IFACE, out_signature="s", path_keyword="object_path",
                         connection_keyword="connection")
    def Introspect(self, object_path, connection):
        text = dbus.service.Object.Introspect(self, object_path, connection)
        properties = "".join(f'<property name="{name}" type="{kind}" access="read"/>'
                             for name, kind in WATCHER_PROPERTIES)
        start = f'<interface name="{WATCHER}">'
        return text.replace(start, start + properties)

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return self.GetAll(interface)[name]

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="s", out_signature="a{sv}")
    def GetAll(self, _interface):
        return {"RegisteredStatusNotifierItems": dbus.Array(list(self.owners), signature="s"),
                "IsStatusNotifierHostRegistered": dbus.Boolean(True),
                "ProtocolVersion": dbus.Int32(0)}


class Bar:
    """A panel along the whole edge of the screen, with the icons at its right."""

    def __init__(self, bus, options):
        for name in ("Gdk", "Gtk"):
            gi.require_version(name, "3.0")
        from gi.repository import Gdk, GdkPixbuf, Gtk
        self.gtk, self.pixbuf, self.gdk = Gtk, GdkPixbuf, Gdk
        self.bus, self.options, self.cells = bus, options, {}
        window = Gtk.Window()
        window.set_title("bar")
        window.set_decorated(False)
        if options.bar == "dock":
            window.set_type_hint(Gdk.WindowTypeHint.DOCK)
            window.set_accept_focus(False)
        screen = Gdk.Display.get_default().get_monitor(0).get_geometry()
        window.set_default_size(screen.width, BAR_HEIGHT)
        window.move(0, 0 if options.edge == "top" else screen.height - BAR_HEIGHT)
        self.box = Gtk.Box(spacing=4)
        self.box.set_halign(Gtk.Align.END)
        window.add(self.box)
        window.show_all()

    def add(self, item):
        name, path = item.split("/", 1)
        proxy = self.bus.get_object(name, "/" + path, introspect=False)
        if item not in self.cells:
            image = self.gtk.Image()
            image.set_size_request(ICON_SIZE + 2, ICON_SIZE + 2)
            cell = self.gtk.EventBox()
            cell.add(image)
            cell.connect(f"button-{self.options.on}-event", self.clicked, proxy)
            cell.connect("size-allocate", lambda *_: self.report_later(item))
            self.cells[item] = (cell, image)
            self.box.pack_end(cell, False, False, 0)
            cell.show_all()
            proxy.connect_to_signal("NewIcon", lambda *_: self.refresh(item, proxy),
                                    dbus_interface=ITEM)
        self.refresh(item, proxy)
        return False

    def refresh(self, item, proxy):
        proxy.GetAll(ITEM, dbus_interface=dbus.PROPERTIES_IFACE,
                     reply_handler=lambda properties: self.paint(item, properties),
                     error_handler=lambda error: say("error", what=str(error)))

    def paint(self, item, properties):
        if item not in self.cells:
            return
        image = self.cells[item][1]
        pixmaps = properties.get("IconPixmap")
        if pixmaps:
            image.set_from_pixbuf(self.pixbuf_of(pixmaps))
        elif properties.get("IconName"):
            image.set_from_icon_name(str(properties["IconName"]), self.gtk.IconSize.LARGE_TOOLBAR)
        self.report_later(item)

    def pixbuf_of(self, pixmaps):
        """The pixmap nearest to the icon's size; its bytes are alpha, red, green, blue."""
        width, height, data = min(pixmaps, key=lambda p: abs(int(p[0]) - ICON_SIZE))
        width, height, data = int(width), int(height), bytes(data)
        turned = bytearray(len(data))
        for channel in range(4):
            turned[channel::4] = data[(channel + 1) % 4::4]
        pixbuf = self.pixbuf.Pixbuf.new_from_bytes(
            GLib.Bytes.new(bytes(turned)), self.pixbuf.Colorspace.RGB, True, 8, width, height,
            width * 4)
        return pixbuf.scale_simple(ICON_SIZE, ICON_SIZE, self.pixbuf.InterpType.BILINEAR)

    def report_later(self, item):
        GLib.timeout_add(LAYOUT_DELAY_MS, self.report, item)

    def report(self, item):
        cell = self.cells.get(item, (None,))[0]
        if cell and cell.get_window():
            origin, size = cell.get_window().get_origin(), cell.get_allocation()
            say("icon", item=item, rect=[origin.x, origin.y, size.width, size.height])
        return False

    def remove(self, item):
        if item in self.cells:
            self.cells.pop(item)[0].destroy()

    def clicked(self, _cell, event, proxy):
        # GTK adds an event of its own to the second of two quick presses.
        if event.type not in (self.gdk.EventType.BUTTON_PRESS, self.gdk.EventType.BUTTON_RELEASE):
            return True
        at = (int(event.x_root), int(event.y_root)) if self.options.at == "pointer" else (0, 0)
        method = {1: "Activate", 2: "SecondaryActivate", 3: "ContextMenu"}.get(event.button)
        say("button", button=event.button, call=method)
        if method == "Activate" and self.options.token is not None:
            proxy.get_dbus_method("ProvideXdgActivationToken", ITEM)(
                self.options.token, signature="s", ignore_reply=True)
        if method:
            proxy.get_dbus_method(method, ITEM)(*at, signature="ii", ignore_reply=True)
        return True


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--bar", choices=("dock", "normal"))
    parser.add_argument("--on", choices=("release", "press"), default="release")
    parser.add_argument("--at", choices=("pointer", "zero"), default="pointer")
    parser.add_argument("--edge", choices=("top", "bottom"), default="top")
    parser.add_argument("--token")
    options = parser.parse_args()

    DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    names = [dbus.service.BusName(name, bus, do_not_queue=True)
             for name in (WATCHER, "org.kde.StatusNotifierHost-kestrel-test")]
    watcher = Watcher(bus, Bar(bus, options) if options.bar else None)
    say("ready", names=len(names), path=watcher._object_path)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
