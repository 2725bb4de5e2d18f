"""The whole life of the status icon and the popover in real panels: each on one desktop, along
every edge, light and dark, and ended and started again."""
from harness.bars import Bar
from harness.desktop import Desktop
from harness.panel_case import PanelTest
from harness.two_screens import TwoScreenDesktop

WALLPAPER = (0x35, 0x50, 0x6B)
WINDOW_MANAGERS = {"tint2": "openbox", "trayer": "openbox", "xfce4-panel": "xfwm4",
                   "lxqt-panel": "openbox", "mate-panel": "marco"}


class BarTest(PanelTest):
    """In panels of X11 desktops."""

    def show_bar(self, edge, background="dark", monitor=0):
        self.desktop.fill_background(WALLPAPER)
        self.bar = Bar(self.desktop.monitors[monitor], edge)
        self.desktop.start_panel(self.panel, edge=edge, background=background, monitor=monitor)

    def kill_bar(self):
        self.desktop.kill_panel(self.panel)

    def start(self, panel, desktop=Desktop):
        self.panel = panel
        self.desktop = self.enterContext(desktop(window_manager=WINDOW_MANAGERS[panel]))

    def assert_whole_life_in(self, panel):
        self.start(panel)
        self.assert_whole_life()

    def test_whole_life_in_tint2(self):
        self.assert_whole_life_in("tint2")

    def test_short_life_in_trayer(self):
        self.start("trayer")
        self.assert_short_life()

    def test_whole_life_in_xfce4_panel(self):
        self.assert_whole_life_in("xfce4-panel")

    def test_whole_life_in_lxqt_panel(self):
        self.assert_whole_life_in("lxqt-panel")

    def test_whole_life_in_mate_panel(self):
        self.assert_whole_life_in("mate-panel")

    def test_icon_can_be_read_beside_a_panel_of_another_colour(self):
        """The light panel has the icon; once it was clicked the program knows that too."""
        self.panel, self.readable = "xfce4-panel", 80
        self.start_desktop(window_manager="xfwm4", panel="tint2")
        self.prepare()
        self.start_with_bar("bottom", "light")
        unsure = self.icon.contrast
        self.assert_toggles()
        self.find_icon()
        self.assertGreater(self.icon.contrast, unsure + 40)

    def test_stays_on_its_screen_in_tint2(self):
        self.start("tint2", TwoScreenDesktop)
        self.assert_stays_on_its_screen()

    def test_stays_on_its_screen_in_xfce4_panel(self):
        self.start("xfce4-panel", TwoScreenDesktop)
        self.assert_stays_on_its_screen()

    def test_stays_on_its_screen_in_lxqt_panel(self):
        self.start("lxqt-panel", TwoScreenDesktop)
        # It takes no edge at which the screens meet.
        self.assert_stays_on_the_second_screen("right")

    def test_stays_on_its_screen_in_mate_panel(self):
        self.start("mate-panel", TwoScreenDesktop)
        self.assert_stays_on_the_second_screen("left")
