"""Dark, light and high contrast follow the desktop's switch, by the pixels of the popover."""
import os
import signal
import sys

import dbus

from harness import fake_portal
from harness.case import DesktopTest
from harness.program import item, popover_content, store_before_start

GNOME = "org.gnome.desktop.interface"
LIGHT, DARK, BLACK, WHITE = range(180, 255), range(1, 80), range(0, 1), range(255, 256)


class AppearanceTest(DesktopTest):
    """Each desktop says how it looks in a way of its own."""

    def start_portal(self, *numbers):
        portal = self.desktop.start_service(
            [sys.executable, fake_portal.PROGRAM, *map(str, numbers)])
        portal.wait_for_line("^ready")
        return portal

    def switch(self, key, value):
        """Turns the portal's switch."""
        portal = self.desktop.bus.get_object(fake_portal.NAME, fake_portal.PATH, introspect=False)
        portal.Set(key, dbus.UInt32(value), dbus_interface=fake_portal.SWITCH, timeout=5)

    def start_settings_daemon(self, theme):
        """A daemon that tells X11 programs the theme, as Xfce's does."""
        self.write_theme(theme)
        daemon = self.desktop.start_service(
            ["xsettingsd", "-c", self.desktop.path("xsettings")])
        self.wait_until(lambda: self.desktop.has_selection_owner("_XSETTINGS_S0"),
                        "the settings daemon")
        return daemon

    def write_theme(self, theme):
        self.desktop.write("xsettings", f'Net/ThemeName "{theme}"\nGtk/FontName "Sans 10"\n')

    def change_theme(self, daemon, theme):
        self.write_theme(theme)
        os.kill(daemon.pid, signal.SIGHUP)

    def set_setting(self, schema, key, value):
        self.desktop.run("gsettings", "set", schema, key, value)
        self.assertIn(value, self.desktop.run("gsettings", "get", schema, key))

    def open_popover(self, **environment):
        self.start_kestrel(environment)
        self.content = popover_content(self.kestrel.open_popover())

    def background(self):
        """The brightness of the popover's background, beside its contents, from 0 to 255."""
        return sum(self.desktop.screenshot().pixel(self.content.x + 8, self.content.y + 60)) // 3

    def wait_for_background(self, brightness):
        self.wait_until(lambda: self.background() in brightness, f"a brightness in {brightness}")

    def test_portals_switch_is_followed_from_the_start_and_live(self):
        self.start_desktop(panel="fake")
        self.start_portal(1)
        self.open_popover()
        self.wait_for_background(DARK)
        self.switch("color-scheme", 2)
        self.wait_for_background(LIGHT)
        self.switch("color-scheme", 1)
        self.wait_for_background(DARK)
        self.switch("contrast", 1)
        self.wait_for_background(BLACK)
        self.switch("color-scheme", 0)
        self.wait_for_background(WHITE)

    def test_portal_that_starts_late_is_followed_and_is_not_started(self):
        self.start_desktop(panel="fake")
        self.open_popover()
        self.wait_for_background(LIGHT)
        self.assertFalse(self.desktop.has_bus_name(fake_portal.NAME))
        self.start_portal(1)
        self.wait_for_background(DARK)

    def test_gnome_without_a_portal_is_followed_by_its_settings(self):
        self.start_desktop(panel="fake")
        self.desktop.environment.update(GSETTINGS_BACKEND="keyfile")
        self.set_setting(GNOME, "color-scheme", "prefer-dark")
        self.open_popover(XDG_CURRENT_DESKTOP="GNOME")
        self.wait_for_background(DARK)
        self.set_setting(GNOME, "color-scheme", "default")
        self.wait_for_background(LIGHT)
        self.set_setting("org.gnome.desktop.a11y.interface", "high-contrast", "true")
        self.wait_for_background(WHITE)

    def test_xfces_theme_is_followed(self):
        self.start_desktop(panel="fake")
        daemon = self.start_settings_daemon("Adwaita-dark")
        self.open_popover(XDG_CURRENT_DESKTOP="XFCE")
        self.wait_for_background(DARK)
        self.change_theme(daemon, "Adwaita")
        self.wait_for_background(LIGHT)

    def test_settings_daemon_that_starts_late_is_followed_on_plain_x11(self):
        self.start_desktop(panel="fake")
        self.open_popover()
        self.wait_for_background(LIGHT)
        self.start_settings_daemon("HighContrastInverse")
        self.wait_for_background(BLACK)

    def test_users_own_style_stays_in_force(self):
        self.start_desktop(panel="fake")
        self.start_portal(1)
        self.open_popover(QT_STYLE_OVERRIDE="fusion")
        self.wait_for_background(LIGHT)
        self.switch("contrast", 1)
        self.assert_stays(lambda: self.background() in LIGHT)

    def has_scroll_buttons(self, **environment):
        """Whether the settings list's scroll bar has something at its lower end, where the thumb of
        a long list is not."""
        items = [item("Inline Command", f"Item {i}", "true", f"00000000-0000-4000-8000-{i:012X}")
                 for i in range(30)]
        store_before_start(self.desktop, items)
        self.start_kestrel(environment)
        x, y, width, height = self.kestrel.open_settings().rect
        self.kestrel.accessible.find("list item", "Item 0")
        end = [(x + width - 12 + column, y + height - 12 + line)
               for column in range(11) for line in range(11)]
        image = self.desktop.settled_screenshot(self.desktop.bounds)
        colors = {image.pixel(*point) for point in end}
        self.kestrel.quit()
        return len(colors) > 1

    def test_scroll_bars_are_the_programs_own_unless_the_user_chose_a_style(self):
        self.start_desktop(panel="fake")
        self.assertFalse(self.has_scroll_buttons())
        self.assertTrue(self.has_scroll_buttons(QT_STYLE_OVERRIDE="fusion"))
