"""The program in other languages than English, by the real pointer and what is on the screen."""
import unittest

from harness.case import DesktopTest
from harness.languages import has_toolkit_translation, translations
from harness.program import item, store_before_start

LONG_TITLE = "A title of more words than fit into a row <b>of the popover</b>"
LONG_PATH = "/opt/" + "a folder inside/" * 8 + "program"


class LanguagesTest(DesktopTest):
    """A locale is named in the environment, as a session does, and need not be installed."""

    def start(self, items=(), locale="C.UTF-8", words=None):
        self.start_desktop(panel="fake")
        records = [item(*fields, f"00000000-0000-4000-8000-{i:012X}")
                   for i, fields in enumerate(items, 1)]
        if records:
            store_before_start(self.desktop, records)
        self.start_kestrel({"LANG": locale}, words)
        return self.kestrel.open_popover()

    def rect(self, role, name):
        return self.kestrel.accessible.find(role, name).rect

    def assert_from_the_right(self, *places):
        """Each stands left of the one before."""
        for right, left in zip(places, places[1:]):
            self.assertLessEqual(left.x + left.width, right.x)

    def rest_over(self, name):
        """The pointer comes to rest over a row."""
        row = self.rect("list item", name)
        self.desktop.move(row.center[0], row.center[1])
        self.desktop.move(row.center[0] + 2, row.center[1])

    def tooltips(self):
        """The windows of tooltips."""
        return [window for window in self.desktop.windows() if "_NET_WM_WINDOW_TYPE_TOOLTIP" in
                self.desktop.run("xprop", "-id", window.id, "_NET_WM_WINDOW_TYPE")]

    @unittest.skipUnless(has_toolkit_translation("de"), "needs the toolkit's translations")
    def test_german_is_spoken_by_the_popover_and_by_the_menus_of_fields(self):
        self.start(locale="de_DE.UTF-8", words=translations("de"))
        find = self.kestrel.accessible.find
        find("label", "Noch keine Einträge")
        find("push button", "Beenden")
        self.kestrel.open_settings()
        self.kestrel.click_on("push button", "Ersten Eintrag hinzufügen")
        self.wait_until(self.kestrel.form_is_open, "the form")
        self.desktop.click(*self.rect("text", "Titel").center, button=3)
        find("menu item", "Alles auswählen.*")

    def test_windows_are_laid_out_from_the_right_in_hebrew(self):
        self.start([("App", "Editor", "/opt/editor")], locale="he_IL.UTF-8")
        rect = self.rect
        self.assert_from_the_right(rect("push button", "Settings"), rect("push button", "Quit"))
        self.kestrel.open_settings()
        self.assert_from_the_right(*(rect("push button", name)
                                     for name in ("Add", "Edit", "Delete")))
        self.kestrel.click_on("push button", "Add")
        self.wait_until(self.kestrel.form_is_open, "the form")
        self.assert_from_the_right(rect("label", "Title"), rect("text", "Title"))
        self.assert_from_the_right(*(rect("radio button", name)
                                     for name in ("App", "Command File", "Inline Command")))
        self.assert_from_the_right(rect("label", "App"), rect("text", "App"),
                                   rect("push button", "Browse…"))
        confirm = next(button for button in
                       self.kestrel.accessible.find_all("push button", "Add")
                       if self.kestrel.in_form(button))
        self.assert_from_the_right(rect("push button", "Cancel"), confirm.rect)

    def test_pointer_that_rests_over_what_is_cut_shows_all_of_it(self):
        self.start([("App", LONG_TITLE, LONG_PATH), ("App", "Short", "/opt/short")])
        self.rest_over("A title.*")
        self.wait_until(self.tooltips, "the title's tooltip")
        self.assertTrue(self.kestrel.popover())
        self.rest_over("Short")
        self.wait_until(lambda: not self.tooltips(), "no tooltip")
        self.kestrel.open_settings()
        self.rest_over("A title.*")
        self.wait_until(self.tooltips, "the path's tooltip")


if __name__ == "__main__":
    unittest.main()
