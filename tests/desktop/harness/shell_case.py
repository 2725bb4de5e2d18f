"""Base class of the tests in the desktops whose panel, window manager and compositor are one
program: GNOME Shell and Cinnamon."""
import collections
import os
import time

from harness.bars import Bar
from harness.images import Rect
from harness.panel_case import LONG, SHORT, PanelTest
from harness.processes import Timeout, wait_for
from harness.program import item, popover_content
from harness.shell_session import text_of

# A user takes at least this long, in seconds, from a click to the next key or click; shells need
# part of it.
REACTION_TIME = 0.5
# A shell that has opened something of its own may take the first Escape or click for that.
TRIES = 2


class ShellTest(PanelTest):
    """The subclass says where the bar has nothing: `empty_part` of its length."""

    limit = 400
    empty_part = 0.3

    def start_session(self, desktop):
        """Begins with a desktop that has been started."""
        self.desktop = self.enterContext(desktop)
        self.bar = self.desktop.bar()
        self.prepare()

    def start_program(self):
        """At the scale that the session says."""
        self.start_kestrel(self.environment)

    # Places.

    def elsewhere(self):
        x, y, width, height = self.bar.screen
        is_at_top = self.bar.edge == "top"
        return x + width * 7 // 8, y + height * (7 if is_at_top else 1) // 8

    def empty_place_on_the_bar(self):
        x, y, width, height = self.bar.rect
        return round(x + width * self.empty_part), y + height // 2

    def place_in(self, title):
        """The middle of a window of that title."""
        return next(window.rect.center for window in self.desktop.shell_windows()
                    if window.title == title)

    # The icon.

    def find_icon(self):
        """The bar shows one icon, which can be read and stays: the extension also shows icons that
        it drops again."""
        self.desktop.move(*self.elsewhere())

        def settled():
            icons = self.desktop.icons()
            time.sleep(1)
            return icons if len(icons) == 1 and icons == self.desktop.icons() else None
        rect = wait_for(settled, what="one icon on the bar")[0]
        x, y, width, height = self.bar.rect
        around = Bar(Rect(rect.x, self.bar.screen.y, rect.width, self.bar.screen.height),
                     self.bar.edge, height)

        def readable():
            icon = around.icon(self.desktop.screenshot())
            return icon if icon and icon.contrast >= self.readable else None
        # It is painted again when the program has seen the bar, which a shell fades in.
        self.icon = wait_for(readable, what="an icon that can be read", pause=0.1)

    def assert_other_buttons_do_nothing(self):
        windows = self.desktop.shell_windows(self.kestrel.process.pid)
        super().assert_other_buttons_do_nothing()
        self.assertEqual(self.desktop.shell_windows(self.kestrel.process.pid), windows)

    # The keyboard.

    def type_into_popover(self, letters, title):
        """Letters find the row of that title."""
        self.assert_stays(self.kestrel.popover, REACTION_TIME)
        self.desktop.type(letters)
        self.wait_until(lambda: self.selected_rows() == [title], "the row that is typed")

    def selected_rows(self):
        rows = self.kestrel.accessible.find("list", "Items").find_all("list item")
        return [row.name for row in rows if "selected" in row.states]

    def open_editor(self, title="Editor"):
        """A window below the popover, which has the keyboard."""
        editor = self.desktop.open_editor(title)
        self.desktop.click(*self.place_in(title))
        self.type_into(editor, "a")
        return editor

    def type_into(self, editor, letters):
        """The editor has the keyboard, and what it held before is all that it has got."""
        text = text_of(editor) + letters
        self.desktop.type(letters)
        self.wait_until(lambda: text_of(editor) == text,
                        f"{text!r} in the editor: {text_of(editor)!r}")

    def assert_keyboard_is_the_popovers(self, editor):
        """From the click on; and the window's beneath when the popover has gone."""
        before, started = text_of(editor), self.started()
        self.assert_opens()
        self.type_into_popover("sec", "Second")
        self.desktop.key("Return")
        self.assert_stays_closed()
        self.wait_until(lambda: self.started() == started + 1, "the launched item")
        self.assert_opens()
        self.desktop.key("Escape")
        self.assert_stays_closed()
        self.assertEqual(text_of(editor), before)
        self.type_into(editor, "b")

    # What else the shell has.

    def second_start(self):
        """Its user starts the program again."""
        self.desktop.start([os.environ["KESTREL_PROGRAM"]]).wait()
        self.wait_until(self.kestrel.popover, "the popover")

    def assert_closable(self, place=None):
        """By Escape, or by clicks at a place that is not the popover's."""
        for _ in range(TRIES):
            if not self.kestrel.popover():
                break
            if place:
                self.desktop.click(*place)
            else:
                self.desktop.key("Escape")
            self.wait_a_moment_for_no_popover()
        self.assert_stays_closed()

    def wait_a_moment_for_no_popover(self):
        try:
            wait_for(lambda: not self.kestrel.popover(), limit=2)
        except Timeout:
            pass    # the shell took it

    def assert_opens_at_a_second_start(self):
        self.second_start()
        self.assertIsNone(self.misplacement(popover_content(self.kestrel.popover(), self.scale)))
        self.desktop.key("Escape")
        self.assert_stays_closed()

    def assert_closes_for_another_window(self):
        """One that its user brings forward by the keyboard, for example."""
        other = self.desktop.open_editor("Other")
        self.desktop.raise_window("Editor")
        self.assert_opens()
        self.desktop.raise_window("Other")
        self.assert_stays_closed()
        other.stop()

    def window_titles(self):
        """The program's windows that can be switched to."""
        return self.desktop.listed_windows(self.kestrel.process.pid)

    def assert_only_the_settings_are_listed(self):
        self.assert_opens()
        self.assert_is_listed(False)
        self.kestrel.open_settings()
        self.assert_is_listed(True)
        self.kestrel.close_settings()

    def assert_is_listed(self, is_listed):
        """Whether the shell shows that the program has a window."""
        self.assertEqual(len(self.window_titles()), int(is_listed))

    def assert_comes_back(self):
        """After the panel has gone and come again."""
        self.find_icon()
        if self.kestrel.popover():      # without any panel it shows itself
            self.desktop.key("Escape")
            self.assert_stays_closed()
        self.assert_toggles()

    # Launching.

    def store_applications(self):
        """Two applications with one instance each: one that a start of it finds, and one that the
        bus knows."""
        started = self.application_entry("Diary", "org.example.Diary", "false")
        activated = self.application_entry("Ledger", "org.example.Ledger", "true")
        self.desktop.write("data/dbus-1/services/org.example.Ledger.service",
                           "[D-BUS Service]\nName=org.example.Ledger\nExec="
                           + " ".join(self.desktop.editor_command("Ledger", "org.example.Ledger")))
        self.items = [item("App", "Diary", started, "7F3A0C52-8E1B-4D6F-9A20-5B6C7D8E9F01"),
                      item("App", "Ledger", activated, "7F3A0C52-8E1B-4D6F-9A20-5B6C7D8E9F02")]

    def application_entry(self, title, application_id, is_activatable):
        command = " ".join(self.desktop.editor_command(title, application_id))
        return self.desktop.write(
            f"data/applications/{application_id}.desktop",
            f"[Desktop Entry]\nType=Application\nName={title}\nExec={command}\n"
            f"StartupNotify=true\nDBusActivatable={is_activatable}\n")

    def assert_launch_brings_forward(self, title):
        """The application has the keyboard when it is new; and, when it runs already, it comes
        before the others too."""
        self.launch(title)
        editor = self.desktop.open_editor("Cover of " + title)
        self.launch(title)
        self.wait_until(lambda: self.is_above(title, "Cover of " + title), f"{title} to be raised")
        editor.stop()

    def launch(self, title):
        self.assert_opens()
        self.assert_stays(self.kestrel.popover, REACTION_TIME)
        self.kestrel.click_row(title)
        self.desktop.wait_for_focus(title)

    def is_above(self, title, other):
        order = [window.title for window in self.desktop.shell_windows()]
        return order.index(title) > order.index(other)

    # Colours.

    def background(self):
        """The commonest colour of the open popover, as a grey from 0 to 255."""
        content = popover_content(self.kestrel.popover(), self.scale)
        data = self.desktop.screenshot().cut(content).data
        pixels = collections.Counter(data[at:at + 3] for at in range(0, len(data), 3))
        return sum(pixels.most_common(1)[0][0]) // 3

    def assert_six_clicks(self):
        for hold in (SHORT, LONG, SHORT):
            self.assert_toggles(hold)
