"""What the running program offers to other programs on the session bus: being activated, and
nothing that runs, reads or changes an item."""
import os
import xml.etree.ElementTree

import dbus
import dbus.lowlevel

from harness.case import DesktopTest
from harness.program import BUS_NAME, encoded, item, store_before_start

APPLICATION, ITEM = "org.freedesktop.Application", "org.kde.StatusNotifierItem"
PROPERTIES = dbus.PROPERTIES_IFACE
APPLICATION_PATH, ITEM_PATH = "/app/kestrel/Kestrel", "/StatusNotifierItem"
# All that there is, by object: the methods of each interface with their arguments' types.
STANDARD = {dbus.INTROSPECTABLE_IFACE: {"Introspect": "s"},
            dbus.PEER_IFACE: {"Ping": "", "GetMachineId": "s"}}
WITH_PROPERTIES = {**STANDARD, PROPERTIES: {"Get": "ssv", "Set": "ssv", "GetAll": "sa{sv}"}}
OFFERED = {
    "/": STANDARD, "/app": STANDARD, "/app/kestrel": STANDARD,
    APPLICATION_PATH: {**WITH_PROPERTIES, APPLICATION: {
        "Activate": "a{sv}", "Open": "asa{sv}", "ActivateAction": "sava{sv}"}},
    ITEM_PATH: {**WITH_PROPERTIES, ITEM: {
        "Activate": "ii", "SecondaryActivate": "ii", "ContextMenu": "ii", "Scroll": "is",
        "ProvideXdgActivationToken": "s"}},
}
HUGE = "x" * 4_000_000
HOSTILE = ("$(touch canary)", "`touch canary`", "file:///etc/passwd", "-platform", "%n%s", "\x01",
           "Mark", HUGE)


class BusTest(DesktopTest):
    """The list holds one item that would leave a mark, were it launched."""

    def start(self, **options):
        self.start_desktop(panel="fake")
        self.mark = self.desktop.path("mark")
        script = self.desktop.write("home/mark.sh", f"#!/bin/sh\ntouch '{self.mark}'\n", 0o755)
        self.items = [item("App", "Mark", script, "00000000-0000-4000-8000-000000000001")]
        store_before_start(self.desktop, self.items)
        self.start_kestrel(**options)
        self.wait_until(self.desktop.status_items, "the icon")
        self.bus = self.desktop.bus

    def connections(self):
        """The unique names of all connections that the program has to the session bus."""
        daemon = self.bus.get_object(dbus.BUS_DAEMON_NAME, dbus.BUS_DAEMON_PATH, introspect=False)
        return [str(name) for name in self.bus.list_names() if name.startswith(":")
                and daemon.GetConnectionUnixProcessID(name, dbus_interface=dbus.BUS_DAEMON_IFACE)
                == self.kestrel.process.pid]

    def call(self, path, interface, method, *arguments, signature="", limit=30):
        """What the program answers; the name of its error where it refuses."""
        message = dbus.lowlevel.MethodCallMessage(BUS_NAME, path, interface, method)
        message.append(*arguments, signature=signature)
        try:
            reply = self.bus.send_message_with_reply_and_block(message, limit)
        except dbus.DBusException as error:
            return error.get_dbus_name()
        return reply.get_args_list()

    def introspect(self, owner, path):
        node = self.bus.get_object(owner, path, introspect=False)
        return xml.etree.ElementTree.fromstring(
            node.Introspect(dbus_interface=dbus.INTROSPECTABLE_IFACE, timeout=8))

    def objects(self, owner, path="/"):
        """(path, what introspection says) of every object of a connection."""
        node = self.introspect(owner, path)
        yield path, node
        for child in node.findall("node"):
            yield from self.objects(owner, path.rstrip("/") + "/" + child.get("name"))

    def assert_untouched(self):
        """Nothing has run, nothing is stored anew, and the program works as before."""
        self.assertFalse(os.path.exists(self.mark))
        self.assertFalse(os.path.exists(self.desktop.path("home", "canary")))
        self.assertEqual(self.kestrel.stored(), encoded(self.items))
        self.assertTrue(self.kestrel.process.is_running)
        self.kestrel.settle_popover()
        self.kestrel.wait_for_rows(["Mark"])

    def test_bus_offers_activation_and_nothing_else(self):
        self.start()
        self.kestrel.open_settings()
        found, properties = {}, set()
        for owner in self.connections():
            for path, node in self.objects(owner):
                methods = found.setdefault(path, {})
                for interface in node.findall("interface"):
                    methods[interface.get("name")] = {
                        method.get("name"): "".join(arg.get("type")
                                                    for arg in method.findall("arg"))
                        for method in interface.findall("method")}
                    properties |= {prop.get("access") for prop in interface.findall("property")}
        self.assertEqual(found, OFFERED)
        self.assertEqual(properties, {"read"})

    def test_names_on_the_bus_cannot_be_taken_over(self):
        self.start()
        own = f"{ITEM}-{self.kestrel.process.pid}-1"
        for name in (BUS_NAME, own):
            answer = self.bus.request_name(name, dbus.bus.NAME_FLAG_REPLACE_EXISTING
                                           | dbus.bus.NAME_FLAG_DO_NOT_QUEUE)
            self.assertEqual(answer, dbus.bus.REQUEST_NAME_REPLY_EXISTS)
        self.assert_untouched()

    def test_calls_with_wrong_and_huge_arguments_do_nothing(self):
        self.start()
        for path, interfaces in OFFERED.items():
            for interface in (APPLICATION, ITEM):
                for method in interfaces.get(interface, {}):
                    for text in HOSTILE:
                        self.call(path, interface, method, text, signature="s")
                    self.call(path, interface, method, [HUGE] * 3, {"a": HUGE},
                              signature="asa{sv}")
                    for wrong, signature in (((), ""), ((1.5,), "d"), ((2 ** 64 - 1,), "t"),
                                             (([b"\xff" * 100],), "aay")):
                        answer = self.call(path, interface, method, *wrong, signature=signature)
                        self.assertIn("UnknownMethod", answer)
        self.assert_untouched()

    def test_open_and_actions_and_unknown_methods_run_nothing(self):
        self.start()
        path = self.items[0]["path"]
        for text in (*HOSTILE, path, "file://" + path, self.items[0]["id"]):
            self.assertEqual(self.call(APPLICATION_PATH, APPLICATION, "Open", [text], {},
                                       signature="asa{sv}"), [])
            self.assertEqual(self.call(APPLICATION_PATH, APPLICATION, "ActivateAction", text,
                                       [text], {"desktop-startup-id": text}, signature="sava{sv}"),
                             [])
        for object_path in OFFERED:
            for method in ("Quit", "quit", "Launch", "execute", "deleteLater", "close", "reload",
                           "activated", "Introspect2", "setProperty"):
                answer = self.call(object_path, None, method)
                self.assertRegex(str(answer), "Unknown(Method|Interface|Object)")
        for interface in (ITEM, APPLICATION, ""):
            for object_path in (ITEM_PATH, APPLICATION_PATH):
                for name in ("Id", "Title", "IconName", "Menu", "parent"):
                    self.assertIn("org.freedesktop.DBus.Error", self.call(
                        object_path, PROPERTIES, "Set", interface, name, HUGE, signature="ssv"))
                # The toolkit lets the name of its object be set, which nothing reads.
                self.call(object_path, PROPERTIES, "Set", interface, "objectName",
                          "$(touch canary)", signature="ssv")
        self.assertEqual(self.desktop.status_item_properties()["Title"], "Kestrel")
        self.assert_untouched()

    def test_floods_of_calls_leave_it_working(self):
        self.start()
        for path, interface, method, arguments, signature in (
                (APPLICATION_PATH, APPLICATION, "Activate", ({"a": "b"},), "a{sv}"),
                (ITEM_PATH, ITEM, "Activate", (1, 1), "ii"),
                (ITEM_PATH, ITEM, "Scroll", (1, "x" * 1000), "is"),
                (ITEM_PATH, PROPERTIES, "GetAll", (ITEM,), "s"),
                (ITEM_PATH, ITEM, "ContextMenu", (-2 ** 31, 2 ** 31 - 1), "ii")):
            for _ in range(400):
                message = dbus.lowlevel.MethodCallMessage(BUS_NAME, path, interface, method)
                message.append(*arguments, signature=signature)
                message.set_no_reply(True)
                self.bus.send_message(message)
            self.bus.flush()
            self.assertEqual(self.call(ITEM_PATH, dbus.PEER_IFACE, "Ping"), [])
        self.assert_untouched()

    def test_arguments_and_a_second_start_run_nothing(self):
        arguments = ["-platformpluginpath", "/nowhere", "--quit", "$(touch canary)",
                     "-stylesheet", "/nowhere", "Mark"]
        program = os.environ["KESTREL_PROGRAM"]
        self.start(command=[program, *arguments])
        second = self.desktop.start([program, *arguments, self.items[0]["path"]],
                                    {"XDG_ACTIVATION_TOKEN": "$(touch canary)",
                                     "DESKTOP_STARTUP_ID": "x" * 100_000})
        self.assertEqual(second.wait(), 0)
        self.kestrel.wait_for_popover()
        self.assert_untouched()

    def test_name_that_somebody_else_holds_gets_a_call_and_nothing_more(self):
        """Whoever has it first is taken for the running program; without an answer, too."""
        self.start_desktop(panel="fake")
        store_before_start(self.desktop, [])
        self.desktop.bus.request_name(BUS_NAME)
        kestrel = self.start_kestrel()
        self.assertEqual(kestrel.process.wait(20), 0)
        self.assertEqual(self.desktop.status_items(), [])
        self.assertEqual(os.listdir(self.desktop.path("data", "kestrel")), ["launcherItems"])
