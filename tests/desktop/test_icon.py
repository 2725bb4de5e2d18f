"""The status icon and the popover in real panels, by a real pointer."""
from harness.case import DesktopTest
from harness.images import Rect
from harness.program import BUS_NAME, POPOVER_WIDTH, popover_height

SHORT, LONG = 0.08, 0.7


class IconTest(DesktopTest):
    """Each panel gets the same round of clicks: panels differ in protocol, in what they send on
    press and on release, and in who holds the pointer meanwhile."""

    def start(self, panel, **options):
        """Starts the desktop and the program, and waits for the icon."""
        self.start_desktop(panel=panel, **options)
        self.start_kestrel()
        self.icon = self.desktop.icon_rect()

    def click(self, hold=SHORT, button=1):
        self.desktop.click(*self.icon.center, button=button, hold=hold)

    def assert_popover_at_icon(self, window, edge="top"):
        """The empty popover: on the screen, clear of the bar, as near to the icon as it can be."""
        rect, screen = window.rect, self.desktop.bounds
        self.assertEqual(rect[2:], (POPOVER_WIDTH, popover_height(0)))
        self.assertTrue(screen.contains(rect), rect)
        x, y = self.icon.center
        wanted = max(0, min(x - rect.width // 2, screen.width - rect.width))
        self.assertLessEqual(abs(rect.x - wanted), 24, f"icon {self.icon}, popover {rect}")
        gap = rect.y - y if edge == "top" else y - (rect.y + rect.height)
        self.assertTrue(0 <= gap <= 40, f"icon {self.icon}, popover {rect}")

    def assert_toggles(self, hold):
        """One click opens it, the next closes it and does not open it again."""
        self.click(hold)
        self.kestrel.wait_for_popover()
        self.assert_stays(self.kestrel.popover)
        self.click(hold)
        self.kestrel.wait_for_no_popover()
        self.assert_stays(lambda: not self.kestrel.popover())

    def assert_round_of_clicks(self, edge="top"):
        self.assert_toggles(SHORT)
        self.assert_toggles(LONG)
        self.click()
        self.assert_popover_at_icon(self.kestrel.wait_for_popover(), edge)
        self.desktop.click(300, 400)
        self.kestrel.wait_for_no_popover()
        self.click()
        self.kestrel.wait_for_popover()
        self.desktop.key("Escape")
        self.kestrel.wait_for_no_popover()

    def test_clicks_on_the_icon_in_tint2(self):
        self.start("tint2")
        self.assert_round_of_clicks()

    def test_clicks_on_the_icon_in_xfce4_panel(self):
        self.start("xfce4-panel", window_manager="xfwm4")
        self.assert_round_of_clicks()

    def test_clicks_on_the_icon_in_a_panel_at_the_bottom(self):
        self.start("xfce4-panel", window_manager="xfwm4", edge="bottom")
        self.assert_round_of_clicks(edge="bottom")

    def test_clicks_on_the_icon_in_a_bar_without_focus(self):
        self.start("fake", panel_options=["--bar=dock"])
        self.assert_round_of_clicks()

    def test_clicks_on_the_icon_in_a_bar_that_acts_on_press(self):
        self.start("fake", panel_options=["--bar=normal", "--on=press", "--at=zero"])
        self.assert_round_of_clicks()

    def assert_only_the_left_button_opens(self):
        for button in (2, 3):
            self.click(button=button)
            self.assert_stays(lambda: not self.kestrel.popover())
            self.assertTrue(self.kestrel.process.is_running)
            self.desktop.key("Escape")      # a menu of the panel's own
        self.click()
        self.kestrel.wait_for_popover()

    def test_only_the_left_button_opens_in_tint2(self):
        self.start("tint2")
        self.assert_only_the_left_button_opens()

    def test_only_the_left_button_opens_in_xfce4_panel(self):
        self.start("xfce4-panel", window_manager="xfwm4")
        self.assert_only_the_left_button_opens()

    def test_only_the_left_button_opens_in_a_bar_of_the_bus(self):
        self.start("fake", panel_options=["--bar=dock"])
        self.assert_only_the_left_button_opens()

    def assert_survives_a_restart_of(self, panel, **options):
        self.start(panel, **options)
        self.desktop.kill_panel(panel)
        self.desktop.start_panel(panel, options.get("panel_options", ()))
        self.icon = self.desktop.icon_rect()
        self.assert_toggles(SHORT)

    def test_icon_has_the_colour_that_a_tray_names_late(self):
        self.start("tint2")
        color = (0, 200, 255)
        self.desktop.set_tray_color(color)
        left, top, width, height = self.icon

        def has_color():
            screen = self.desktop.screenshot()
            return any(screen.pixel(x, y) == color for x in range(left, left + width)
                       for y in range(top, top + height))
        self.wait_until(has_color, "an icon of that colour")

    def test_icon_comes_back_when_tint2_restarts(self):
        self.assert_survives_a_restart_of("tint2")

    def test_icon_comes_back_when_xfce4_panel_restarts(self):
        self.assert_survives_a_restart_of("xfce4-panel", window_manager="xfwm4")

    def test_icon_comes_back_when_a_bar_of_the_bus_restarts(self):
        self.assert_survives_a_restart_of("fake", panel_options=["--bar=dock"])

    def assert_appears_in_a_late(self, panel, panel_options=(), **options):
        self.start_desktop(**options)
        self.start_kestrel()
        self.wait_until(lambda: self.desktop.has_bus_name(BUS_NAME), "the program's bus name")
        self.desktop.start_panel(panel, panel_options)
        self.icon = self.desktop.icon_rect()
        if self.kestrel.popover():      # without any panel it shows itself
            self.desktop.key("Escape")
            self.kestrel.wait_for_no_popover()
        self.assert_toggles(SHORT)

    def test_icon_appears_when_tint2_starts_late(self):
        self.assert_appears_in_a_late("tint2")

    def test_icon_appears_when_xfce4_panel_starts_late(self):
        self.assert_appears_in_a_late("xfce4-panel", window_manager="xfwm4")

    def test_icon_appears_when_a_bar_of_the_bus_starts_late(self):
        self.assert_appears_in_a_late("fake", ["--bar=dock"])

    def test_icon_tells_its_name_on_the_bus(self):
        self.start_desktop(panel="fake")
        self.start_kestrel()
        properties = self.desktop.status_item_properties()
        self.assertEqual(properties["Id"], "app.kestrel.Kestrel")
        self.assertEqual(properties["Title"], "Kestrel")


class StartTest(DesktopTest):
    """Starting where something is missing, or a second time."""

    def test_without_a_panel_the_popover_opens_in_the_corner(self):
        self.start_desktop()
        self.start_kestrel()
        rect = self.kestrel.wait_for_popover().rect
        screen = self.desktop.bounds
        self.assertEqual(rect[2:], (POPOVER_WIDTH, popover_height(0)))
        corner = Rect(screen.width - rect.width - 16, 0, rect.width + 16, rect.height + 40)
        self.assertTrue(corner.contains(rect), rect)

    def test_without_a_session_bus_it_runs_in_tint2(self):
        self.start_desktop(panel="tint2", session_bus=False)
        self.start_kestrel()
        icon = self.desktop.icon_rect()
        self.desktop.click(*icon.center)
        self.kestrel.wait_for_popover()
        self.desktop.key("Escape")
        self.kestrel.wait_for_no_popover()
        self.assertTrue(self.kestrel.process.is_running)

    def test_second_start_opens_the_popover_of_the_first(self):
        self.start_desktop(panel="fake")
        first = self.start_kestrel()
        self.desktop.status_item()
        second = self.start_kestrel()
        self.assertEqual(second.process.wait(), 0)
        first.wait_for_popover()
        self.assertTrue(first.process.is_running)
        self.assertEqual(len(self.desktop.status_items()), 1)

    def test_popover_grows_with_the_scale_of_the_screen(self):
        self.start_desktop(panel="fake")
        self.start_kestrel({"QT_SCALE_FACTOR": "2"})
        rect = self.kestrel.open_popover().rect
        self.assertEqual(rect[2:], (2 * POPOVER_WIDTH, 2 * popover_height(0)))
        self.assertTrue(self.desktop.bounds.contains(rect), rect)

    def test_quit_ends_the_program(self):
        self.start_desktop(panel="fake")
        self.start_kestrel()
        self.assertEqual(self.kestrel.quit(), 0)
        self.wait_until(lambda: not self.desktop.status_items(), "the icon to go")
