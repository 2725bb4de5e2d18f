"""The panels that a status icon may meet, each with a set-up of its own: a bar 30 pixels high along
one edge, the status icons at its right."""
import os
import sys

from processes import wait_for

FOLDER = os.path.dirname(os.path.abspath(__file__))
WATCHER = "org.kde.StatusNotifierWatcher"

TINT2 = """panel_items = TS
panel_size = 100% 30
panel_position = {edge} center horizontal
panel_background_id = 1
rounded = 0
background_color = #303030 100
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
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p={position};x=0;y=0"/>
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


def start_panel(desktop, panel, options=(), edge="top"):
    """Starts a panel on a desktop, waits until it takes icons, and returns its process.

    panel: "tint2" (XEmbed), "xfce4-panel" (StatusNotifierItem and XEmbed), or "fake", our own host
    (fakehost.py), which is given the options.
    """
    if panel == "tint2":
        file = desktop.write("config/tint2/tint2rc", TINT2.format(edge=edge))
        process = desktop.start_service(["tint2", "-c", file])
        ready = desktop.has_xembed_tray
    elif panel == "xfce4-panel":
        desktop.write("config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml",
                      XFCE4_PANEL.format(position={"top": 6, "bottom": 10}[edge]))
        process = desktop.start_service(["xfce4-panel", "--disable-wm-check"])
        def ready(): return desktop.has_bus_name(WATCHER) and desktop.has_xembed_tray()
    elif panel == "fake":
        process = desktop.start_service(
            [sys.executable, os.path.join(FOLDER, "fakehost.py"), f"--edge={edge}", *options])
        def ready(): return any('"ready"' in line for line in process.lines)
    else:
        raise ValueError(panel)
    wait_for(ready, 20, f"{panel} to take icons")
    return process
