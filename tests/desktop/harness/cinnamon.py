"""Cinnamon on a throw-away desktop, with its own panel at the bottom."""
from harness.bars import Bar
from harness.desktop import Desktop
from harness.images import Rect
from harness.panels import WATCHER
from harness.processes import wait_for
from harness.shell_session import ShellSession

# What a login starts beside the shell: the watcher of the status icons.
XAPP_WATCHER = "/usr/libexec/xapps/sn-watcher/xapp-sn-watcher"
PANEL = "Main.panelManager.panels.find(panel => panel && panel.actor.mapped)"
RECT = "[...{0}.get_transformed_position(), ...{0}.get_transformed_size()].map(Math.round)"
ICONS = f"""["xapp-status", "systray"]
    .flatMap(name => imports.ui.appletManager.getRunningInstancesForUuid(name + "@cinnamon.org"))
    .flatMap(applet => applet.statusIcons ? Object.values(applet.statusIcons).map(i => i.actor)
                                          : applet.button_box.get_children())
    .filter(actor => actor.mapped).map(actor => {RECT.format("actor")})"""
LISTED = """imports.ui.appletManager
    .getRunningInstancesForUuid("grouped-window-list@cinnamon.org")
    .flatMap(applet => applet.appLists).flatMap(list => list.appList)
    .flatMap(group => group.groupState.metaWindows)
    .map(window => [window.get_title(), window.get_pid()])"""


class Cinnamon(ShellSession, Desktop):
    """On a virtual X server."""

    service = "org.Cinnamon", "/org/Cinnamon"
    variables = {"XDG_CURRENT_DESKTOP": "X-Cinnamon", "XDG_SESSION_DESKTOP": "cinnamon",
                 "DESKTOP_SESSION": "cinnamon", "XDG_SESSION_TYPE": "x11"}

    def __init__(self):
        super().__init__(window_manager=None)
        try:
            self.start_cinnamon()
            self.start_service([XAPP_WATCHER])
            wait_for(lambda: self.has_bus_name(WATCHER), what="Cinnamon's watcher")
        except BaseException:
            self.stop()
            raise

    def start_cinnamon(self):
        self.start_shell(["cinnamon"], f"!!({PANEL})")

    def restart_shell(self):
        """The shell crashes and is started again."""
        self.shell.kill()
        wait_for(lambda: not self.has_bus_name(self.service[0]), what="the shell's name to go")
        self.start_cinnamon()

    def bar(self):
        x, y, width, height = self.eval(RECT.format(f"({PANEL}).actor"))
        return Bar(Rect(x, 0, width, y + height), "bottom", height)

    def icons(self):
        """Where the panel shows status icons."""
        return [Rect(*rect) for rect in self.eval(ICONS)]

    def window_list(self, pid):
        """The titles of a process's windows in the panel's window list."""
        return [title for title, owner in self.eval(LISTED) if owner == pid]
