"""The panels that a status icon may meet, each with a set-up of its own: a bar 30 pixels high along
one edge, the status icons at its end, and nothing else on it."""
import os
import pathlib
import sys

from harness.processes import wait_for

FAKE_HOST = str(pathlib.Path(__file__).resolve().with_name("fake_status_notifier_host.py"))
WATCHER = "org.kde.StatusNotifierWatcher"
HEIGHT = 30
BACKGROUNDS = {"dark": "#303030", "light": "#e8e8e8"}

TINT2 = """rounded = 0
background_color = {background} 100
panel_items = TS
panel_size = 100% 30
panel_position = {position}
panel_monitor = {monitor}
panel_background_id = 1
systray_padding = 4 2 4
systray_icon_size = 22
taskbar_mode = single_desktop
wm_menu = 0
panel_layer = top
strut_policy = follow_size
"""

XFCE4_PANEL = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="{is_dark}"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="{position}"/>
      <property name="mode" type="uint" value="{mode}"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="30"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-2" type="string" value="systray">
      <property name="square-icons" type="bool" value="true"/>
      <property name="known-items" type="array"/>
    </property>
  </property>
</channel>
"""

LXQT_PANEL = """[General]
panels=panel1
iconTheme=Adwaita
[panel1]
plugins=spacer, tray, statusnotifier
position={edge}
desktop={monitor}
panelSize=30
iconSize=22
width=100
width-percent=true
[spacer]
type=spacer
spaceType=invisible
expandable=true
[tray]
type=tray
[statusnotifier]
type=statusnotifier
"""

MATE_PANEL = """[org/mate/panel/general]
toplevel-id-list=['bar']
object-id-list=['icons']
[org/mate/panel/toplevels/bar]
expand=true
orientation='{edge}'
monitor={monitor}
size=30
[org/mate/panel/toplevels/bar/background]
type='color'
color='{background}'
opacity=65535
[org/mate/panel/objects/icons]
object-type='applet'
applet-iid='NotificationAreaAppletFactory::NotificationArea'
toplevel-id='bar'
position=10
relative-to-edge='end'
locked=true
"""


class Look:
    """How a panel is to stand there."""

    def __init__(self, edge="top", background="dark", monitor=0, options=()):
        self.edge, self.background, self.monitor, self.options = edge, background, monitor, options
        self.is_vertical = edge in ("left", "right")


def _tint2(desktop, look):
    position = f"center {look.edge} vertical" if look.is_vertical else f"{look.edge} center"
    file = desktop.write("config/tint2/tint2rc", TINT2.format(
        position=position, background=BACKGROUNDS[look.background], monitor=look.monitor + 1))
    return ["tint2", "-c", file], {}, desktop.has_xembed_tray


def _trayer(desktop, look):
    tint = BACKGROUNDS[look.background].replace("#", "0x")
    return (["trayer", "--edge", look.edge, "--align", "right", "--width", "100", "--height", "30",
             "--tint", tint, "--alpha", "0", "--transparent", "true", "--SetDockType", "true",
             "--SetPartialStrut", "true", "--monitor", str(look.monitor)], {},
            desktop.has_xembed_tray)


def _xfce4_panel(desktop, look):
    side = {"right": 1, "left": 5, "top": 6, "bottom": 10}[look.edge]
    # Its versions number and name monitors differently; all find the one that has a point.
    x, y = desktop.monitors[look.monitor].center
    settings = {"position": f"p={side};x={x};y={y}", "mode": int(look.is_vertical),
                "is_dark": str(look.background == "dark").lower()}
    file = "config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"
    if not os.path.exists(desktop.path(file)):
        desktop.write(file, XFCE4_PANEL.format(**settings))
    else:       # the service that has read the file would write its own state over a new one
        for name, value in (("panel-1/position", settings["position"]),
                            ("panel-1/mode", settings["mode"]),
                            ("dark-mode", settings["is_dark"])):
            desktop.run("xfconf-query", "-c", "xfce4-panel", "-p", "/panels/" + name,
                        "-s", str(value))
    return (["xfce4-panel", "--disable-wm-check"], {},
            lambda: desktop.has_bus_name(WATCHER) and desktop.has_xembed_tray())


def _lxqt_panel(desktop, look):
    desktop.write("config/lxqt/lxqt.conf", f"[General]\ntheme={look.background}\n")
    file = desktop.write("config/lxqt/panel.conf", LXQT_PANEL.format(
        edge=look.edge.capitalize(), monitor=look.monitor))
    return ["lxqt-panel", "-c", file], {}, lambda: desktop.has_bus_name(WATCHER)


def _mate_panel(desktop, look):
    desktop.write("config/glib-2.0/settings/keyfile", MATE_PANEL.format(
        edge=look.edge, background=BACKGROUNDS[look.background], monitor=look.monitor))
    return (["mate-panel"], {"GSETTINGS_BACKEND": "keyfile"},
            lambda: desktop.has_bus_name(WATCHER) and desktop.has_xembed_tray())


PANELS = {"tint2": _tint2, "trayer": _trayer, "xfce4-panel": _xfce4_panel,
          "lxqt-panel": _lxqt_panel, "mate-panel": _mate_panel}


def start_panel(desktop, panel, look):
    """Starts a panel on a desktop, waits until it takes icons, and returns its process.

    panel: one of PANELS ("tint2" and "trayer" know XEmbed alone, the others StatusNotifierItem
    too), or "fake", fake_status_notifier_host.py, which is given the look's options.
    """
    if panel == "fake":
        process = desktop.start_service([sys.executable, FAKE_HOST, f"--edge={look.edge}",
                                         *look.options])
        def ready(): return any('"ready"' in line for line in process.lines)
    else:
        command, environment, ready = PANELS[panel](desktop, look)
        process = desktop.start_service(command, environment)
    wait_for(ready, what=f"{panel} to take icons")
    return process
