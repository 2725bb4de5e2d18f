"""The pictures of the README and of software catalogues: the popover, light and dark, the settings
window and the form, at twice the scale.

The list is a sample whose programs and icons are drawn here; it lies in file systems that only the
program sees, so that neither this machine's paths nor other people's artwork are in a picture.
"""
import os
import pathlib
import sys

from harness import fake_portal
from harness.desktop import Desktop
from harness.images import Rect
from harness.mounts import Mounts, can_mount
from harness.processes import wait_for
from harness.program import Kestrel, encoded, item, popover_content

SCALE = 2
BACKGROUND = {"light": (0x8F, 0xB3, 0xC9), "dark": (0x24, 0x38, 0x4A)}
MARGIN = 24 * SCALE
PANEL = 30 * SCALE
APPLICATIONS, ICONS, HOME = "/usr/share/applications", "/usr/share/icons", "/home"
EMPTY = ("/usr/share/pixmaps",)
HIDDEN_SIZE = "4m"

APP, FILE, COMMAND = "App", "Command File", "Inline Command"
ICON = """<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 64 64">
<rect x="4" y="4" width="56" height="56" rx="13" fill="{color}"/>
<g fill="none" stroke="#fff" stroke-width="5" stroke-linecap="round" stroke-linejoin="round">
{drawing}</g></svg>
"""
# The icons by their names in a theme: the tile's colour and the lines on it.
DRAWINGS = {
    "sample-notes": ("#d9822b", '<path d="M19 21h26M19 32h26M19 43h16"/>'),
    "sample-sketch": ("#8a5cc2", '<path d="M19 45l4-12 17-17 8 8-17 17zM36 20l8 8"/>'),
    "sample-music": ("#c2456b", '<circle cx="23" cy="43" r="5"/><circle cx="42" cy="39" r="5"/>'
                                '<path d="M28 43V21l19-4v22"/>'),
    "sample-map": ("#3c8f5a", '<path d="M32 48C24 38 20 33 20 27a12 12 0 0 1 24 0'
                              'c0 6-4 11-12 21z"/><circle cx="32" cy="27" r="3"/>'),
    "sample-terminal": ("#3b4754", '<path d="M18 23l10 9-10 9M33 43h13"/>'),
    "text-x-script": ("#4a78b5", '<path d="M25 21l-9 11 9 11M39 21l9 11-9 11M35 18l-6 28"/>'),
}
THEME = """[Icon Theme]
Name=Hicolor
Directories=scalable/apps
[scalable/apps]
Size=64
MinSize=8
MaxSize=512
Type=Scalable
"""
PROGRAMS = {"field-notes": ("Field Notes", "sample-notes", "true", ""),
            "sketchbook": ("Sketchbook", "sample-sketch", "true", ""),
            "record-shelf": ("Record Shelf", "sample-music", "true", ""),
            "footpaths": ("Footpaths", "sample-map", "true", ""),
            "terminal": ("Terminal", "sample-terminal", "xterm", "TerminalEmulator;")}
SCRIPTS = ("publish-site.sh", "back-up.sh")


def sample_items():
    """The list that the pictures show."""
    texts = ((APP, "Field Notes", f"{APPLICATIONS}/field-notes.desktop"),
             (APP, "Sketchbook", f"{APPLICATIONS}/sketchbook.desktop"),
             (APP, "Record Shelf", f"{APPLICATIONS}/record-shelf.desktop"),
             (APP, "Footpaths", f"{APPLICATIONS}/footpaths.desktop"),
             (FILE, "Publish the site", f"{HOME}/robin/bin/publish-site.sh"),
             (FILE, "Back up photos", f"{HOME}/robin/bin/back-up.sh"),
             (COMMAND, "Disk space", "df -h --type=ext4"),
             (COMMAND, "Log in at home", "ssh robin@home.example"))
    return [item(kind, title, text, f"00000000-0000-4000-8000-{number:012X}")
            for number, (kind, title, text) in enumerate(texts)]


class Pictures:
    """Takes them with a program, into a folder."""

    def __init__(self, program, folder):
        self.program, self.folder = program, pathlib.Path(folder)
        self.desktop = self.mounts = self.kestrel = None

    def take(self):
        """Returns the names of the files; none where a machine lets its users mount nothing."""
        if not can_mount():
            return []
        self.folder.mkdir(parents=True, exist_ok=True)
        names = []
        for look in ("light", "dark"):
            with Desktop(window_manager="xfwm4", compositor=True, width=1400,
                         height=1100) as self.desktop:
                self.mounts = Mounts(self.desktop.environment)
                try:
                    names += self.take_look(look)
                finally:
                    self.mounts.close()
        return names

    def take_look(self, look):
        self.desktop.environment.update(GDK_SCALE=str(SCALE))
        self.desktop.fill_background(BACKGROUND[look])
        self.desktop.start_panel("xfce4-panel", background=look)
        self.start_portal(look)
        self.start()
        yield self.popover(look)
        if look == "light":
            yield self.settings()
            yield self.form()

    def start_portal(self, look):
        number = {"dark": "1", "light": "2"}[look]
        portal = self.desktop.start_service([sys.executable, fake_portal.PROGRAM, number])
        portal.wait_for_line("^ready")

    def start(self):
        for folder in (APPLICATIONS, ICONS, HOME, *EMPTY):
            self.mounts.mount(folder, HIDDEN_SIZE)
        for name, (title, icon, program, categories) in PROGRAMS.items():
            self.write(f"{APPLICATIONS}/{name}.desktop", (
                f"[Desktop Entry]\nType=Application\nName={title}\nIcon={icon}\nExec={program}\n"
                f"Categories={categories}\n"))
        self.write(f"{ICONS}/hicolor/index.theme", THEME)
        for name, (color, drawing) in DRAWINGS.items():
            self.write(f"{ICONS}/hicolor/scalable/apps/{name}.svg",
                       ICON.format(color=color, drawing=drawing))
        for name in SCRIPTS:
            self.write(f"{HOME}/robin/bin/{name}", "#!/bin/sh\n", 0o755)
        self.desktop.write("data/kestrel/launcherItems", encoded(sample_items()))
        os.chmod(self.desktop.path("data", "kestrel"), 0o700)
        self.kestrel = Kestrel(self.desktop, self.mounts.command(self.program),
                               {"QT_SCALE_FACTOR": str(SCALE), "TERMINAL": "xterm",
                                "XDG_DATA_DIRS": "/usr/share"})

    def write(self, path, text, mode=0o644):
        """Writes a file that the program alone sees."""
        file = pathlib.Path(self.mounts.path(path))
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")
        file.chmod(mode)

    def save(self, name, rect):
        image = self.desktop.settled_screenshot(rect)
        image.save(self.folder / f"{name}.png")
        return f"{name}.png"

    @property
    def aside(self):
        """A place for the pointer that no picture shows."""
        return 0, self.desktop.bounds.height - 1

    def center(self, role, name):
        """Where a thing is on the screen; the program tells it before the scale."""
        x, y = self.kestrel.accessible.find(role, name).rect.center
        return x * SCALE, y * SCALE

    def popover(self, look):
        """With the panel above it, and the pointer on its second row."""
        self.desktop.click(*self.desktop.icon_rect().center)
        content = popover_content(self.kestrel.wait_for_popover(), SCALE)
        self.desktop.move(*self.center("list item", "Sketchbook"))
        left, right = content.x - MARGIN, self.desktop.bounds.width
        return self.save(f"popover-{look}", Rect(
            left, 0, right - left, content.y + content.height + MARGIN))

    def settings(self):
        self.desktop.click(*self.center("push button", "Settings"))
        window = self.desktop.wait_for_window(role="settings").rect
        self.desktop.click(*self.center("list item", "Publish the site"))
        self.desktop.move(*self.aside)
        return self.save("settings", window)

    def form(self):
        window = self.desktop.wait_for_window(role="settings").rect
        self.desktop.double_click(*self.center("list item", "Disk space"))
        wait_for(self.kestrel.form_is_open, what="the form")
        self.desktop.move(*self.aside)
        return self.save("form", window)
