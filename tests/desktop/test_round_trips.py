"""How often the program waits for the X server's answer before the popover is shown."""
import os
import unittest

from harness.case import DesktopTest
from harness.program import has_sanitizer, item, store_before_start
from harness.round_trips import RoundTrips

MOST = 4


@unittest.skipIf(has_sanitizer(), "a sanitizer wants to be loaded before what counts")
class RoundTripsTest(DesktopTest):
    """In the second opening, which finds everything that the first one had to ask."""

    def start(self):
        self.trips = RoundTrips(self.desktop, os.environ["KESTREL_ROUND_TRIPS"])
        store_before_start(self.desktop, [
            item("App", f"Item {i}", f"/opt/item-{i}", f"00000000-0000-4000-8000-{i:012X}")
            for i in range(20)])
        self.start_kestrel(self.trips.environment)

    def assert_few_in(self, opening):
        mark = self.trips.mark()
        opening()
        window = self.kestrel.wait_for_popover()
        asked = self.trips.before_showing(window.id, mark)
        self.assertLessEqual(asked, MOST)
        # What Qt itself asks when it shows a window: without it, nothing was counted.
        self.assertGreater(asked, 0)

    def close(self):
        self.desktop.key("Escape")
        self.kestrel.wait_for_no_popover()

    def assert_few_when_warm(self, opening):
        opening()
        self.kestrel.wait_for_popover()
        self.close()
        self.assert_few_in(opening)
        self.close()

    def assert_few_after_another_window(self, opening):
        """The window manager has told of it, and it might be a panel."""
        self.desktop.start(["xterm", "-T", "Other"])
        self.desktop.wait_for_window(title="Other")
        self.assert_few_in(opening)

    def test_warm_opening_by_the_bus_waits_for_few_answers(self):
        self.start_desktop(panel="fake")
        self.start()
        self.assert_few_when_warm(self.kestrel.activate)
        self.assert_few_after_another_window(self.kestrel.activate)

    def test_warm_opening_at_an_icon_in_the_panel_waits_for_few_answers(self):
        self.start_desktop(panel="tint2")
        self.start()
        icon = self.desktop.icon_rect()
        self.assert_few_when_warm(lambda: self.desktop.click(*icon.center))
        self.assert_few_after_another_window(lambda: self.desktop.click(*icon.center))

    def test_warm_opening_under_a_compositor_waits_for_few_answers(self):
        self.start_desktop(panel="xfce4-panel", window_manager="xfwm4", compositor=True)
        self.start()
        self.assert_few_when_warm(self.kestrel.activate)
        self.assert_few_after_another_window(self.kestrel.activate)
