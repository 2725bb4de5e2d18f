"""A throw-away KDE Plasma session: KWin, plasmashell with its default panel, and what they need.

    with PlasmaDesktop("wayland", program) as desktop:
        desktop.start([desktop.program])
        desktop.click(*desktop.icon_rect().center)

It is what a login starts. Plasma refuses to be root, so it runs as an account that exists only in a
mount namespace, which only root can make: `missing()` says where that, or Plasma, cannot be had. On
Wayland KWin shows its one output as a window that fills the virtual screen: the pointer, the
keyboard and the pixels are that screen's in both. All places are told in pixels of that screen.
"""
import contextlib
import json
import os
import pathlib
import shutil
import signal
import subprocess
import time
from typing import NamedTuple

import dbus
import dbus.bus
import dbus.lowlevel
import dbus.mainloop.glib
from gi.repository import GLib

from harness.accessibility import Accessibility
from harness.bars import Bar, Icon, drawn
from harness.desktop import Desktop, Session
from harness.images import Rect
from harness.panels import WATCHER
from harness.processes import DEFAULT_TIMEOUT, wait_for

PACKAGING = pathlib.Path(__file__).resolve().parents[3] / "packaging"
ENTRY = "app.kestrel.Kestrel.desktop"
ACCOUNT, USER_ID = "plasma", 4711
TOOLS = ("Xvfb", "xdotool", "unshare", "setpriv", "plasmashell", "startplasma-x11",
         "startplasma-wayland", "kwin_x11", "kwin_wayland_wrapper", "Xwayland")
NAMESPACE = ["unshare", "--mount", "--propagation", "private"]
# unshare, the shell and setpriv each become the next: in the end the process is the program's.
AS_ACCOUNT = f"""mount --bind "$1" /etc/passwd && mount --bind "$2" /etc/group && shift 2 &&
exec setpriv --reuid {USER_ID} --regid {USER_ID} --clear-groups --pdeathsig KILL -- "$@" """
# What would cover the screen or search the disk is off.
SETTINGS = {
    "ksplashrc": "[KSplash]\nEngine=none\nTheme=None\n",
    "kscreenlockerrc": "[Daemon]\nAutolock=false\nLockOnResume=false\n",
    "ksmserverrc": "[General]\nconfirmLogout=false\nloginMode=emptySession\n",
    "startkderc": "[General]\nsystemdBoot=false\n",
    "baloofilerc": "[Basic Settings]\nIndexing-Enabled=false\n",
    "plasma-welcomerc": "[General]\nShouldShow=false\n",
}
AUTOSTART = "/etc/xdg/autostart"
STARTED = {"org.kde.plasmashell.desktop", "xembedsniproxy.desktop"}
REPORT = """var found = [], all = workspace.clientList();
for (var i = 0; i < all.length; ++i) {
    var w = all[i], g = w.frameGeometry;
    found.push({id: w.windowId || 0, title: w.caption, pid: w.pid,
                rect: [g.x, g.y, g.width, g.height], is_active: w.active, is_panel: w.dock,
                is_in_task_bar: !w.skipTaskbar && !w.specialWindow, is_in_pager: !w.skipPager,
                is_in_switcher: !w.skipSwitcher});
}
callDBus("%s", "/", "test.Plasma", "windows", JSON.stringify(found));
"""
REPORT_INTERFACE = "test.Plasma"
SHELL = ("Plasma", "plasmashell")       # its names before and after its start
TRAY = "panels()[0].widgets('org.kde.plasma.systemtray')[0]"
UNGROUP = """var tasks = panels()[0].widgets('org.kde.plasma.icontasks')[0];
tasks.currentConfigGroup = ['General'];
tasks.writeConfig('groupingStrategy', 0);
tasks.reloadConfig();
"""
LARGEST_ICON = 40       # pixels; the task bar's buttons, which may have the same name, are larger


def missing():
    """Why no such session can be had here; None where it can."""
    if os.geteuid() != 0:
        return "only root can make the account that the session runs as"
    for tool in TOOLS:
        if not shutil.which(tool):
            return f"there is no {tool}"
    if subprocess.run([*NAMESPACE, "mount", "--bind", "/etc/passwd", "/etc/group"], check=False,
                      capture_output=True).returncode:
        return "no mount namespace can be made here"
    return None


class ManagedWindow(NamedTuple):
    """A window as KWin manages it; `id` is that of an X11 window, or 0."""

    id: int
    title: str
    pid: int
    rect: Rect
    is_active: bool
    is_panel: bool
    is_in_task_bar: bool
    is_in_pager: bool
    is_in_switcher: bool


class ShellAccessibility(Accessibility):
    """Tells the shell, whose tree is large, from the programs on it."""

    def applications(self):
        return [node for node, name in self._named() if name not in SHELL]

    def shell(self, role):
        """What the shell shows of that role."""
        found = []
        for node, name in self._named():
            if name in SHELL:
                with contextlib.suppress(dbus.DBusException):       # it ends, or has just started
                    found += node.find_all(role)
        return found

    def _named(self):
        for node in super().applications():
            try:
                yield node, node.name
            except dbus.DBusException:      # it ends
                continue


class PlasmaBar(Bar):
    """The panel with its tray, where the icon is one of several."""

    def wait_for_icon(self, desktop, limit=DEFAULT_TIMEOUT):
        """The icon, and how well it is seen where it is, once it is painted."""
        def settled():
            icon = self._icon(desktop)
            time.sleep(0.4)     # its colour follows that of the panel
            return icon if icon and icon == self._icon(desktop) else None
        return wait_for(settled, limit, f"the status icon on the panel at the {self.edge}")

    @staticmethod
    def _icon(desktop):
        rect = desktop.icon_rect()
        glyph = drawn(desktop.screenshot(), rect)
        return glyph and Icon(rect, glyph.contrast)


class PlasmaDesktop(Desktop):
    """session: "x11" or "wayland"; program: the path of the one to install; width, height: the
    desktop's size in its own units; scale: how many pixels make one of those; xwayland_scale: at
    which scale X11 programs in the Wayland session have to paint themselves (by default at that of
    the desktop): the compositor enlarges them by what is missing then."""

    bus_services, is_whole = ("org.a11y.Bus", "org.kde.*"), True

    def __init__(self, session, program, width=1280, height=800, scale=1, xwayland_scale=None):
        Session.__init__(self)
        self.session, self.scale = session, scale
        self.bounds = Rect(0, 0, round(width * scale), round(height * scale))
        self.monitors = [self.bounds]
        # How many pixels of the screen make one of the X server's that programs talk to.
        self._x_scale = scale / (xwayland_scale or scale) if session == "wayland" else 1
        self._reports = self._report = self._report_script = self._shell = None
        self._count = 0
        try:
            self._set_up(xwayland_scale or scale)
            self.program = self._install(program)
            self._start_server()
            self._screen = dict(self.environment)
            self.environment["XDG_SESSION_TYPE"] = session
            del self.environment["GDK_BACKEND"]
            self._start_bus()
            self._start_session(width, height)
            self._wait_for_shell()
            self.script(UNGROUP)
        except BaseException:
            self.stop()
            raise

    def stop(self):
        if self._reports:
            self._reports.close()
        super().stop()

    # The account and its files.

    def _set_up(self, x_scale):
        for folder in (self.folder, *(self.path(name) for name in os.listdir(self.folder))):
            os.chown(folder, USER_ID, USER_ID)
        line = f"{ACCOUNT}:x:{USER_ID}:"
        for name, more in (("passwd", f"{USER_ID}::{self.path('home')}:/bin/sh"), ("group", "")):
            with open("/etc/" + name, encoding="utf-8") as file:
                self.write(name, f"{file.read()}{line}{more}\n")
        for name, text in SETTINGS.items():
            self.write("config/" + name, text)
        for name in set(os.listdir(AUTOSTART)) - STARTED:
            self.write("config/autostart/" + name,
                       "[Desktop Entry]\nType=Application\nHidden=true\n")
        if self.session == "x11" and self.scale != 1:
            self.write("config/kdeglobals", f"[KScreen]\nScaleFactor={self.scale}\n"
                                            f"ScreenScaleFactors=screen={self.scale};\n")
            self.write("config/kcmfonts", f"[General]\nforceFontDPI={round(96 * self.scale)}\n")
        elif self.session == "wayland" and x_scale != 1:
            self.write("config/kwinrc", f"[Xwayland]\nScale={x_scale}\n")
        self.environment.update(
            USER=ACCOUNT, LOGNAME=ACCOUNT, SHELL="/bin/sh", QT_QUICK_BACKEND="software",
            PATH=self.path("bin") + ":/usr/local/bin:/usr/bin:/bin",
            XDG_DATA_DIRS=self.path("share") + ":/usr/local/share:/usr/share",
            # The shell tells where the icons are.
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")

    def write(self, path, content, mode=0o644):
        whole = made = super().write(path, content, mode)
        while made != self.folder:
            os.lchown(made, USER_ID, USER_ID)
            made = os.path.dirname(made)
        return whole

    def _copy_program(self, path):
        """To where the account may read it, and without the capabilities that a file may have and
        a container may not grant."""
        with open(path, "rb") as file:
            return self.write("bin/" + os.path.basename(path), file.read(), 0o755)

    def _install(self, program):
        """The program with its icons and its menu entry; its path."""
        path = self._copy_program(program)
        for icon in PACKAGING.glob("icons/**/*.svg"):
            self.write(f"share/{icon.relative_to(PACKAGING)}", icon.read_bytes())
        entry = (PACKAGING / (ENTRY + ".in")).read_text(encoding="utf-8")
        self.write("share/applications/" + ENTRY, entry.replace("@KESTREL_EXECUTABLE@", path))
        return path

    def _as_account(self, command):
        return [*NAMESPACE, "sh", "-c", AS_ACCOUNT, "sh", self.path("passwd"), self.path("group"),
                *command]

    @contextlib.contextmanager
    def _being_account(self):
        """A session bus talks to its owner only."""
        os.setegid(USER_ID)
        os.seteuid(USER_ID)
        try:
            yield
        finally:
            os.seteuid(0)
            os.setegid(0)

    @property
    def bus(self):
        with self._being_account():
            return super().bus

    @property
    def accessibility(self):
        if self._accessibility is None:
            with self._being_account():
                self._accessibility = ShellAccessibility(self.bus)
        return self._accessibility

    # Processes.

    def start(self, command, environment=None, **options):
        """As the shell starts a program: in the shell's own environment."""
        return self.processes.start(
            self._as_account(command),
            {key: value for key, value in {**self.environment, **(environment or {})}.items()
             if value is not None},
            folder=self.path("home"), name=os.path.basename(command[0]), **options)

    def start_service(self, command, environment=None):
        return self.start(command, environment)

    def _xdotool(self, *words):
        """The pointer and the keyboard are those of the screen, not of an X server within it."""
        return subprocess.run(["xdotool", *words], env=self._screen, stdin=subprocess.DEVNULL,
                              check=False, capture_output=True, text=True, timeout=20).stdout

    # The session.

    def _start_session(self, width, height):
        """As a login does it. The session starts KWin's wrapper as it finds it, and the wrapper the
        first KWin."""
        if self.session == "wayland":
            words = ["kwin_wayland_wrapper", "--x11-display", self.environment.pop("DISPLAY"),
                     "--width", width, "--height", height, "--scale", self.scale,
                     "--no-lockscreen"]
            words[0] = shutil.which(words[0])
            self.write("bin/kwin_wayland_wrapper",
                       f'#!/bin/sh\nexec {" ".join(map(str, words))} "$@"\n', 0o755)
            self._copy_program(shutil.which("kwin_wayland"))
        self.start_service(["startplasma-" + self.session])

    def _wait_for_shell(self):
        wait_for(self._has_panel, 60, "the panel", pause=0.1)
        names = self.bus.get_object("org.freedesktop.DBus", "/", introspect=False)
        self._shell = int(names.GetConnectionUnixProcessID(
            "org.kde.plasmashell", dbus_interface="org.freedesktop.DBus"))
        with open(f"/proc/{self._shell}/environ", encoding="utf-8") as file:
            own = dict(line.split("=", 1) for line in file.read().split("\0") if "=" in line)
        self.environment = {**own, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}

    def _has_panel(self):
        names = ("org.kde.KWin", "org.kde.plasmashell", WATCHER)
        try:
            return all(self.has_bus_name(name) for name in names) and self._panel()
        except dbus.DBusException:      # a name is there before what it offers
            return False

    def kill_shell(self):
        """Ends plasmashell as a crash would."""
        os.kill(self._shell, signal.SIGKILL)
        wait_for(lambda: not self.has_bus_name("org.kde.plasmashell"), what="the shell to end")

    def start_shell(self):
        self.start_service(["plasmashell", "--no-respawn"])
        self._wait_for_shell()

    def script(self, text):
        """Has the shell run a text of its scripting language."""
        shell = self.bus.get_object("org.kde.plasmashell", "/PlasmaShell", introspect=False)
        shell.evaluateScript(text, dbus_interface="org.kde.PlasmaShell", timeout=DEFAULT_TIMEOUT)

    def apply_colors(self, name):
        """BreezeLight, BreezeDark: as the system settings do."""
        assert self.start(["plasma-apply-colorscheme", name]).wait() == 0

    # The panel and its tray.

    def _panel(self):
        return next((window.rect for window in self.managed_windows()
                     if window.is_panel and max(window.rect[2:]) > 300 * self.scale), None)

    def panel(self, edge):
        """The panel, at an edge of the screen to which it is moved if need be."""
        self.script(f"panels()[0].location = '{edge}'")

        def settled():
            rect = self._panel()
            time.sleep(0.3)     # it slides
            return rect if rect and rect == self._panel() and self._lies_along(edge, rect) else None
        rect = wait_for(settled, what=f"the panel at the {edge}")
        return PlasmaBar(self.bounds, edge, min(rect.width, rect.height))

    def _lies_along(self, edge, rect):
        distance = {"top": rect.y, "left": rect.x,
                    "bottom": self.bounds.height - rect.y - rect.height,
                    "right": self.bounds.width - rect.x - rect.width}[edge]
        return distance == 0 and (rect.height > rect.width) == (edge in ("left", "right"))

    def hide_icons(self, *identities):
        """Puts the icons of these items, by their ids, into the tray's hidden area, and all others
        back on the panel."""
        self.script(f"var tray = desktopById({TRAY}.readConfig('SystrayContainmentId'));"
                    "tray.currentConfigGroup = ['General'];"
                    f"tray.writeConfig('hiddenItems', {json.dumps(identities)});"
                    "tray.reloadConfig();")

    def buttons(self):
        """(name, place) of all that can be pressed in the shell, as it tells assistive technology:
        on its panel, and in the popups that are open."""
        found = []
        for node in self.accessibility.shell("push button"):
            try:
                name, rect = node.name, node.rect
            except dbus.DBusException:      # it went away while we looked
                continue
            if rect.width > 0 and rect.height > 0:
                found.append((name, self._in_pixels(rect)))
        return found

    def button(self, name):
        """The place of the shell's one button of that name."""
        return wait_for(lambda: [rect for known, rect in self.buttons() if known == name],
                        what=f"the button {name!r}")[0]

    def icon_rect(self, limit=DEFAULT_TIMEOUT):
        def look():
            return min((rect for name, rect in self.buttons()
                        if name == "Kestrel" and rect.width <= LARGEST_ICON * self.scale),
                       key=lambda rect: rect.width, default=None)

        def settled():
            rect = look()
            time.sleep(0.2)     # the tray makes room for it
            return rect if rect and rect == look() else None
        return wait_for(settled, limit, "the status icon on the screen")

    # The pointer.

    def move(self, x, y):
        """A pointer that is there already makes no movement."""
        here = self._xdotool("getmouselocation")
        if not here.startswith(f"x:{x} y:{y} "):
            super().move(x, y)

    # Windows.

    def _in_pixels(self, rect):
        """On Wayland, Plasma counts in units of the desktop."""
        scale = self.scale if self.session == "wayland" else 1
        return Rect(*(round(value * scale) for value in rect))

    def x11_windows(self):
        for window in super().x11_windows():
            rect = Rect(*(round(value * self._x_scale) for value in window.rect))
            yield window._replace(rect=rect)

    def managed_windows(self):
        """All windows that KWin manages, those of Wayland programs too."""
        if self._reports is None:
            self._listen()
        self._report = None
        scripting = self.bus.get_object("org.kde.KWin", "/Scripting", introspect=False)
        call = {"dbus_interface": "org.kde.kwin.Scripting", "timeout": DEFAULT_TIMEOUT}
        self._count += 1
        name = f"windows{self._count}"      # KWin runs a script of one name only once
        number = scripting.loadScript(self._report_script, name, signature="ss", **call)
        self.bus.get_object("org.kde.KWin", f"/{number}", introspect=False).run(
            dbus_interface="org.kde.kwin.Script", timeout=DEFAULT_TIMEOUT)

        def told():
            while GLib.MainContext.default().iteration(False):
                pass
            return self._report is not None
        wait_for(told, what="the window manager", pause=0.005)
        scripting.unloadScript(name, signature="s", **call)
        return [ManagedWindow(**{**window, "rect": self._in_pixels(Rect(*window["rect"]))})
                for window in self._report]

    def _listen(self):
        loop = dbus.mainloop.glib.DBusGMainLoop()
        with self._being_account():
            self._reports = dbus.bus.BusConnection(
                self.environment["DBUS_SESSION_BUS_ADDRESS"], mainloop=loop)
        self._reports.set_exit_on_disconnect(False)
        self._reports.add_message_filter(self._hear)
        self._report_script = self.write("windows.js", REPORT % self._reports.get_unique_name())

    def _hear(self, _, message):
        if message.get_interface() == REPORT_INTERFACE:
            self._report = json.loads(message.get_args_list()[0])
        return dbus.lowlevel.HANDLER_RESULT_NOT_YET_HANDLED

    def managed_window(self, title):
        """The window of that title, or None."""
        return next((window for window in self.managed_windows() if window.title == title), None)

    def focused_window(self):
        return next((hex(window.id) for window in self.managed_windows() if window.is_active), None)
