"""GNOME Shell, on X11 and on Wayland, with the extension that shows status icons and without."""
import shutil
import time
import unittest

from harness.gnome import GnomeOnWayland, GnomeOnX11
from harness.processes import wait_for
from harness.program import BUS_NAME, popover_content, store_before_start
from harness.shell_case import ShellTest
from harness.shell_session import text_of

# What the shell gives to a program that is started by its application grid.
STARTED_BY_HAND = {GnomeOnX11: {"DESKTOP_STARTUP_ID": "gnome-shell/Kestrel/1-0-test_TIME1"},
                   GnomeOnWayland: {"XDG_ACTIVATION_TOKEN": "6f0d1c1e-7b0a-4f5e-9d65-0f3c5a1b2c3d"}}


@unittest.skipUnless(shutil.which("gnome-shell"), "no GNOME Shell")
class GnomeTest(ShellTest):
    """With an icon."""

    def assert_other_buttons_do_nothing(self):
        super().assert_other_buttons_do_nothing()
        self.assertEqual(self.desktop.open_menus(), [])

    def assert_is_listed(self, is_listed):
        super().assert_is_listed(is_listed)
        running = self.desktop.running_applications()
        self.assertEqual(self.kestrel.process.pid in running, is_listed, running)

    def assert_closes_for_the_overview(self):
        self.assert_opens()
        self.desktop.ask_for_overview()
        self.assert_stays_closed()
        self.desktop.show_overview(False)

    def assert_closable_in_the_overview(self):
        """Opened there, it can be closed by Escape and by a click on the desktop's thumbnail,
        which leaves the overview."""
        x, y, width, height = self.bar.screen
        for place in (None, (x + width * 18 // 100, y + height // 2)):
            self.desktop.show_overview(True)
            self.click()
            self.wait_until(self.kestrel.popover, "the popover in the overview")
            self.assert_closable(place)
            self.desktop.show_overview(False)

    def assert_closable_with_menus(self):
        """Opened while one of the shell's is open, by a second start: a click would close it."""
        for menu in ("dateMenu", "quickSettings"):
            for place in (None, self.elsewhere()):
                self.desktop.open_menu(menu)
                self.second_start()
                self.assert_closable(place)
                self.desktop.close_menus()

    def assert_life_with_an_icon(self, desktop):
        self.start_session(desktop())
        self.start_program()
        self.find_icon()
        self.assert_six_clicks()
        editor = self.open_editor()
        self.assert_keyboard_is_the_popovers(editor)
        self.assert_closes_by_clicks(self.place_in("Editor"), self.elsewhere(),
                                     self.empty_place_on_the_bar())
        self.assert_opens_at_a_second_start()
        self.assert_other_buttons_do_nothing()
        if desktop is GnomeOnWayland:       # on X11 it keeps the keyboard and stays
            self.assert_closes_for_another_window()
        self.assert_closes_for_the_overview()
        self.assert_closable_in_the_overview()
        self.assert_closable_with_menus()
        self.assert_only_the_settings_are_listed()
        self.desktop.set_indicators(False)
        self.wait_until(lambda: not self.desktop.icons(), "the icon to go")
        self.desktop.set_indicators(True)
        self.assert_comes_back()

    def test_icon_and_popover_in_gnome_on_x11(self):
        self.assert_life_with_an_icon(GnomeOnX11)
        self.desktop.restart_shell()
        self.assert_comes_back()

    def test_icon_and_popover_in_gnome_on_wayland(self):
        self.assert_life_with_an_icon(GnomeOnWayland)

    def assert_launches_bring_forward(self, desktop):
        self.start_session(desktop())
        self.store_applications()
        store_before_start(self.desktop, self.items)
        self.start_program()
        self.find_icon()
        for title in ("Diary", "Ledger"):
            self.assert_launch_brings_forward(title)

    def test_launches_come_forward_in_gnome_on_x11(self):
        self.assert_launches_bring_forward(GnomeOnX11)

    def test_launches_come_forward_in_gnome_on_wayland(self):
        self.assert_launches_bring_forward(GnomeOnWayland)

    def assert_follows_dark(self, desktop):
        """While it runs, and when it starts."""
        self.start_session(desktop())
        self.start_program()
        self.find_icon()
        self.assert_opens()
        self.wait_until(lambda: self.background() > 180, "a light popover")
        self.desktop.set_setting("org.gnome.desktop.interface", "color-scheme", "prefer-dark")
        self.wait_until(lambda: self.background() < 90, "a dark popover")
        self.desktop.key("Escape")
        self.assert_stays_closed()
        self.restart()
        self.assert_opens()
        self.wait_until(lambda: self.background() < 90, "a dark popover")
        self.desktop.set_setting("org.gnome.desktop.interface", "color-scheme", "default")
        self.wait_until(lambda: self.background() > 180, "a light popover")

    def test_follows_dark_in_gnome_on_x11(self):
        self.assert_follows_dark(GnomeOnX11)

    def test_follows_dark_in_gnome_on_wayland(self):
        self.assert_follows_dark(GnomeOnWayland)

    def assert_fits_a_dense_screen(self, desktop):
        """On a screen of scale 2."""
        self.start_session(desktop(width=1920, height=1200))
        self.start_program()
        self.find_icon()
        plain_icon = self.icon.rect
        self.kestrel.process.stop()
        self.scale = 2
        self.desktop.set_scale(self.scale)
        self.bar = self.desktop.bar()
        self.start_program()
        self.find_icon()
        self.assertGreaterEqual(self.icon.rect.height, 1.5 * plain_icon.height)
        self.assert_toggles()
        self.assert_closes_by_clicks(self.elsewhere())

    def test_fits_a_dense_screen_in_gnome_on_x11(self):
        self.assert_fits_a_dense_screen(GnomeOnX11)

    def test_fits_a_dense_screen_in_gnome_on_wayland(self):
        self.assert_fits_a_dense_screen(GnomeOnWayland)

    def test_fits_a_screen_of_a_fractional_scale_in_gnome_on_wayland(self):
        """The shell enlarges X11 programs, which know nothing of it."""
        self.start_session(GnomeOnWayland(width=1920, height=1200, settings={
            "org/gnome/mutter": {"experimental-features": "['scale-monitor-framebuffer']"}}))
        self.desktop.set_scale(1.5)
        self.bar = self.desktop.bar()
        self.start_program()
        self.find_icon()
        self.assert_toggles()
        self.assert_closes_by_clicks(self.elsewhere())


@unittest.skipUnless(shutil.which("gnome-shell"), "no GNOME Shell")
class StockGnomeTest(ShellTest):
    """The shell as it comes has no place for an icon."""

    def assert_is_in_the_corner(self):
        content = popover_content(self.kestrel.popover(), self.scale)
        x, y, width, height = self.bar.rect
        self.assertTrue(self.bar.screen.contains(content), content)
        self.assertLessEqual(0, content.y - y - height, content)
        self.assertLessEqual(content.y - y - height, self.slack, content)
        self.assertLessEqual(x + width - content.x - content.width, self.slack, content)

    def time_until_the_popover(self, environment):
        """Seconds from when the program has its bus name."""
        self.start_kestrel(environment)
        wait_for(lambda: self.desktop.has_bus_name(BUS_NAME), what="the program's bus name")
        start = time.monotonic()
        wait_for(self.kestrel.popover, what="the popover")
        return time.monotonic() - start

    def assert_life_in_the_corner(self, desktop):
        self.start_session(desktop(has_indicators=False))
        editor = self.open_editor()
        waited = self.time_until_the_popover({})
        self.assert_is_in_the_corner()
        self.assert_closable()
        self.second_start()
        self.assert_is_in_the_corner()
        self.type_into_popover("sec", "Second")
        self.desktop.key("Escape")
        self.assert_stays_closed()
        self.type_into(editor, "b")
        for place in (self.place_in("Editor"), self.elsewhere(), self.empty_place_on_the_bar()):
            self.second_start()
            self.desktop.click(*place)
            self.assert_stays_closed()
        self.second_start()
        self.kestrel.accessible.press("push button", "Quit")
        self.assertEqual(self.kestrel.process.wait(), 0)
        # A user who has just started it does not wait for a panel that there is not.
        self.assertLess(self.time_until_the_popover(STARTED_BY_HAND[desktop]), waited / 2)
        self.assert_is_in_the_corner()
        self.assertEqual(text_of(editor), "ab")

    def test_corner_in_stock_gnome_on_x11(self):
        self.assert_life_in_the_corner(GnomeOnX11)

    def test_corner_in_stock_gnome_on_wayland(self):
        self.assert_life_in_the_corner(GnomeOnWayland)
