"""A throw-away Wayland desktop: sway without a screen, waybar as the panel, XWayland."""
import json
import os
import re
import time
from typing import NamedTuple

from desktop import Session
from images import Picture, Rect
from panels import WATCHER
from processes import wait_for
from wayland_input import WaylandInput

SWAY = """output * resolution {width}x{height} position 0 0 background #35506B solid_color
xwayland enable
default_border normal
focus_on_window_activation smart
seat seat0 hide_cursor 0
floating_modifier none
"""
WAYBAR = """{"layer": "top", "position": "top", "height": 30,
 "modules-left": [], "modules-center": [], "modules-right": ["tray"],
 "tray": {"icon-size": 22, "spacing": 4, "show-passive-items": true}}"""
WAYBAR_STYLE = "* { font-size: 12px } window { background: #303030 }"
BAR_HEIGHT = 30


class SwayWindow(NamedTuple):
    """An ordinary window; popups are in no list of sway's."""

    title: str
    rect: Rect
    is_focused: bool


class SwayDesktop(Session):
    """Programs on it see a Wayland and an X display, and choose for themselves."""

    def __init__(self, width=1280, height=800):
        super().__init__()
        self.bounds = Rect(0, 0, width, height)
        self._input = None
        self.environment.update(
            XDG_SESSION_TYPE="wayland", XDG_CURRENT_DESKTOP="sway", WLR_BACKENDS="headless",
            WLR_LIBINPUT_NO_DEVICES="1", WLR_RENDERER="pixman", WLR_HEADLESS_OUTPUTS="1")
        try:
            self._start_bus()
            self._start_sway()
            self._start_waybar()
        except BaseException:
            self.stop()
            raise

    def stop(self):
        if self._input:
            self._input.close()
        super().stop()

    def _start_sway(self):
        config = self.write("sway.conf", SWAY.format(**self.bounds._asdict()))
        # sway does not run as root: there it gets a user namespace in which it is somebody else.
        wrapper = ["unshare", "--user", "--map-user=1000", "--map-group=1000"]
        self.start_service((wrapper if os.geteuid() == 0 else []) + ["sway", "-c", config])
        folder = self.environment["XDG_RUNTIME_DIR"]

        def socket(pattern):
            return lambda: next((name for name in os.listdir(folder)
                                 if re.fullmatch(pattern, name)), None)
        display = wait_for(socket(r"wayland-\d+"), 15, "sway's display")
        control = wait_for(socket(r"sway-ipc\..*"), 15, "sway's control socket")
        self.environment["SWAYSOCK"] = os.path.join(folder, control)
        wait_for(lambda: "HEADLESS" in self.run("swaymsg", "-t", "get_outputs"), 15, "an output")

        def virtual_input():
            try:
                return WaylandInput(os.path.join(folder, display), *self.bounds[2:])
            except KeyError:
                return None
        self._input = wait_for(virtual_input, 15, "the virtual pointer and keyboard")
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
        return wait_for(told, 15, "the X display")

    def _start_waybar(self):
        self.write("config/waybar/config", WAYBAR)
        self.write("config/waybar/style.css", WAYBAR_STYLE)
        self.start_service(["waybar"])
        wait_for(lambda: self.has_bus_name(WATCHER), 20, "waybar")
        bar = Rect(0, 0, self.bounds.width, BAR_HEIGHT)
        wait_for(lambda: self.picture().cut(bar).pixel(4, 4) == (0x30, 0x30, 0x30), 15, "the bar",
                 pause=0.1)

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

    def picture(self):
        file = self.path("screen.ppm")
        self.run("grim", "-t", "ppm", file)
        with open(file, "rb") as content:
            data = content.read()
        header = re.match(rb"P6\s+(\d+) (\d+)\s+255\s", data)
        return Picture(int(header[1]), int(header[2]), data[header.end():])

    def icon_rect(self, before, limit=15):
        """Where the bar has changed since the picture `before`, once it stays so."""
        bar = Rect(0, 0, self.bounds.width, BAR_HEIGHT)
        old = before.cut(bar)

        def settled():
            change = self.picture().cut(bar).difference(old)
            time.sleep(0.3)
            return change if change == self.picture().cut(bar).difference(old) else None
        return wait_for(settled, limit, "the status icon in the bar")
