"""A throw-away Wayland desktop: sway without a screen, waybar as the panel, XWayland."""
import json
import os
import pwd
import re
import time
from typing import NamedTuple

from harness.bars import Bar
from harness.desktop import Session
from harness.images import Image, Rect
from harness.panels import BACKGROUNDS, WATCHER
from harness.processes import DEFAULT_TIMEOUT, wait_for
from harness.wayland_input import WaylandInput

SWAY = """xwayland enable
default_border normal
focus_on_window_activation smart
seat seat0 hide_cursor 0
floating_modifier none
"""
OUTPUT = """output HEADLESS-{number} resolution {width}x{height} position {x} {y} scale {scale}
output HEADLESS-{number} background #35506B solid_color
"""
WAYBAR_STYLE = "* {{ font-size: 12px; min-height: 0 }} window {{ background: {background} }}"
BAR_HEIGHT = 30
POPOVER_WITH_SHADOW = 280


class SwayWindow(NamedTuple):
    """An ordinary window; popups are in no list of sway's."""

    title: str
    rect: Rect
    is_focused: bool


class SwayDesktop(Session):
    """Programs on it see a Wayland and an X display, and choose for themselves.

    screens: how many screens stand side by side; scale: how many of their pixels make a pixel of
    the desktop; bar: whether a bar is there from the beginning.
    """

    def __init__(self, width=1280, height=800, screens=1, scale=1, bar=True):
        super().__init__()
        self.monitors = [Rect(n * width, 0, width, height) for n in range(screens)]
        self.bounds = Rect(0, 0, screens * width, height)
        self._input, self._bar, self._scale = None, None, scale
        self.environment.update(
            XDG_SESSION_TYPE="wayland", XDG_CURRENT_DESKTOP="sway", WLR_BACKENDS="headless",
            WLR_LIBINPUT_NO_DEVICES="1", WLR_RENDERER="pixman", WLR_HEADLESS_OUTPUTS=str(screens))
        try:
            self._start_bus()
            self._start_sway()
            if bar:
                self.start_bar()
        except BaseException:
            self.stop()
            raise

    def stop(self):
        if self._input:
            self._input.close()
        super().stop()

    def _start_sway(self):
        outputs = (OUTPUT.format(number=number + 1, x=screen.x, y=screen.y, scale=self._scale,
                                 width=self._scale * screen.width,
                                 height=self._scale * screen.height)
                   for number, screen in enumerate(self.monitors))
        config = self.write("sway.conf", SWAY + "".join(outputs))
        # sway does not run as root: there it gets a user namespace in which it is somebody else, with
        # a name, because Xwayland lets in its own user by name.
        user = pwd.getpwnam("nobody")
        wrapper = ["unshare", "--user", f"--map-user={user.pw_uid}", f"--map-group={user.pw_gid}"]
        self.start_service((wrapper if os.geteuid() == 0 else []) + ["sway", "-c", config])
        folder = self.environment["XDG_RUNTIME_DIR"]

        def socket(pattern):
            return lambda: next((name for name in os.listdir(folder)
                                 if re.fullmatch(pattern, name)), None)
        display = wait_for(socket(r"wayland-\d+"), what="sway's display")
        control = wait_for(socket(r"sway-ipc\..*"), what="sway's control socket")
        self.environment["SWAYSOCK"] = os.path.join(folder, control)
        wait_for(lambda: "HEADLESS" in self.run("swaymsg", "-t", "get_outputs"), what="an output")

        def virtual_input():
            try:
                return WaylandInput(os.path.join(folder, display), *self.bounds[2:])
            except KeyError:
                return None
        self._input = wait_for(virtual_input, what="the virtual pointer and keyboard")
        self.environment.update(WAYLAND_DISPLAY=display, DISPLAY=self._x_display(),
                                GDK_BACKEND="wayland")

    def _x_display(self):
        """sway names the X display only to what it starts itself."""
        file = self.path("display")

        def told():
            if not os.path.exists(file):
                self.run("swaymsg", "exec", f'sh -c "echo $DISPLAY > {file}.new; '
                                            f'mv {file}.new {file}"')
                time.sleep(0.05)
                return None
            with open(file, encoding="utf-8") as content:
                return content.read().strip()
        return wait_for(told, what="the X display")

    def start_bar(self, edge="top", background="dark", monitor=0):
        """Starts waybar on one of the screens and waits until it is painted."""
        bar = Bar(self.monitors[monitor], edge, BAR_HEIGHT)
        thickness = "width" if bar.is_vertical else "height"
        self.write("config/waybar/config", json.dumps({
            "layer": "top", "position": edge, thickness: BAR_HEIGHT,
            "output": f"HEADLESS-{monitor + 1}", "modules-right": ["tray"],
            "tray": {"icon-size": 22, "spacing": 4, "show-passive-items": True}}))
        self.write("config/waybar/style.css", WAYBAR_STYLE.format(
            background=BACKGROUNDS[background]))
        self._bar = self.start_service(["waybar"])
        wait_for(lambda: self.has_bus_name(WATCHER), what="waybar")
        color = tuple(bytes.fromhex(BACKGROUNDS[background][1:]))
        wait_for(lambda: self.screenshot().pixel(bar.rect.x + 4, bar.rect.y + 4) == color,
                 what="the bar", pause=0.1)
        return bar

    def kill_bar(self):
        """Ends the bar as a crash would."""
        self._bar.kill()
        wait_for(lambda: not self.has_bus_name(WATCHER), what="the bar's name to go")

    def move(self, x, y):
        self._input.move(x, y)

    def click(self, x, y, button=1, hold=0.08):
        self.move(x, y)
        time.sleep(0.05)
        self._input.button(button, True)
        time.sleep(hold)
        self._input.button(button, False)

    def key(self, *keys):
        for key in keys:
            self._input.key(key)
            time.sleep(0.02)

    def windows(self):
        """The ordinary windows."""
        found, nodes = [], [json.loads(self.run("swaymsg", "-t", "get_tree", "-r"))]
        while nodes:
            node = nodes.pop()
            nodes += node.get("nodes", []) + node.get("floating_nodes", [])
            if node.get("pid"):
                rect = node["rect"]
                found.append(SwayWindow(node["name"] or "", Rect(
                    rect["x"], rect["y"], rect["width"], rect["height"]), node["focused"]))
        return found

    def window(self, role=None, title=None):
        """For the popover alone, which is an X11 window of that role, or natively an ordinary one
        of its width and its shadow's."""
        assert role == "popover" and title is None
        shown = [window for window in self.x11_windows() if window.role == role]
        return (shown + [window for window in self.windows() if window.title == "Kestrel"
                         and window.rect.width % POPOVER_WITH_SHADOW == 0] + [None])[0]

    def screenshot(self):
        """All screens, in pixels of the desktop."""
        file = self.path("screen.ppm")
        self.run("grim", "-s", "1", "-t", "ppm", file)
        with open(file, "rb") as content:
            data = content.read()
        header = re.match(rb"P6\s+(\d+) (\d+)\s+255\s", data)
        return Image(int(header[1]), int(header[2]), data[header.end():])

    def icon_rect(self, before, limit=DEFAULT_TIMEOUT):
        """Where the bar has changed since the screenshot `before`, once it stays so."""
        bar = Rect(0, 0, self.bounds.width, BAR_HEIGHT)
        old = before.cut(bar)

        def settled():
            change = self.screenshot().cut(bar).difference(old)
            time.sleep(0.3)
            return change if change == self.screenshot().cut(bar).difference(old) else None
        return wait_for(settled, limit, "the status icon in the bar")
