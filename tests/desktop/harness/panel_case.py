"""Base class of the tests of the status icon and the popover in real panels."""
import time

from harness.case import DesktopTest
from harness.program import (BUS_NAME, POPOVER_WIDTH, item, popover_content, popover_height,
                             store_before_start)

SHORT, LONG = 0.08, 0.7


class PanelTest(DesktopTest):
    """For a desktop whose bars a subclass shows and ends; `bar` is the one that is shown."""

    limit = 240
    # An icon with this contrast can be told from its bar.
    readable = 100
    # How many pixels nearer to the icon the popover could be at most.
    slack = 10
    environment = {}

    def show_bar(self, edge, background="dark", monitor=0):
        """The panel along an edge."""
        raise NotImplementedError

    def kill_bar(self):
        """The panel crashes."""
        raise NotImplementedError

    def prepare(self):
        """Before the first start of the program."""
        self.scale = 1
        started = self.desktop.path("started")
        command = self.desktop.write("home/mark", f"#!/bin/sh\necho x >> {started}\n", 0o755)
        self.items = [item("App", title, command, f"7F3A0C52-8E1B-4D6F-9A20-5B6C7D8E9F0{n}")
                      for n, title in enumerate(("First", "Second"))]
        store_before_start(self.desktop, self.items)

    def started(self):
        """How often an item has been launched."""
        try:
            with open(self.desktop.path("started"), encoding="utf-8") as file:
                return len(file.readlines())
        except FileNotFoundError:
            return 0

    def start_program(self):
        self.start_kestrel({**self.environment, "QT_SCALE_FACTOR": str(self.scale)})

    def start_with_bar(self, edge, background="dark", monitor=0):
        self.show_bar(edge, background, monitor)
        self.start_program()
        self.find_icon()

    def move_bar(self, edge, background="dark", monitor=0):
        """The panel crashes, and is started again elsewhere."""
        self.kill_bar()
        self.show_bar(edge, background, monitor)
        self.find_icon()

    def find_icon(self):
        self.desktop.move(*self.elsewhere())
        self.icon = self.bar.wait_for_icon(self.desktop)
        self.assertGreaterEqual(self.icon.contrast, self.readable, self.icon)

    def elsewhere(self):
        """A place on the bare desktop, far from every bar and popover."""
        x, y, width, height = self.bar.screen
        return x + width // 3, y + height // 2

    def restart(self, scale=1):
        """The program ends and starts again."""
        self.assert_opens()
        self.kestrel.accessible.press("push button", "Quit")
        self.assertEqual(self.kestrel.process.wait(), 0)
        self.scale = scale
        self.start_program()
        self.find_icon()

    def click(self, hold=SHORT, button=1):
        self.desktop.click(*self.icon.rect.center, button=button, hold=hold)

    def content(self):
        """Where the popover's content is, once it is there: a window manager may show a window
        before it puts it in its place."""
        def settled():
            window = self.kestrel.popover()
            time.sleep(0.1)
            return window if window and window == self.kestrel.popover() else None
        return popover_content(self.wait_until(settled, "the popover"), self.scale)

    def assert_opens(self, hold=SHORT):
        """A click opens the popover, in its place and in its size."""
        self.click(hold)
        content = self.content()
        self.assertEqual(content[2:], (self.scale * POPOVER_WIDTH,
                                       self.scale * popover_height(len(self.items))))
        self.assertIsNone(self.misplacement(content))

    def misplacement(self, content):
        return self.bar.misplacement(content, self.icon.rect, self.scale * self.slack)

    def assert_stays_closed(self):
        self.wait_until(lambda: not self.kestrel.popover(), "the popover to close")
        self.assert_stays(lambda: not self.kestrel.popover(), 0.25)

    def assert_toggles(self, hold=SHORT):
        """One click opens it, the next closes it and does not open it again."""
        self.assert_opens(hold)
        self.assert_stays(self.kestrel.popover, 0.25)
        self.click(hold)
        self.assert_stays_closed()

    def assert_closes_by_clicks(self, *places):
        for place in places:
            self.assert_opens()
            self.desktop.click(*place)
            self.assert_stays_closed()

    def assert_keys_reach_it(self):
        before = self.started()
        self.assert_opens()
        self.desktop.key("Down", "Down", "Return")
        self.assert_stays_closed()
        self.wait_until(lambda: self.started() == before + 1, "the launched item")
        self.assert_opens()
        self.desktop.key("Escape")
        self.assert_stays_closed()

    def assert_other_buttons_do_nothing(self):
        for button in (2, 3):
            self.click(button=button)
            self.assert_stays(lambda: not self.kestrel.popover())
            self.assertTrue(self.kestrel.process.is_running)
            self.desktop.key("Escape")      # a menu of the panel's own
            self.desktop.click(*self.elsewhere())

    def assert_appears_in_a_late_bar(self, edge):
        self.kill_bar()
        self.kestrel.process.kill()
        self.start_program()
        self.wait_until(lambda: self.desktop.has_bus_name(BUS_NAME), "the program's bus name")
        self.show_bar(edge)
        self.find_icon()
        if self.kestrel.popover():      # without any panel it shows itself
            self.desktop.key("Escape")
            self.assert_stays_closed()
        self.assert_toggles()

    def assert_whole_life(self):
        self.prepare()
        self.start_with_bar("top")
        self.assert_toggles(SHORT)
        self.assert_toggles(LONG)
        self.assert_closes_by_clicks(self.elsewhere(), self.bar.rect.center)
        self.assert_keys_reach_it()
        self.assert_other_buttons_do_nothing()
        self.move_bar("bottom", "light")
        self.assert_toggles()
        self.restart(scale=2)
        self.assert_toggles()
        self.move_bar("top", "light")
        self.restart()
        self.assert_appears_in_a_late_bar("left")
        self.move_bar("right")
        self.assert_toggles()

    def assert_short_life(self):
        """For a panel with the same protocol as one that has had the whole test."""
        self.prepare()
        self.start_with_bar("top")
        self.assert_toggles(LONG)
        self.assert_keys_reach_it()
        self.move_bar("bottom", "light")
        self.assert_toggles()
        self.assert_appears_in_a_late_bar("left")

    def assert_stays_on_its_screen(self):
        """Wherever its bar is on two screens, along the edge where they meet too."""
        self.prepare()
        self.start_with_bar("top")
        self.assert_toggles()
        self.move_bar("bottom", monitor=1)
        self.assert_toggles()
        self.move_bar("left", monitor=1)
        self.restart(scale=2)
        self.assert_toggles()

    def assert_stays_on_the_second_screen(self, side):
        self.prepare()
        self.start_with_bar("bottom", monitor=1)
        self.assert_toggles()
        self.move_bar(side, monitor=1)
        self.assert_toggles()
