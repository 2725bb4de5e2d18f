"""GNOME Shell on a throw-away desktop: as an X11 window manager on a virtual server, or as a
Wayland compositor without a screen; with the extension that shows status icons, or as it comes."""
import json
import time

import gi
gi.require_version("GdkPixbuf", "2.0")
from gi.repository import GdkPixbuf  # noqa: E402 (after the choice of the version)

from harness.bars import Bar
from harness.desktop import Desktop
from harness.images import Image, Rect
from harness.panels import WATCHER
from harness.processes import DEFAULT_TIMEOUT, wait_for
from harness.shell_session import ShellSession

INDICATORS = "ubuntu-appindicators@ubuntu.com"
XSETTINGS = "/usr/libexec/gsd-xsettings"
IS_READY = "!Main.layoutManager._startingUp"
# The buttons of the extension, whichever protocol their icons came by.
ICONS = """Object.entries(Main.panel.statusArea)
    .filter(([name, button]) => name.startsWith("appindicator-") && button && button.visible &&
                                button.mapped)
    .map(([name, button]) => {
        const icon = button._icon || button;
        return [...icon.get_transformed_position(), ...icon.get_transformed_size()].map(Math.round);
    })"""
OPEN_MENUS = """Object.entries(Main.panel.statusArea)
    .filter(([name, button]) => button && button.menu && button.menu.isOpen)
    .map(([name]) => name)"""
RUNNING = """imports.gi.Shell.AppSystem.get_default().get_running()
    .flatMap(application => application.get_pids())"""
DEVICES = """
if (!global.testDevices) {
    const seat = Clutter.get_default_backend().get_default_seat();
    global.testDevices = {
        pointer: seat.create_virtual_device(Clutter.InputDeviceType.POINTER_DEVICE),
        keyboard: seat.create_virtual_device(Clutter.InputDeviceType.KEYBOARD_DEVICE)};
}
const {pointer, keyboard} = global.testDevices, now = GLib.get_monotonic_time();
"""
MODIFIERS = {"ctrl": "Control_L", "alt": "Alt_L", "shift": "Shift_L", "super": "Super_L"}


class _Gnome(ShellSession):
    """What both kinds of session share."""

    service = "org.gnome.Shell", "/org/gnome/Shell"

    def __init__(self, has_indicators=True, settings=None, **options):
        """`has_indicators`: whether the extension that shows status icons is there; `settings`:
        further ones."""
        self._has_indicators = has_indicators
        extensions = f"['{INDICATORS}']" if has_indicators else "@as []"
        self.settings = {
            "org/gnome/shell": {"enabled-extensions": extensions,
                                "disable-user-extensions": "false",
                                "welcome-dialog-last-shown-version": "'99'"},
            # The one about the missing lock screen would lie over the windows.
            "org/gnome/desktop/notifications": {"show-banners": "false"}, **(settings or {})}
        super().__init__(**options)

    def _finish_start(self):
        """When the shell is there."""
        self.show_overview(False)
        if self._has_indicators:
            self.wait_for_indicators()

    def wait_for_indicators(self, are_there=True):
        wait_for(lambda: self.has_bus_name(WATCHER) == are_there, what="the extension's name")

    def set_indicators(self, are_on):
        """Turns the extension on or off, as its user does."""
        method = "enableExtension" if are_on else "disableExtension"
        self.eval(f"Main.extensionManager.{method}({json.dumps(INDICATORS)})")
        self.wait_for_indicators(are_on)

    def bar(self):
        x, y, width, height = self.eval("const box = Main.layoutManager.panelBox;"
                                        "[box.x, box.y, box.width, box.height]")
        return Bar(Rect(x, y, width, self.bounds.height), "top", round(height))

    def icons(self):
        """Where the extension shows status icons."""
        return [Rect(*rect) for rect in self.eval(ICONS)]

    def show_overview(self, is_shown):
        self.eval(f"Main.overview.{'show' if is_shown else 'hide'}(); true")
        self.wait_for_overview(is_shown)

    def wait_for_overview(self, is_shown):
        shown = "" if is_shown else "!"
        wait_for(lambda: self.eval(f"{shown}Main.overview.visible"
                                   " && !Main.overview._animationInProgress"),
                 what="the overview to come or go", pause=0.1)

    def open_menu(self, name):
        """Opens a menu of the bar: "dateMenu" is the clock's."""
        self.eval(f"Main.panel.statusArea.{name}.menu.open(); true")
        wait_for(lambda: name in self.open_menus(), what=f"the menu {name}")

    def open_menus(self):
        return self.eval(OPEN_MENUS)

    def close_menus(self):
        for name in self.open_menus():
            self.eval(f"Main.panel.statusArea[{json.dumps(name)}].menu.close(); true")
        wait_for(lambda: not self.open_menus(), what="the menus to close")

    def set_scale(self, scale):
        """Makes the screen a dense one, as the control centre does; it must be large enough for
        that. X11 programs are told of whole scales; others the shell makes without them."""
        name, temporary = "org.gnome.Mutter.DisplayConfig", 1
        service = self.bus.get_object(name, "/" + name.replace(".", "/"), introspect=False)
        serial, monitors, *_ = service.GetCurrentState(dbus_interface=name, timeout=DEFAULT_TIMEOUT)
        (connector, *_), modes, _ = monitors[0]
        mode = next(mode[0] for mode in modes if "is-current" in mode[6])
        screen = 0, 0, float(scale), 0, True, [(connector, mode, {})]
        service.ApplyMonitorsConfig(serial, temporary, [screen], {}, dbus_interface=name,
                                    signature="uua(iiduba(ssa{sv}))a{sv}", timeout=DEFAULT_TIMEOUT)
        told = 96 * scale if scale == int(scale) else 96
        wait_for(lambda: rf"Xft.dpi:\t{told}\n" in self.run("xprop", "-root", "RESOURCE_MANAGER"),
                 what="the resolution that X11 programs are told")
        self.bounds = Rect(0, 0, *self.eval("[global.stage.width, global.stage.height]"))

    def running_applications(self):
        """The processes that the dash shows as running."""
        return self.eval(RUNNING)


class GnomeOnX11(_Gnome, Desktop):
    """Its pointer and keyboard are the X server's."""

    variables = {"XDG_CURRENT_DESKTOP": "GNOME", "XDG_SESSION_DESKTOP": "gnome",
                 "DESKTOP_SESSION": "gnome", "XDG_SESSION_TYPE": "x11"}

    def __init__(self, has_indicators=True, width=1280, height=800):
        super().__init__(has_indicators, window_manager=None, width=width, height=height)
        try:
            self._start_gnome()
            self.start_service([XSETTINGS])
        except BaseException:
            self.stop()
            raise

    def _start_gnome(self):
        self.start_shell(["gnome-shell", "--x11", "--sm-disable", "--unsafe-mode"], IS_READY)
        self._finish_start()

    def ask_for_overview(self):
        """By a click on its button: an open popover has all keys to itself."""
        self.click(40, 16)

    def restart_shell(self):
        """The shell crashes and is started again."""
        self.shell.kill()
        wait_for(lambda: not self.has_bus_name(self.service[0]), what="the shell's name to go")
        self._start_gnome()


class GnomeOnWayland(_Gnome):
    """Its pointer and keyboard are devices that the shell makes for the test. Programs see a
    Wayland and an X display, and choose for themselves."""

    variables = {**GnomeOnX11.variables, "XDG_SESSION_TYPE": "wayland"}

    def __init__(self, has_indicators=True, width=1280, height=800, settings=None):
        super().__init__(has_indicators, settings)
        self.bounds = Rect(0, 0, width, height)
        try:
            self._start_bus()
            self.start_shell(["gnome-shell", "--wayland", "--headless", "--virtual-monitor",
                              f"{width}x{height}", "--wayland-display=wayland-0",
                              "--unsafe-mode"], IS_READY)
            self.environment.update(
                WAYLAND_DISPLAY="wayland-0", DISPLAY=self.eval('GLib.getenv("DISPLAY")'),
                XAUTHORITY=self.eval('GLib.getenv("XAUTHORITY") || ""'))
            self.start_service([XSETTINGS], {"GDK_BACKEND": "x11"})
            self.move(width // 2, height - 20)      # so that there is a pointer
            self._finish_start()
        except BaseException:
            self.stop()
            raise

    def ask_for_overview(self):
        self.key("Super_L")
        self.wait_for_overview(True)

    # The pointer and the keyboard.

    def _device(self, call):
        self.eval(DEVICES + call + "; true")

    def move(self, x, y):
        self._device(f"pointer.notify_absolute_motion(now, {x}, {y})")

    def click(self, x, y, button=1, hold=0.08):
        self.move(x, y)
        time.sleep(0.05)
        self._device(f"pointer.notify_button(now, {button}, Clutter.ButtonState.PRESSED)")
        time.sleep(hold)
        self._device(f"pointer.notify_button(now, {button}, Clutter.ButtonState.RELEASED)")

    def _press_key(self, symbol, state):
        self._device(f"keyboard.notify_keyval(now, {symbol}, Clutter.KeyState.{state})")

    def key(self, *keys):
        for key in keys:
            symbols = [f"Clutter.KEY_{MODIFIERS.get(name, name)}" for name in key.split("+")]
            for symbol in symbols:
                self._press_key(symbol, "PRESSED")
            for symbol in reversed(symbols):
                self._press_key(symbol, "RELEASED")
            time.sleep(0.02)

    def type(self, text):
        for letter in text:
            for state in ("PRESSED", "RELEASED"):
                self._press_key(ord(letter), state)

    def screenshot(self):
        """The whole screen, as the shell photographs it, in the pixels that places are in."""
        file, screenshot = self.path("screen.png"), "org.gnome.Shell.Screenshot"
        service = self.bus.get_object("org.gnome.Shell", "/" + screenshot.replace(".", "/"),
                                      introspect=False)
        service.Screenshot(False, False, file, dbus_interface=screenshot, timeout=DEFAULT_TIMEOUT)
        image = GdkPixbuf.Pixbuf.new_from_file_at_scale(file, *self.bounds[2:], False)
        width, height, channels = image.get_width(), image.get_height(), image.get_n_channels()
        data, stride = image.get_pixels(), image.get_rowstride()
        rows = b"".join(data[y * stride:y * stride + width * channels] for y in range(height))
        pixels = bytearray(width * height * 3)
        for part in range(3):
            pixels[part::3] = rows[part::channels]
        return Image(width, height, bytes(pixels))
