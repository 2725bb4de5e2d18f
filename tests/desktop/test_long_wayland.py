"""The whole life of the status icon and the popover in sway with waybar: through XWayland, as the
program runs there by itself, and as a Wayland client, where its user wants that."""
import glob
import time
import unittest

from harness.panel_case import LONG, SHORT, PanelTest
from harness.wayland import SwayDesktop

PLATFORM_PLUGINS = glob.glob("/usr/lib/*/qt6/plugins/platforms/libqwayland*")


class WaybarTest(PanelTest):
    """Waybar cannot be looked at: the icon has a grey that can be told from dark and light."""

    readable = 80

    def show_bar(self, edge, background="dark", monitor=0):
        self.bar = self.desktop.start_bar(edge, background, monitor)

    def kill_bar(self):
        self.desktop.kill_bar()

    def click(self, hold=SHORT, button=1):
        """As a user does it, who never holds the pointer quite still: without that, X11 programs
        may not be told where the pointer is."""
        super().click(hold, button)
        x, y = self.icon.rect.center
        for step in (1, 0, 1):
            time.sleep(0.1)
            self.desktop.move(x + step, y)

    def start_sway(self, **options):
        self.desktop = self.enterContext(SwayDesktop(bar=False, **options))


class XWaylandTest(WaybarTest):
    """Bars cover X11 windows, and nobody tells where they are: the popover stays clear of both
    edges that a corner's icon may belong to."""

    slack = 32

    def test_whole_life_in_waybar_through_xwayland(self):
        self.start_sway()
        self.assert_whole_life()

    def test_stays_on_its_screen_through_xwayland(self):
        self.start_sway(screens=2)
        self.assert_stays_on_its_screen()

    def test_clicks_on_a_dense_screen_through_xwayland(self):
        self.start_sway(scale=2)
        self.prepare()
        self.start_with_bar("top")
        self.assert_toggles()


@unittest.skipUnless(PLATFORM_PLUGINS, "Qt has no plugin for Wayland")
class NativeWaylandTest(WaybarTest):
    """The compositor alone decides where a client's window is."""

    environment = {"QT_QPA_PLATFORM": "wayland"}

    def misplacement(self, content):
        return None if self.bar.screen.contains(content) else f"{content} in {self.bar.screen}"

    def test_whole_life_in_waybar_natively(self):
        self.start_sway()
        self.prepare()
        self.start_with_bar("top")
        self.assert_toggles(SHORT)
        self.assert_toggles(LONG)
        self.assert_closes_by_clicks(self.elsewhere())
        self.assert_keys_reach_it()
        self.assert_other_buttons_do_nothing()
        self.move_bar("bottom", "light")
        self.restart(scale=2)
        self.assert_toggles()
        self.assert_appears_in_a_late_bar("left")

    def test_stays_on_its_screen_natively(self):
        self.start_sway(screens=2)
        self.assert_stays_on_its_screen()
