"""Test desktops do not see what else is installed on the machine that they run on."""
import pathlib
import sys
import tempfile

from harness.case import DesktopTest
from harness.desktop import MACHINE, Desktop

SERVICE = "usr/share/dbus-1/services/org.example.Planted.service"
# The applications that GIO, and so the program, finds, and where it looks for other things.
FOUND = """from gi.repository import Gio, GLib
print(*sorted(entry.get_id() for entry in Gio.AppInfo.get_all()))
for folder in GLib.get_system_config_dirs() + GLib.get_system_data_dirs():
    print(folder)
"""


class MachineTest(DesktopTest):
    """On a stand-in for the machine: what it has for all its desktops, and what is planted."""

    def setUp(self):
        super().setUp()
        self.machine = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        for folder in ("usr/share", "etc/xdg"):
            (self.machine / folder).mkdir(parents=True)
            for path in (MACHINE / folder).iterdir():
                if path.name not in ("applications", "dbus-1"):
                    (self.machine / folder / path.name).symlink_to(path)
        self.plant(SERVICE, "[D-BUS Service]\nName=org.example.Planted\nExec=/bin/false\n")
        self.plant(SERVICE.replace("org.example.Planted", "org.a11y.Bus"),
                   "[D-BUS Service]\nName=org.a11y.Bus\nExec=/bin/false\n")
        self.plant("usr/share/applications/planted.desktop",
                   "[Desktop Entry]\nType=Application\nName=Planted\nExec=true\n")

    def plant(self, path, text):
        path = self.machine / path
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def test_only_named_services_and_no_applications_of_the_machine_are_seen(self):
        class PlantedDesktop(Desktop):
            machine = self.machine
        desktop = self.desktop = self.enterContext(PlantedDesktop())
        desktop.write("data/applications/own.desktop",
                      "[Desktop Entry]\nType=Application\nName=Own\nExec=true\n")
        names = {str(name) for name in desktop.bus.list_activatable_names()}
        self.assertEqual(names, {"org.freedesktop.DBus", "org.a11y.Bus"})
        entries, *folders = desktop.run(sys.executable, "-c", FOUND).splitlines()
        self.assertEqual(entries, "own.desktop")
        self.assertEqual([folder for folder in folders
                          if not folder.startswith(desktop.folder)], [])

    def test_fonts_are_the_same_whatever_family_is_asked_for(self):
        desktop = self.desktop = self.enterContext(Desktop())
        for family, expected in (("Sans Serif", "DejaVu Sans"), ("Nobody's Sans", "DejaVu Sans"),
                                 ("", "DejaVu Sans"), ("monospace", "DejaVu Sans Mono")):
            with self.subTest(family):
                self.assertEqual(desktop.run("fc-match", "--format=%{family}", family), expected)
