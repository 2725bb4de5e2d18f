"""What the real desktop shells need to run without a screen, a login manager and a user's settings,
and how a test speaks to them: they are written in JavaScript, and run what they are told."""
import json
import pathlib
import sys
from typing import NamedTuple

import dbus
import dbus.bus

from harness.desktop import Session
from harness.images import Rect
from harness.processes import DEFAULT_TIMEOUT, wait_for

EDITOR = str(pathlib.Path(__file__).resolve().with_name("text_editor_app.py"))
SYSTEM_BUS = """<busconfig>
  <type>system</type>
  <listen>unix:path={folder}/system-bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
    <allow user="*"/>
  </policy>
</busconfig>
"""
IMPORTS = "const Main = imports.ui.main, {Clutter, Gio, GLib, Meta} = imports.gi;"
WINDOWS = """global.get_window_actors().map(actor => {
    const window = actor.meta_window, frame = window.get_frame_rect();
    return [window.get_title() || "", [frame.x, frame.y, frame.width, frame.height],
            window.get_pid(), window.has_focus(), window.is_skip_taskbar()];
})"""
# Raising a window as its user does from a window list.
RAISE = """global.get_window_actors().map(actor => actor.meta_window)
    .find(window => window.get_title() == {title}).activate(global.get_current_time()); true"""


class ShellWindow(NamedTuple):
    """A window as the shell manages it, X11 or Wayland; `rect` is without a shadow of its own."""

    title: str
    rect: Rect
    pid: int
    is_focused: bool
    is_skipped: bool


class ShellSession(Session):
    """Put before a desktop that it is to be of. A subclass says which `service` runs JavaScript, a
    bus name with its path, and which `variables` its programs see; `settings` are texts of
    GVariants by schema path and key."""

    service = variables = None
    settings = {}
    is_whole = True

    def _start_bus(self):
        self.environment.update(self.variables, GSETTINGS_BACKEND="keyfile")
        lines = []
        for group, values in self.settings.items():
            lines += [f"[{group}]", *(f"{key}={value}" for key, value in values.items())]
        self.write("config/glib-2.0/settings/keyfile", "\n".join(lines) + "\n")
        super()._start_bus()
        self._start_system_bus()

    def _start_system_bus(self):
        """With a login manager that says yes to everything."""
        configuration = self.write("system-bus.conf", SYSTEM_BUS.format(folder=self.folder))
        self.start_service(["dbus-daemon", "--config-file=" + configuration, "--nofork",
                            "--nopidfile", "--print-address=1"]).wait_for_line("unix:")
        address = "unix:path=" + self.path("system-bus")
        self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = address
        self.start_service(["/usr/bin/python3", "-m", "dbusmock", "--system",
                            "--template", "logind"])
        bus = dbus.bus.BusConnection(address)
        try:
            wait_for(lambda: bus.name_has_owner("org.freedesktop.login1"), what="a login manager")
        finally:
            bus.close()

    def start_shell(self, command, is_ready, environment=None):
        """Starts the shell and waits until the expression `is_ready` holds in it."""
        self.shell = self.start_service(command, environment)

        def ready():
            if not self.shell.is_running:
                raise RuntimeError("the shell ended:\n" + "\n".join(self.shell.lines[-20:]))
            return self._answers(is_ready)
        wait_for(ready, 60, f"{command[0]} to start", pause=0.1)

    def _answers(self, script):
        try:
            return self.has_bus_name(self.service[0]) and self.eval(script)
        except (dbus.DBusException, RuntimeError):
            return False

    def eval(self, script):
        """The value of the last expression of a script that the shell runs."""
        shell = self.bus.get_object(*self.service, introspect=False)
        is_good, text = shell.Eval(IMPORTS + script, dbus_interface=self.service[0],
                                   timeout=DEFAULT_TIMEOUT)
        if not is_good:
            raise RuntimeError(f"{script}: {text}")
        return json.loads(str(text)) if text else None

    def set_setting(self, schema, key, value):
        """Changes a setting of the session, as its control centre does."""
        self.run("gsettings", "set", schema, key, value)

    def shell_windows(self, pid=None):
        """The windows of a process or of all, the topmost last."""
        windows = [ShellWindow(title, Rect(*rect), *rest)
                   for title, rect, *rest in self.eval(WINDOWS)]
        return [window for window in windows if pid in (None, window.pid)]

    def listed_windows(self, pid):
        """The titles of a process's windows that the shell offers to switch to."""
        return [title for title, owner in self.eval(
            "global.display.get_tab_list(Meta.TabList.NORMAL_ALL, null)"
            ".filter(window => !window.is_skip_taskbar())"
            ".map(window => [window.get_title(), window.get_pid()])") if owner == pid]

    def open_editor(self, title, application_id=None):
        """Opens a text editor (text_editor_app.py), an application of this kind of session, and
        gives it the keyboard."""
        editor = self.start(self.editor_command(title, application_id))
        editor.wait_for_line("^shown$")
        wait_for(lambda: any(window.title == title for window in self.shell_windows()),
                 what=f"the window {title}")
        self.raise_window(title)
        return editor

    @staticmethod
    def editor_command(title, application_id=None):
        return [sys.executable, EDITOR, title, *([application_id] if application_id else [])]

    def raise_window(self, title):
        self.eval(RAISE.format(title=json.dumps(title)))
        self.wait_for_focus(title)

    def has_focus(self, title):
        return any(window.title == title and window.is_focused for window in self.shell_windows())

    def wait_for_focus(self, title):
        wait_for(lambda: self.has_focus(title), what=f"{title} to have the keyboard", pause=0.1)


def text_of(editor):
    """What is in an editor."""
    texts = [line for line in editor.lines if line.startswith('"')]
    return json.loads(texts[-1]) if texts else ""
