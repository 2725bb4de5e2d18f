"""The status icon and the popover in sway with waybar."""
from harness.case import DesktopTest
from harness.images import Rect
from harness.program import POPOVER_WIDTH, popover_height
from harness.wayland import BAR_HEIGHT, SwayDesktop


class WaylandTest(DesktopTest):
    """The popover is no window that sway lists: it is seen by its accessible button "Quit"."""

    def start(self):
        self.desktop = self.enterContext(SwayDesktop())
        before = self.desktop.screenshot()
        self.start_kestrel()
        self.icon = self.desktop.icon_rect(before)

    def is_open(self):
        return bool(self.kestrel.accessible.find_all("push button", "Quit"))

    def click(self):
        self.desktop.click(*self.icon.center)

    def assert_opens(self):
        self.click()
        self.wait_until(self.is_open, "the popover")

    def assert_closed(self):
        self.wait_until(lambda: not self.is_open(), "the popover to close")
        self.assert_stays(lambda: not self.is_open())

    def test_clicks_on_the_icon_in_waybar(self):
        self.start()
        empty = self.desktop.screenshot()
        self.assert_opens()
        button = self.kestrel.accessible.find("push button", "Quit").rect
        self.wait_until(lambda: self.desktop.screenshot().cut(button).difference(empty.cut(button)),
                        "the popover on the screen")
        corner = Rect(self.desktop.bounds.width - POPOVER_WIDTH - 48, BAR_HEIGHT,
                      POPOVER_WIDTH + 48, popover_height(0) + 48)
        self.assertTrue(corner.contains(button), button)

        self.click()
        self.assert_closed()
        self.assert_opens()
        self.desktop.key("Escape")
        self.assert_closed()
        self.assert_opens()
        self.desktop.click(300, 500)
        self.assert_closed()

    def test_first_click_that_is_held_long_opens_the_popover_in_waybar(self):
        self.start()
        self.desktop.click(*self.icon.center, hold=0.5)
        self.wait_until(self.is_open, "the popover")
        self.assert_stays(self.is_open)

    def test_settings_open_and_the_program_quits_in_sway(self):
        self.start()
        self.assert_opens()
        self.kestrel.accessible.press("push button", "Settings")
        self.wait_until(lambda: any(w.title == "Kestrel" for w in self.desktop.windows()),
                        "the settings window")
        self.assert_closed()
        self.assert_opens()
        self.kestrel.accessible.press("push button", "Quit")
        self.assertEqual(self.kestrel.process.wait(), 0)
