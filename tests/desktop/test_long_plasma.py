"""The status icon and the popover in KDE Plasma, on X11 and on Wayland."""
import os
import pathlib
import re

from bars import drawn
from plasma import PlasmaDesktop, missing
from processes import wait_for
from program import popover_content
from rounds import PanelRounds
from text_window import TextWindow

PACKAGING = pathlib.Path(__file__).resolve().parents[2] / "packaging"
EDGES = ("bottom", "top", "left", "right")
# Icons of Plasma's own that are on the panel of every session.
NEIGHBOURS = ("Keyboard Layout",)
ITEM = "app.kestrel.Kestrel"
HELD_LONG = 1.0     # seconds: the panel takes it for the wish for a menu
SEND_TO_KRUNNER = ("org.kde.krunner", "/App", "org.kde.krunner.App", "display")


class PlasmaTest(PanelRounds):
    """On a session of the kind that a subclass names."""

    session = None
    limit = 400
    # How much larger than a neighbour's the icon may be drawn, in pixels.
    larger = 1

    def setUp(self):
        super().setUp()
        reason = missing()
        if reason:
            self.skipTest(reason)

    def start(self, **options):
        """Starts the session and the program, whose icon is then on the panel."""
        self.desktop = self.enterContext(PlasmaDesktop(self.session, **options))
        self.program = self.desktop.install(os.environ["KESTREL_PROGRAM"], PACKAGING)
        self.prepare()
        self.scale = self.desktop.scale
        self.start_with_bar("bottom")

    def start_program(self):
        self.start_kestrel(command=[self.program])

    def show_bar(self, edge, ground=None, monitor=0):
        self.bar = self.desktop.panel(edge)

    def move_bar(self, edge, ground=None, monitor=0):
        self.show_bar(edge)
        self.find_icon()

    def content(self):
        """Where the popover's content is."""
        return popover_content(self.kestrel.wait_for_popover(), self.scale)

    def assert_opens(self, hold=0.08):
        """A click opens the popover in its place."""
        self.click(hold)
        self.assertIsNone(self.misplacement(self.content()))

    # The icon.

    def glyph(self, rect):
        return drawn(self.desktop.picture(), rect).rect

    def assert_icon_is_as_large_as_others(self):
        mine = self.glyph(self.icon.rect)
        for name in NEIGHBOURS:
            other = self.glyph(self.desktop.button(name))
            what = f"the icon is {mine[2:]} large, {name} {other[2:]}"
            self.assertLessEqual(max(mine[2:]), max(other[2:]) + self.larger, what)
            self.assertGreaterEqual(max(mine[2:]), max(other[2:]) - 4 * self.larger, what)

    def icon_is_light(self):
        """Whether the icon is lighter than the panel."""
        part = self.desktop.picture().cut(self.icon.rect)
        grays = sorted(sum(part.data[at:at + 3]) for at in range(0, len(part.data), 3))
        ground = grays[len(grays) // 2]
        return grays[-1] - ground > ground - grays[0]

    def assert_icon_follows_the_panel(self):
        for colors, is_light in (("BreezeDark", True), ("BreezeLight", False)):
            self.desktop.apply_colors(colors)
            self.wait_until(lambda: self.icon_is_light() == is_light, f"the icon in {colors}")
            self.find_icon()

    def assert_long_press_opens(self):
        self.assert_opens(HELD_LONG)
        self.assert_stays(self.kestrel.popover, 0.25)
        self.click()
        self.assert_stays_closed()

    def assert_icon_and_clicks(self):
        self.assert_icon_is_as_large_as_others()
        for _ in range(3):
            self.assert_toggles()
        self.assert_other_buttons_do_nothing()
        self.assert_icon_follows_the_panel()

    # The place.

    def assert_at_the_corner(self):
        """Where the panel ends, which is where most have their tray."""
        self.assertIsNone(self.bar.misplacement(self.content(), self.corner(), self.slack))

    def corner(self):
        x, y, width, height = self.bar.rect
        return self.icon.rect._replace(x=x + width, y=y + height)

    def start_again(self):
        """As its user does who has forgotten that it runs."""
        self.assertEqual(self.desktop.start([self.program]).wait(), 0)

    def assert_second_start_opens(self):
        """At the panel's end, before any click has told where the icon is; then at the icon."""
        self.start_again()
        self.assert_at_the_corner()
        self.desktop.key("Escape")
        self.assert_stays_closed()
        self.assert_toggles()
        self.start_again()
        self.assertIsNone(self.misplacement(self.content()))
        self.desktop.key("Escape")
        self.assert_stays_closed()

    def assert_opens_from_the_hidden_area(self):
        self.desktop.hide_icons(ITEM)
        self.desktop.click(*self.desktop.button("Expand System Tray").center)
        popup = self.desktop.button("Kestrel")
        self.assertLess(popup.y, self.bar.rect.y - popup.height)
        self.desktop.click(*popup.center)
        content = self.content()
        self.assertIsNone(self.bar.misplacement(content, popup, self.slack))
        self.desktop.key("Escape")
        self.assert_stays_closed()
        self.desktop.hide_icons()

    def assert_places(self):
        self.assert_second_start_opens()
        self.assert_opens_from_the_hidden_area()
        for edge in ("top", "left", "right"):
            self.move_bar(edge)
            self.assert_toggles()

    # The keyboard.

    def selected(self):
        return [row.name for row in self.kestrel.accessible.find_all("list item")
                if "selected" in row.states]

    def wait_for_selected(self, title):
        try:
            wait_for(lambda: self.selected() == [title])
        except AssertionError:
            raise AssertionError(f"{self.selected()} selected and not {title}; the window beneath "
                                 f"holds {self.below.text!r}") from None

    def assert_has_the_keyboard(self):
        """All keys are the popover's while it is open, and then those of the window before."""
        before = self.below.text
        self.assert_opens()
        self.desktop.type("s")
        self.wait_for_selected("Second")
        self.desktop.key("Up")
        self.wait_for_selected("First")
        self.desktop.key("Escape")
        self.assert_stays_closed()
        self.below.wait_for_keyboard()
        self.desktop.type("k")
        self.below.wait_for_text(before + "k")

    def assert_return_launches(self):
        started, text = self.started(), self.below.text
        self.assert_opens()
        self.desktop.type("f")
        self.wait_for_selected("First")
        self.desktop.key("Return")
        self.assert_stays_closed()
        self.wait_until(lambda: self.started() == started + 1, "the launched item")
        self.assertEqual(self.below.text, text)

    def assert_closes_elsewhere(self):
        self.assert_closes_by_clicks(self.below.window.rect.center, self.elsewhere(),
                                     self.bar.rect.center)
        self.assert_opens()
        other = TextWindow(self.desktop, "Other").start()
        self.assert_stays_closed()
        self.assert_opens()
        self.desktop.script("activateLauncherMenu")

    def assert_is_in_no_list(self):
        self.assert_opens()
        for window in self.desktop.managed_windows():
            if window.pid == self.kestrel.process.pid:
                self.assertFalse(window.is_in_task_bar or window.is_in_pager
                                 or window.is_in_switcher, window)
        self.assertEqual(self.entries(), 0)
        self.desktop.key("Escape")
        self.assert_stays_closed()

    def entries(self):
        """How many entries the task bar has for the program."""
        return len([name for name, rect in self.desktop.buttons()
                    if re.match("Kestrel|app.kestrel", name) and rect != self.icon.rect])
