"""The status icon and the popover in KDE Plasma, on X11 and on Wayland: what PanelTest asks in all
panels, and what only a whole desktop can show."""
import collections
import os
import shlex

from harness.bars import drawn
from harness.panel_case import SHORT, PanelTest
from harness.plasma import PlasmaDesktop, missing
from harness.processes import wait_for
from harness.program import POPOVER_WIDTH, item, store_before_start
from harness.text_window import TextWindow

# An icon of Plasma's own that is on the panel of every session.
NEIGHBOUR = "Keyboard Layout"
ITEM = "app.kestrel.Kestrel"
# In seconds; the panel takes such a press for the wish for a menu.
HELD_LONG = 1.0


class PlasmaTest(PanelTest):
    """On a session of the kind that a subclass names."""

    session = None
    limit = 400

    def setUp(self):
        super().setUp()
        reason = missing()
        if reason:
            self.skipTest(reason)

    def start_session(self, **options):
        self.desktop = self.enterContext(
            PlasmaDesktop(self.session, os.environ["KESTREL_PROGRAM"], **options))
        self.prepare()
        self.scale = self.desktop.scale

    def start(self, **options):
        """Starts the session and the program, whose icon is then on the panel at the bottom."""
        self.start_session(**options)
        self.start_with_bar("bottom")

    def start_program(self):
        self.start_kestrel(command=[self.desktop.program])

    def show_bar(self, edge, background=None, monitor=0):
        self.bar = self.desktop.panel(edge)

    def move_bar(self, edge, background=None, monitor=0):
        self.show_bar(edge)
        self.find_icon()

    def assert_opens(self, hold=SHORT):
        """A click opens the popover in its place."""
        self.click(hold)
        content = self.content()
        self.assertAlmostEqual(content.width, self.scale * POPOVER_WIDTH, delta=1)
        self.assertIsNone(self.misplacement(content))

    def close(self):
        self.desktop.key("Escape")
        self.assert_stays_closed()

    # The icon.

    def glyph(self, rect):
        """What is drawn in a part of the panel."""
        return drawn(self.desktop.screenshot(), rect).rect

    def assert_icon_is_as_large_as_its_neighbour(self):
        self.find_icon()
        mine, other = self.glyph(self.icon.rect), self.glyph(self.desktop.button(NEIGHBOUR))
        what = f"the icon is {mine[2:]} large, its neighbour {other[2:]}"
        self.assertLessEqual(max(mine[2:]), max(other[2:]) + 1, what)
        self.assertGreaterEqual(max(mine[2:]), max(other[2:]) - 4, what)

    def icon_is_light(self):
        """Whether the icon is lighter than the panel."""
        data = self.desktop.screenshot().cut(self.icon.rect).data
        grays = sorted(sum(data[at:at + 3]) for at in range(0, len(data), 3))
        background = grays[len(grays) // 2]
        return grays[-1] - background > background - grays[0]

    def assert_icon_has_the_colour_of_the_panel(self):
        for colors, is_light in (("BreezeDark", True), ("BreezeLight", False)):
            self.desktop.apply_colors(colors)
            self.wait_until(lambda: self.icon_is_light() == is_light, f"the icon in {colors}")
            self.find_icon()

    def assert_icon_comes_back(self):
        """plasmashell crashes and is started again."""
        self.desktop.kill_shell()
        self.desktop.start_shell()
        self.move_bar("bottom")
        self.assertEqual([name for name, _ in self.desktop.buttons()].count("Kestrel"), 1)
        self.assertEqual(len(self.desktop.status_items()), 1)
        self.assert_toggles()

    def assert_icon_and_clicks(self, holds=(SHORT,) * 3):
        self.start()
        for hold in holds:
            self.assert_toggles(hold)
        self.assert_other_buttons_do_nothing()
        self.assert_icon_has_the_colour_of_the_panel()
        self.assert_icon_comes_back()
        self.assert_icon_is_as_large_as_its_neighbour()

    # The place.

    def assert_second_start_opens_at(self, rect):
        """Its user starts it although it runs."""
        self.assertEqual(self.desktop.start([self.desktop.program]).wait(), 0)
        self.assertIsNone(self.bar.misplacement(self.content(), rect, self.slack))
        self.close()

    def assert_second_start_opens(self):
        """Where the panel ends, before any click has told where the icon is."""
        x, y, width, height = self.bar.rect
        self.assert_second_start_opens_at(self.icon.rect._replace(x=x + width, y=y + height))
        self.assert_toggles()
        self.assert_second_start_opens_at(self.icon.rect)

    def assert_opens_from_the_hidden_area(self):
        """At the panel, and as near to the icon as that lets it."""
        self.desktop.hide_icons(ITEM)
        self.wait_until(lambda: not self.kestrel_buttons(), "the icon to leave the panel")
        self.desktop.click(*self.desktop.button("Expand System Tray").center)
        self.wait_until(self.kestrel_buttons, "the icon in the hidden area")
        rect = self.desktop.icon_rect()
        self.assertLess(rect.y + rect.height, self.bar.rect.y)
        self.desktop.click(*rect.center)
        self.assertIsNone(self.bar.misplacement(self.content(), rect, self.slack))
        self.close()
        self.desktop.hide_icons()

    def kestrel_buttons(self):
        return [rect for name, rect in self.desktop.buttons() if name == "Kestrel"]

    def assert_places(self):
        self.start()
        self.assert_second_start_opens()
        for edge in ("top", "left", "right"):
            self.move_bar(edge)
            self.assert_toggles()
        self.move_bar("bottom")
        self.assert_opens_from_the_hidden_area()

    def assert_opens_at_its_scale(self, **options):
        self.start(width=960, height=600, **options)
        self.below = TextWindow(self.desktop).start()
        self.assert_toggles()
        self.assert_has_the_keyboard()
        self.move_bar("left")
        self.assert_toggles()

    # The keyboard.

    def selected(self):
        return [row.name for row in self.kestrel.accessible.find_all("list item")
                if "selected" in row.states]

    def wait_for_selected(self, title):
        try:
            wait_for(lambda: self.selected() == [title])
        except AssertionError:
            raise AssertionError(f"{self.selected()} selected and not {title!r}; the window "
                                 f"beneath holds {self.below.text!r}") from None

    def assert_has_the_keyboard(self):
        """All keys are the popover's while it is open, and then the window's that had them."""
        before = self.below.text
        self.assert_opens()
        self.desktop.type("s")
        self.wait_for_selected("Second")
        self.desktop.key("Up")
        self.wait_for_selected("First")
        self.close()
        self.below.wait_for_keyboard()
        self.desktop.type("k")
        self.below.wait_for_text(before + "k")

    def assert_return_launches(self):
        started, text = self.started(), self.below.text
        self.assert_opens()
        self.desktop.key("Down", "Down")
        self.wait_for_selected("Second")
        self.desktop.key("Return")
        self.assert_stays_closed()
        self.wait_until(lambda: self.started() == started + 1, "the launched item")
        self.assertEqual(self.below.text, text)

    def assert_closes_by_keys(self, *keys):
        """What gives the keyboard to something else."""
        for key in keys:
            self.assert_opens()
            self.desktop.key(key)
            self.assert_stays_closed()
            self.desktop.key("Escape")      # what has it now
            self.desktop.click(*self.below.window.rect.center)
            self.below.wait_for_keyboard()

    def assert_closes_by_a_new_window(self):
        self.assert_opens()
        self.below = TextWindow(self.desktop, "Other").start()
        self.assert_stays_closed()
        self.desktop.type("k")
        self.below.wait_for_text("k")

    def assert_only_the_settings_are_listed(self):
        """In the task bar, the pager and Alt+Tab."""
        self.assert_opens()
        self.assertEqual(self.listed(), [])
        self.kestrel.open_settings()
        self.assertEqual([window.is_in_task_bar for window in self.listed()], [True])
        self.kestrel.close_settings()
        self.below.wait_for_keyboard()

    def listed(self):
        """The program's windows that some list shows."""
        return [window for window in self.desktop.managed_windows()
                if window.pid == self.kestrel.process.pid and
                (window.is_in_task_bar or window.is_in_pager or window.is_in_switcher)]

    def assert_keyboard_and_closing(self):
        self.start()
        self.below = TextWindow(self.desktop).start()
        self.desktop.type("a")
        self.below.wait_for_text("a")
        self.assert_has_the_keyboard()
        self.assert_return_launches()
        self.assert_closes_by_clicks(self.below.window.rect.center, self.elsewhere(),
                                     self.bar.rect.center)
        self.assert_only_the_settings_are_listed()

    # Launches.

    def script(self, window):
        """A command file that starts a text window."""
        return self.desktop.write(f"home/{window.title}.sh",
                                  f"#!/bin/sh\nexec {shlex.join(window.command)}\n", 0o755)

    def entry(self, window):
        """The menu entry of a text window that runs on the bus."""
        return self.desktop.write(
            f"data/applications/org.example.{window.title}.desktop",
            f"[Desktop Entry]\nType=Application\nName={window.title}\nDBusActivatable=true\n"
            f"Exec={shlex.join(window.command)}\n")

    def assert_launched_to_the_front(self, window):
        self.assert_opens()
        self.kestrel.click_row(window.title)
        self.assert_stays_closed()
        window.wait_for_keyboard()
        self.desktop.click(*window.window.rect.center)      # what is in front there takes this
        self.assert_stays(window.has_keyboard)

    def assert_launches_come_to_the_front(self):
        """A new application, and those whose windows others cover."""
        self.start_session()
        fresh, running, on_bus = windows = [TextWindow(self.desktop, title)
                                            for title in ("Fresh", "Running", "Bus")]
        paths = self.script(fresh), self.script(running), self.entry(on_bus)
        self.items = [item("App", window.title, path, f"7F3A0C52-8E1B-4D6F-9A20-5B6C7D8E9F0{n}")
                      for n, (window, path) in enumerate(zip(windows, paths))]
        store_before_start(self.desktop, self.items)
        self.start_with_bar("bottom")
        on_bus.start()
        running.start()
        self.desktop.click(*on_bus.window.rect.center)
        self.assert_stays(running.has_keyboard)     # they do stand at one place
        for window in (fresh, running, on_bus):
            self.assert_launched_to_the_front(window)

    # Dark and light.

    def wait_for_background(self, is_dark):
        """Until most of the popover is dark, or light."""
        def is_so():
            data = self.desktop.screenshot().cut(self.content()).data
            colors = collections.Counter(data[at:at + 3] for at in range(0, len(data), 3))
            color, count = colors.most_common(1)[0]
            return (max(color) < 100) == is_dark and 6 * count > len(data)
        self.wait_until(is_so, f"a popover that is {'dark' if is_dark else 'light'}")

    def assert_follows_dark_and_light(self):
        self.start()
        self.assert_opens()
        self.wait_for_background(is_dark=False)
        self.close()
        self.desktop.apply_colors("BreezeDark")
        self.assert_opens()
        self.wait_for_background(is_dark=True)
        self.desktop.apply_colors("BreezeLight")
        self.wait_for_background(is_dark=False)


class X11Test(PlasmaTest):
    """Here a click that is held tells what it is, since the program can ask for the buttons; and
    the popover holds the keyboard whatever other windows come."""

    session = "x11"

    def test_icon_and_clicks_in_plasma_on_x11(self):
        self.assert_icon_and_clicks(holds=(SHORT, HELD_LONG, SHORT))

    def test_places_in_plasma_on_x11(self):
        self.assert_places()

    def test_keyboard_and_closing_in_plasma_on_x11(self):
        self.assert_keyboard_and_closing()

    def test_launches_come_to_the_front_in_plasma_on_x11(self):
        self.assert_launches_come_to_the_front()

    def test_dark_and_light_in_plasma_on_x11(self):
        self.assert_follows_dark_and_light()

    def test_scale_of_2_in_plasma_on_x11(self):
        self.assert_opens_at_its_scale(scale=2)

    def test_scale_of_1_5_in_plasma_on_x11(self):
        self.assert_opens_at_its_scale(scale=1.5)


class WaylandTest(PlasmaTest):
    """The program is an X11 one, and the windows around it are not."""

    session = "wayland"

    def test_icon_and_clicks_in_plasma_on_wayland(self):
        self.assert_icon_and_clicks()
        # For all that is told, this may have been the right button; where the panel is too busy to
        # take it for that, it opens. Whichever it was, the next clicks do what they always do.
        self.click(HELD_LONG)
        self.kestrel.settle_popover()
        self.desktop.key("Escape")
        self.assert_stays_closed()
        self.assert_toggles()

    def test_places_in_plasma_on_wayland(self):
        self.assert_places()

    def test_keyboard_and_closing_in_plasma_on_wayland(self):
        self.assert_keyboard_and_closing()
        self.assert_closes_by_keys("super", "alt+Tab")
        self.assert_closes_by_a_new_window()

    def test_launches_come_to_the_front_in_plasma_on_wayland(self):
        self.assert_launches_come_to_the_front()

    def test_dark_and_light_in_plasma_on_wayland(self):
        self.assert_follows_dark_and_light()

    def test_scale_of_2_in_plasma_on_wayland(self):
        self.assert_opens_at_its_scale(scale=2)

    def test_scale_of_1_5_in_plasma_on_wayland(self):
        self.assert_opens_at_its_scale(scale=1.5)

    def test_scale_of_2_that_x11_programs_do_not_know_in_plasma_on_wayland(self):
        self.assert_opens_at_its_scale(scale=2, xwayland_scale=1)
