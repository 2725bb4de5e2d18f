"""Rows of the settings list that are dragged by the real pointer: what is stored and what is seen."""
from harness.case import DesktopTest
from harness.program import item, store_before_start

TITLES = ["Alpha", "Bravo", "Charlie"]


class DragTest(DesktopTest):
    """A settings window with three rows, of which the first is carried about."""

    def start(self):
        self.start_desktop(panel="fake")
        self.items = [item("Inline Command", title, "true", f"00000000-0000-4000-8000-{i:012X}")
                      for i, title in enumerate(TITLES)]
        store_before_start(self.desktop, self.items)
        self.start_kestrel()
        self.window = self.kestrel.open_settings().rect
        rows = self.kestrel.accessible.find("list", "Items").find_all("list item")
        self.places = [row.rect for row in rows]
        self.desktop.move(self.window.center[0], self.window.y + 20)
        pictures = [self.desktop.settled_screenshot(place) for place in self.places]
        self.first, self.second = pictures[:2]

    def below_the_last(self):
        last = self.places[-1]
        return last.center[0], last.y + last.height + 40

    def carry(self):
        """Carries the first row below the last: the second takes the first place and does not react
        to the pointer."""
        self.desktop.move(*self.places[0].center)
        self.desktop.press()
        for place in self.places[1:]:
            self.desktop.move(*place.center)
        self.desktop.move(*self.below_the_last())
        self.wait_for_picture(self.second, "the second row at the first place")

    def wait_for_picture(self, picture, what):
        self.wait_until(lambda: self.desktop.screenshot().cut(self.places[0]) == picture, what)

    def assert_nothing_moved(self):
        """The first row is back at its place, no menu is open, and nothing was stored."""
        self.wait_until(lambda: self.desktop.screenshot().cut(self.places[0]) != self.second,
                        "the first row at its place")
        self.assertEqual(self.kestrel.accessible.find_all("menu item", "Edit"), [])
        self.assertEqual(self.kestrel.rows(), TITLES)
        self.kestrel.wait_for_stored(self.items)

    def test_drag_ends_without_effect_by_another_button_or_key_and_outside(self):
        self.start()
        for end in (lambda: self.desktop.press(3), lambda: self.desktop.key("Escape"),
                    lambda: self.desktop.key("Menu")):
            self.carry()
            end()
            self.assert_nothing_moved()
            self.desktop.move(*self.places[1].center)   # the drag does not go on
            self.desktop.release(3)
            self.desktop.release()
            self.assert_nothing_moved()
        for outside in ((self.window.x - 30, self.places[2].center[1]),
                        (self.window.center[0], self.window.y + 10)):
            self.carry()
            self.desktop.move(*outside)
            self.desktop.release()
            self.assert_nothing_moved()
        self.carry()
        self.desktop.release()
        self.kestrel.wait_for_stored([*self.items[1:], self.items[0]])

    def test_drag_ends_with_its_button_when_another_window_gets_the_release(self):
        self.start()
        self.carry()
        self.kestrel.activate()     # the popover takes the pointer and the keys
        self.kestrel.wait_for_popover()
        self.desktop.release()
        self.desktop.key("Escape")
        self.kestrel.wait_for_no_popover()
        self.desktop.move(*self.places[1].center)
        self.assert_nothing_moved()
