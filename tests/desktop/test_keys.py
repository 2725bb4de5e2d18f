"""The keys of every control, pressed on a real keyboard, and the one mark that shows where they
go."""
import os

from harness.case import DesktopTest
from harness.images import Rect
from harness.program import item, store_before_start

class KeysTest(DesktopTest):
    def start(self, *titles):
        """Starts the program with commands of those titles, which leave a mark of that name."""
        self.start_desktop(panel="fake", panel_options=["--bar=dock"])
        items = [item("Inline Command", title, f"touch '{self.mark(title)}'",
                      f"00000000-0000-4000-8000-{i:012X}") for i, title in enumerate(titles, 1)]
        if items:
            store_before_start(self.desktop, items)
        return self.start_kestrel()

    def mark(self, title):
        return self.desktop.path("mark-" + title)

    def has_focus(self, role, name):
        return any("focused" in node.states
                   for node in self.kestrel.accessible.find_all(role, name))

    def wait_for_focus(self, role, name):
        self.wait_until(lambda: self.has_focus(role, name), f"the focus on {name}")

    def is_checked(self, kind):
        return "checked" in self.kestrel.accessible.find("radio button", kind).states

    def open_settings_by_keys(self, *keys):
        self.kestrel.open_popover()
        self.desktop.key(*keys)
        self.desktop.wait_for_window(role="settings")
        self.kestrel.wait_for_no_popover()

    def test_return_and_space_press_what_the_popover_has(self):
        self.start()
        self.kestrel.open_popover()
        plain = self.footer()
        self.desktop.key("Escape")
        self.kestrel.wait_for_no_popover()
        self.kestrel.open_popover()
        self.assertEqual(self.footer(), plain, "a mark is left")
        self.desktop.key("Escape")
        self.kestrel.wait_for_no_popover()
        self.open_settings_by_keys("Return")
        self.wait_for_focus("push button", "Add First Item")
        self.desktop.key("Return")
        self.wait_until(self.kestrel.form_is_open, "the form")
        self.wait_for_focus("text", "Title")
        self.desktop.type("two words")
        self.desktop.key("alt+y", "Right", "Down")
        self.wait_until(lambda: self.is_checked("Inline Command"), "Inline Command")
        self.desktop.key("alt+o")
        self.desktop.type(f"touch '{self.mark('two')}'")
        self.desktop.key("ctrl+Return")
        self.kestrel.wait_for_rows(["two words"])
        self.desktop.key("ctrl+w")
        self.desktop.wait_for_no_window(role="settings")

        self.open_settings_by_keys("Down", "Tab", "KP_Enter")
        self.kestrel.close_settings()
        self.kestrel.open_popover()
        self.desktop.key("Down", "space")
        self.wait_until(lambda: os.path.exists(self.mark("two")), "the command to run")
        self.kestrel.wait_for_no_popover()

    def test_form_is_walked_by_tab_arrows_and_letters(self):
        kestrel = self.start("Alpha")
        kestrel.open_settings()
        kestrel.wait_for_rows(["Alpha"])
        self.desktop.key("Home", "Return")
        self.wait_for_focus("text", "Title")
        self.desktop.key("Tab")
        self.wait_for_focus("radio button", "Inline Command")
        self.desktop.key("space", "Return")
        self.assert_stays(lambda: self.is_checked("Inline Command") and kestrel.form_is_open())
        self.desktop.key("Left")
        self.wait_for_focus("radio button", "Command File")
        self.assertTrue(self.is_checked("Command File"))
        self.desktop.key("Tab")
        self.wait_for_focus("text", "File")
        self.desktop.key("shift+Tab")
        self.wait_for_focus("radio button", "Command File")

        kestrel.click_on("label", "File")
        self.wait_for_focus("text", "File")
        kestrel.click_on("label", "Type")
        self.wait_for_focus("radio button", "Command File")
        kestrel.click_on("label", "Title")
        self.wait_for_focus("text", "Title")

        for keys in ("ctrl+w", "Tab", "ctrl+w"):
            self.desktop.key(keys)
            self.assert_stays(kestrel.form_is_open)
        self.desktop.key("alt+c")
        self.wait_until(lambda: not kestrel.form_is_open(), "the form to close")
        self.desktop.key("ctrl+w")
        self.desktop.wait_for_no_window(role="settings")
        self.assertTrue(kestrel.process.is_running)

    def footer(self):
        """What the popover's footer looks like."""
        x, y, width, height = self.kestrel.wait_for_popover().rect
        return self.desktop.settled_screenshot(Rect(x, y + height - 40, width, 40))

    def test_popover_has_one_mark_at_a_time_and_none_when_it_opens_again(self):
        kestrel = self.start("Alpha", "Bravo")
        kestrel.open_popover()
        self.desktop.key("Down")
        row = kestrel.accessible.find("list item", "Alpha").rect
        right = row.x + row.width - 20

        def is_highlighted():
            screen = self.desktop.screenshot()
            return screen.pixel(right, row.y + 5) != screen.pixel(right, row.y + row.height + 5)
        self.wait_until(is_highlighted, "the highlight")
        plain = self.footer()
        self.desktop.key("Tab")
        self.wait_until(lambda: not is_highlighted(), "the highlight to yield")
        self.assertNotEqual(self.footer(), plain)
        self.desktop.key("shift+Tab")
        self.wait_until(is_highlighted, "the highlight to come back")
        self.assertEqual(self.footer(), plain)
        self.desktop.key("Tab", "Escape")
        kestrel.wait_for_no_popover()
        kestrel.open_popover()
        self.assertEqual(self.footer(), plain)
