"""A throw-away desktop: a virtual X server, a session bus, a window manager, a real panel.

    with Desktop(panel="xfce4-panel") as desktop:
        process = desktop.start([program])
        desktop.click(*desktop.icon_rect().center)
        desktop.wait_for_window(role="popover")

Every program on it has a home of its own and knows nothing of the user's session.
"""
import contextlib
import ctypes
import glob
import json
import os
import pathlib
import re
import shlex
import shutil
import struct
import subprocess
import tempfile
import time
from typing import NamedTuple

import dbus
import dbus.bus

from harness.accessibility import Accessibility
from harness.images import Image, Rect
from harness.panels import WATCHER, Look, start_panel
from harness.processes import DEFAULT_TIMEOUT, ProcessGroup, wait_for

ITEM = "org.kde.StatusNotifierItem"
KEPT_VARIABLES = ("PATH", "TZ")
TRAY_SELECTION = "_NET_SYSTEM_TRAY_S0"
SANITIZER_VARIABLES = ("ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS", "TSAN_OPTIONS")
# What of the machine a desktop's programs see. Whatever else is installed there, another desktop's
# services, applications and settings above all, would make the tests differ between machines.
MACHINE = pathlib.Path("/")
BUS_SERVICES = ("org.a11y.Bus", "org.xfce.Xfconf", "org.gnome.Terminal",
                "org.mate.panel.applet.NotificationAreaAppletFactory")
DATA = ("glib-2.0", "icons", "lxqt", "mate-panel", "mime", "themes", "xfce4", "xfwm4")
CONFIGURATION = ("openbox", "xfce4")
FONTS = """<?xml version="1.0"?>
<fontconfig>
  <dir>{machine}/usr/share/fonts/truetype/dejavu</dir>
  <cachedir>{folder}/cache/fontconfig</cachedir>
  <alias><family>sans-serif</family><prefer><family>DejaVu Sans</family></prefer></alias>
  <alias><family>monospace</family><prefer><family>DejaVu Sans Mono</family></prefer></alias>
  <match><edit name="family" mode="append_last"><string>DejaVu Sans</string></edit></match>
</fontconfig>
"""
SESSION_BUS = """<busconfig>
  <type>session</type>
  <listen>unix:path={folder}/bus</listen>
  <auth>EXTERNAL</auth>
  <servicedir>{folder}/services</servicedir>
  <servicedir>{folder}/data/dbus-1/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


class X11Window(NamedTuple):
    """A window that is shown."""

    id: str
    title: str
    role: str
    rect: Rect


class _Xlib:
    """The few calls that no command line tool offers."""

    def __init__(self, display):
        self._display = display.encode()
        lib = self.library = ctypes.CDLL("libX11.so.6")
        pointer, number, text = ctypes.c_void_p, ctypes.c_ulong, ctypes.c_char_p
        small = ctypes.c_int
        for function, result, *arguments in (
                (lib.XOpenDisplay, pointer, text), (lib.XCloseDisplay, small, pointer),
                (lib.XInternAtom, number, pointer, text, small),
                (lib.XGetSelectionOwner, number, pointer, number),
                (lib.XDefaultRootWindow, number, pointer),
                (lib.XCreatePixmap, number, pointer, number, small, small, small),
                (lib.XCreateGC, pointer, pointer, number, number, pointer),
                (lib.XSetForeground, small, pointer, pointer, number),
                (lib.XFillRectangle, small, pointer, number, pointer, small, small, small, small),
                (lib.XChangeProperty, small, pointer, number, number, number, small, small,
                 ctypes.POINTER(number), small),
                (lib.XSetWindowBackgroundPixmap, small, pointer, number, number),
                (lib.XClearWindow, small, pointer, number),
                (lib.XSetCloseDownMode, small, pointer, small),
                (lib.XGetImage, pointer, pointer, number, small, small, small, small, number,
                 small),
                (lib.XDestroyImage, small, pointer)):
            function.restype, function.argtypes = result, arguments

    @contextlib.contextmanager
    def connection(self):
        connection = self.library.XOpenDisplay(self._display)
        if not connection:
            raise RuntimeError("the display cannot be opened")
        try:
            yield connection
        finally:
            self.library.XCloseDisplay(connection)

    def has_selection_owner(self, selection):
        with self.connection() as connection:
            atom = self.library.XInternAtom(connection, selection.encode(), 0)
            return bool(self.library.XGetSelectionOwner(connection, atom))

    def set_numbers(self, selection, name, numbers):
        """Sets a property of the window that owns a selection."""
        xa_cardinal, replace = 6, 0
        lib = self.library
        with self.connection() as connection:
            owner = lib.XGetSelectionOwner(
                connection, lib.XInternAtom(connection, selection.encode(), 0))
            lib.XChangeProperty(connection, owner, lib.XInternAtom(connection, name.encode(), 0),
                                xa_cardinal, 32, replace,
                                (ctypes.c_ulong * len(numbers))(*numbers), len(numbers))

    def fill_root(self, pixel, width, height):
        """Paints the bare desktop as wallpaper programs do, so that compositors show it too."""
        retain_permanent, xa_pixmap, replace, depth = 1, 20, 0, 24
        lib = self.library
        with self.connection() as connection:
            root = lib.XDefaultRootWindow(connection)
            pixmap = lib.XCreatePixmap(connection, root, width, height, depth)
            context = lib.XCreateGC(connection, pixmap, 0, None)
            lib.XSetForeground(connection, context, pixel)
            lib.XFillRectangle(connection, pixmap, context, 0, 0, width, height)
            name = lib.XInternAtom(connection, b"_XROOTPMAP_ID", 0)
            lib.XChangeProperty(connection, root, name, xa_pixmap, 32, replace,
                                ctypes.byref(ctypes.c_ulong(pixmap)), 1)
            lib.XSetWindowBackgroundPixmap(connection, root, pixmap)
            lib.XClearWindow(connection, root)
            lib.XSetCloseDownMode(connection, retain_permanent)


class Session:
    """What desktops of every kind share: folders, the session bus, processes, icons on the bus."""

    # What it takes from the machine; a whole desktop that is installed there takes everything.
    machine, bus_services, is_whole = MACHINE, BUS_SERVICES, False

    def __init__(self, session_bus=True):
        self.processes = ProcessGroup()
        self.folder = tempfile.mkdtemp(prefix="kestrel-desktop-")
        self.environment = {key: os.environ[key] for key in KEPT_VARIABLES if key in os.environ}
        self.environment.update(
            HOME=self.path("home"), LANG="C.UTF-8", GIO_USE_VFS="local", GTK_USE_PORTAL="0",
            GSETTINGS_BACKEND="memory", LIBGL_ALWAYS_SOFTWARE="1", NO_AT_BRIDGE="1")
        for variable in SANITIZER_VARIABLES:
            options = [os.environ.get(variable), "log_path=" + self.path("sanitizer")]
            self.environment[variable] = ":".join(filter(None, options))
        for variable, name in (("HOME", "home"), ("XDG_RUNTIME_DIR", "run"),
                               ("XDG_CONFIG_HOME", "config"), ("XDG_DATA_HOME", "data"),
                               ("XDG_CACHE_HOME", "cache"), ("XDG_STATE_HOME", "state")):
            self.environment[variable] = self.path(name)
            os.mkdir(self.path(name), 0o700)
        # Nobody answers there.
        self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=" + self.path("no-system-bus")
        if not self.is_whole:
            self._separate_from_machine()
        self._has_bus, self._bus, self._accessibility, self._panels = session_bus, None, None, {}

    def _separate_from_machine(self):
        """Gives the programs folders of data and settings in which only what they need of the
        machine's is."""
        for variable, folder, names in (("XDG_DATA_DIRS", "usr/share", DATA),
                                        ("XDG_CONFIG_DIRS", "etc/xdg", CONFIGURATION)):
            os.makedirs(self.path(folder))
            for name in names:
                os.symlink(self.machine / folder / name, self.path(folder, name))
            self.environment[variable] = self.path(folder)
        # Xfce's panel looks for a plugin's library from where its description is.
        os.symlink(self.machine / "usr/lib", self.path("usr/lib"))
        self.environment["FONTCONFIG_FILE"] = self.write(
            "fonts.conf", FONTS.format(machine=self.machine, folder=self.folder))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stop()

    def stop(self):
        """Ends everything on the desktop and removes its folders. What a sanitizer has found in a
        program is an AssertionError."""
        if self._accessibility:
            self._accessibility.close()
        if self._bus:
            self._bus.close()
        self.processes.stop()
        reports = self._sanitizer_reports()
        shutil.rmtree(self.folder, ignore_errors=True)
        if reports:
            raise AssertionError(reports)

    def _sanitizer_reports(self):
        reports = []
        for path in glob.glob(self.path("sanitizer.*")):
            with open(path, encoding="utf-8", errors="replace") as file:
                reports.append(file.read())
        return "\n".join(reports)

    def path(self, *parts):
        return os.path.join(self.folder, *parts)

    def write(self, path, content, mode=0o644):
        """Writes a file below the desktop's folder, whole or not at all, and returns its path."""
        data = content.encode() if isinstance(content, str) else content
        whole = self.path(path)
        os.makedirs(os.path.dirname(whole), exist_ok=True)
        with open(whole + ".new", "wb") as file:
            file.write(data)
        os.chmod(whole + ".new", mode)
        os.rename(whole + ".new", whole)
        return whole

    def start(self, command, environment=None, **options):
        """Starts a program under test. `environment` adds variables; None as a value removes. The
        options are those of Process."""
        merged = {**self.environment, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
                  **(environment or {})}
        return self.processes.start(
            command, {key: value for key, value in merged.items() if value is not None},
            folder=self.path("home"), **options)

    def start_service(self, command, environment=None):
        """Starts a part of the desktop itself; `environment` adds variables."""
        return self.processes.start(command, {**self.environment, **(environment or {})})

    def run(self, *command):
        """Runs a tool to its end and returns what it printed; its failure is an empty answer."""
        return subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, check=False,
                              capture_output=True, text=True, timeout=20).stdout

    def _start_bus(self):
        if not self._has_bus:
            # An address at which nobody answers, so that nothing starts a bus of its own.
            self.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + self.path("no-bus")
            return
        os.mkdir(self.path("services"))
        for name in self.bus_services:
            for path in (self.machine / "usr/share/dbus-1/services").glob(name + ".service"):
                os.symlink(path, self.path("services", path.name))
        configuration = self.write("bus.conf", SESSION_BUS.format(folder=self.folder))
        self.bus_process = self.start_service(
            ["dbus-daemon", "--config-file=" + configuration, "--nofork", "--nopidfile",
             "--print-address=1"])
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = \
            self.bus_process.wait_for_line(r"(unix:\S+)")[1]

    @property
    def bus(self):
        if self._bus is None:
            self._bus = dbus.bus.BusConnection(self.environment["DBUS_SESSION_BUS_ADDRESS"])
            self._bus.set_exit_on_disconnect(False)
        return self._bus

    def has_bus_name(self, name):
        return bool(self.bus.name_has_owner(name))

    @property
    def accessibility(self):
        if self._accessibility is None:
            self._accessibility = Accessibility(self.bus)
        return self._accessibility

    def x11_windows(self):
        """The windows that the X server shows and that have a name, the topmost first, one after
        another. The parts of a window manager's frames have no name."""
        tree = self.run("xwininfo", "-root", "-tree")
        for line in re.finditer(r'^\s+(0x[0-9a-f]+) "(.*)": \(.*?\)\s+(\d+)x', tree, re.M):
            if int(line[3]) <= 1:
                continue
            # The tree may be out of date: only this tells the state and the place at one moment.
            now = self.run("xwininfo", "-id", line[1])
            if "IsViewable" not in now:
                continue
            rect = Rect(*(int(re.search(rf"{what}:\s+(-?\d+)", now)[1]) for what in (
                "Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")))
            role = re.search(r'= "(.*)"', self.run("xprop", "-id", line[1], "WM_WINDOW_ROLE"))
            yield X11Window(line[1], line[2], role[1] if role else "", rect)

    def windows(self):
        """All windows that are shown, the topmost first."""
        return list(self.x11_windows())

    def window(self, role=None, title=None):
        """The topmost such window, or None; `title` is a pattern."""
        for window in self.x11_windows():
            if role in (None, window.role) and (title is None or re.search(title, window.title)):
                return window
        return None

    def wait_for_window(self, role=None, title=None, limit=DEFAULT_TIMEOUT):
        return wait_for(lambda: self.window(role, title), limit, f"the window {role or title}")

    def wait_for_no_window(self, role=None, title=None, limit=DEFAULT_TIMEOUT):
        wait_for(lambda: not self.window(role, title), limit, f"the window {role or title} to go")

    def focused_window(self):
        """The id of the window that has the keyboard, in the form of `X11Window.id`."""
        number = self.run("xdotool", "getwindowfocus").strip()
        return hex(int(number)) if number else None

    def start_panel(self, panel, options=(), edge="top", **look):
        """See panels.start_panel and panels.Look."""
        self._panels[panel] = start_panel(self, panel, Look(options=options, edge=edge, **look))
        return self._panels[panel]

    def kill_panel(self, panel):
        """Ends a panel as a crash would."""
        self._panels.pop(panel).kill()

    def status_items(self):
        """The icons that are registered with the bus's watcher."""
        if not self.has_bus_name(WATCHER):
            return []
        watcher = self.bus.get_object(WATCHER, "/StatusNotifierWatcher", introspect=False)
        return [str(item) for item in watcher.Get(
            WATCHER, "RegisteredStatusNotifierItems", timeout=DEFAULT_TIMEOUT,
            dbus_interface=dbus.PROPERTIES_IFACE)]

    def status_item(self):
        """The D-Bus object of the one icon, waited for."""
        name, _, path = wait_for(self.status_items, 8, "a status item")[0].partition("/")
        return self.bus.get_object(name, "/" + (path or "StatusNotifierItem"), introspect=False)

    def status_item_properties(self):
        found = self.status_item().GetAll(ITEM, dbus_interface=dbus.PROPERTIES_IFACE,
                                         timeout=DEFAULT_TIMEOUT)
        return {str(key): value for key, value in found.items()}

    def call_status_item(self, method, x=0, y=0):
        """Activate, SecondaryActivate or ContextMenu, as a host calls it."""
        call = self.status_item().get_dbus_method(method, ITEM)
        call(dbus.Int32(x), dbus.Int32(y), timeout=DEFAULT_TIMEOUT)


class Desktop(Session):
    """A desktop on Xvfb.

    panel: None or a name for panels.start_panel, with its options and the screen's edge;
    window_manager: None, "openbox", "xfwm4" or "marco"; session_bus: False for a session without
    one; width, height: the screen's size in pixels.
    """

    def __init__(self, panel=None, panel_options=(), edge="top", window_manager="openbox",
                 compositor=False, session_bus=True, width=1280, height=800):
        super().__init__(session_bus)
        self.bounds = Rect(0, 0, width, height)
        self.monitors = [self.bounds]
        try:
            self._start_server()
            self._start_bus()
            if window_manager:
                self._start_window_manager(window_manager, compositor)
            if panel:
                self.start_panel(panel, panel_options, edge)
        except BaseException:
            self.stop()
            raise

    def _start_server(self):
        screen = f"{self.bounds.width}x{self.bounds.height}x24"
        self._await_server(lambda number: [
            "Xvfb", "-displayfd", str(number), "-screen", "0", screen, "-nolisten", "tcp",
            "-noreset", "-fbdir", self.folder, "-ac"])

    def _await_server(self, command):
        """Starts an X server, whose command is told the descriptor to which it writes its
        display's number."""
        reading, writing = os.pipe()
        server = self.processes.start(command(writing), self.environment, pass_fds=(writing,))
        os.close(writing)
        with os.fdopen(reading) as file:
            number = file.readline().strip()
        if not number:
            raise RuntimeError("the X server did not start:\n" + "\n".join(server.lines))
        self.environment.update(DISPLAY=":" + number, XDG_SESSION_TYPE="x11", GDK_BACKEND="x11")
        self._xlib = _Xlib(self.environment["DISPLAY"])
        # The first key from a test makes its keyboard the server's; a window manager that runs then
        # grabs its shortcuts again and may miss one, so it is sent before there is any.
        self.run("xdotool", "key", "Shift_L")

    def _start_window_manager(self, name, compositor):
        command = {"openbox": ["openbox", "--sm-disable"],
                   "marco": ["marco", "--no-composite"],
                   "xfwm4": ["xfwm4", "--compositor=" + ("on" if compositor else "off")]}[name]
        self.start_service(command)
        wait_for(lambda: "window id #" in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"),
                 what=name)

    def has_selection_owner(self, selection):
        return self._xlib.has_selection_owner(selection)

    def has_xembed_tray(self):
        return self.has_selection_owner(TRAY_SELECTION)

    def set_tray_color(self, color):
        """The panel wants icons in this colour (red, green, blue)."""
        self._xlib.set_numbers(TRAY_SELECTION, "_NET_SYSTEM_TRAY_COLORS",
                               [channel * 0x101 for channel in color] * 4)

    def fill_background(self, color):
        """Gives the bare desktop a colour (red, green, blue)."""
        self._xlib.fill_root(int.from_bytes(bytes(color), "big"), *self.bounds[2:])

    # The pointer and the keyboard.

    def _xdotool(self, *words):
        return self.run("xdotool", *words)

    def move(self, x, y):
        self._xdotool("mousemove", str(x), str(y))

    def press(self, button=1):
        self._xdotool("mousedown", str(button))

    def release(self, button=1):
        self._xdotool("mouseup", str(button))

    def click(self, x, y, button=1, hold=0.08):
        """A click as a user makes it: the button stays down for `hold` seconds, which shows
        mistakes with pointer grabs that a click of no duration hides."""
        self.move(x, y)
        time.sleep(0.05)
        self.press(button)
        time.sleep(hold)
        self.release(button)

    def double_click(self, x, y):
        self.move(x, y)
        time.sleep(0.05)
        self._xdotool("click", "--repeat", "2", "--delay", "80", "1")

    def drag(self, start, end, steps=12):
        """Drags with the left button, in steps that a toolkit takes for a user's movement."""
        self.move(*start)
        time.sleep(0.05)
        self.press()
        for step in range(1, steps + 1):
            time.sleep(0.03)
            self.move(*(a + (b - a) * step // steps for a, b in zip(start, end)))
        time.sleep(0.15)
        self.release()

    def key(self, *keys):
        """Presses keys one after another: "Down", "ctrl+Return"."""
        self._xdotool("key", "--delay", "20", *keys)

    def type(self, text):
        self._xdotool("type", "--delay", "8", "--", text)

    # Pixels.

    def screenshot(self):
        """The whole screen, read from the server's own frame buffer."""
        with open(self.path("Xvfb_screen0"), "rb") as file:
            data = file.read()
        header = struct.unpack(">25I", data[:100])
        header_size, width, height, stride, colors = (header[i] for i in (0, 4, 5, 12, 19))
        return Image.from_server(data[header_size + colors * 12:], width, height, stride)

    def settled_screenshot(self, rect):
        """What is in `rect` of the screen, once nothing is being painted there any longer."""
        def settled():
            image = self.screenshot().cut(rect)
            time.sleep(0.2)     # a window is shown before it is painted
            return image if image == self.screenshot().cut(rect) else None
        return wait_for(settled, what="a screen that does not change")

    def icon_rect(self, limit=DEFAULT_TIMEOUT):
        """Where the status icon is, waited for until it stays there: from the fake host, which says
        so; from the window of Xfce's tray, which is off the screen while it is empty; else from
        the icon's own window, which XEmbed gives it."""
        def look():
            if "fake" in self._panels:
                for line in reversed(self._panels["fake"].lines):
                    if '"icon"' in line:
                        return Rect(*json.loads(line)["rect"])
                return None
            for window in self.windows():
                is_tray = window.title == "wrapper-2.0" and self.bounds.contains(window.rect)
                is_icon = re.fullmatch("(?i)kestrel", window.title) and max(window.rect[2:]) <= 30
                if is_tray or is_icon:
                    return window.rect
            return None

        def settled():
            rect = look()
            time.sleep(0.2)     # a tray takes an icon in before it lays it out
            return rect if rect == look() else None
        return wait_for(settled, limit, "the status icon on the screen")

    def variables(self):
        """The environment as shell commands, to look at the desktop from another terminal."""
        return "\n".join(f"export {key}={shlex.quote(value)}"
                         for key, value in self.environment.items())
