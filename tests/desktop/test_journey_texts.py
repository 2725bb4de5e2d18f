"""Odd texts on their way from the keyboard, the clipboard and the accessible tree into the store,
and from the store onto the screen."""
import subprocess

from harness.accessibility_driver import AccessibilityDriver
from harness.case import DesktopTest
from harness.input_driver import APP, COMMAND, FILE
from harness.pointer_driver import PointerDriver
from harness.program import encoded, item, store_before_start

ROW_HEIGHT = 34
LONG = "x" * 10_000
TEXTS = (
    "🦅 👩‍👩‍👧 é e\u0301 中文 \U0001F1E9\U0001F1EA",
    "שלום עולם", "مرحبا \u202e12\u202c", "\u200fRLM",
    "\"quotes\" 'single' `back` \\ / // \\/ \\u0041", "$(true) %f %% ~ # ; & | < > * ?",
    "<b>no markup</b> &amp; &", "-rf", "tab\there", "\u2028line\u2029paragraph", "\x7f\x1b[31m",
    LONG)


class TextsTest(DesktopTest):
    """The form takes every text, and only the title is trimmed."""

    def start(self, driver_class=AccessibilityDriver):
        self.start_desktop(panel="fake")
        self.start_kestrel()
        self.kestrel.open_settings()
        self.driver = driver_class(self.kestrel)

    def open_form(self, button="Add"):
        self.driver.press_button(button)
        self.driver.wait_for_form()

    def titles(self):
        """The titles of all rows, those out of sight too."""
        return [row.name for row in self.kestrel.accessible.find("list", "Items").children]

    def test_odd_texts_are_stored_byte_for_byte_and_shown_again(self):
        self.start()
        items, button = [], "Add First Item"
        for number, text in enumerate(TEXTS):
            kind = (APP, FILE, COMMAND)[number % 3]
            self.open_form(button)
            self.driver.fill_in(kind, text, f" {text} ")
            self.driver.confirm()
            items = self.kestrel.wait_for_stored([*items, item(kind, text, f" {text} ")])
            button = "Add"
        self.assertEqual(self.titles(), list(TEXTS))
        self.assertEqual(self.kestrel.quit(), 0)
        again = self.start_kestrel()
        again.open_popover()
        self.assertEqual(self.titles(), list(TEXTS))
        rows = again.accessible.find("list", "Items").children
        self.assertEqual({row.rect.height for row in rows}, {ROW_HEIGHT})
        again.wait_for_stored(items)

    def test_every_kind_of_blank_is_refused_as_title_and_trimmed_around_one(self):
        self.start()
        self.open_form("Add First Item")
        blanks = "\t\u00a0\u1680\u2000\u2009\u202f\u205f\u3000 "
        for blank in (*blanks, blanks):
            self.driver.set_text("Title", blank)
            self.assert_stays(lambda: not self.driver.can_confirm(), 0.1)
        # It is not a space, though it shows as none.
        self.driver.set_text("Title", f"{blanks}a\u3000b\u200b{blanks}")
        self.driver.confirm()
        self.kestrel.wait_for_stored([item(APP, "a\u3000b\u200b")])

    def copy(self, text):
        """Puts a text into the clipboard."""
        subprocess.run(["xsel", "--clipboard", "--input"], input=text.encode(), check=True,
                       env=self.desktop.environment, timeout=10)

    def test_pasted_line_breaks_stay_in_the_text(self):
        self.start(PointerDriver)
        self.open_form("Add First Item")
        self.driver.choose_kind(COMMAND)
        for name, text in (("Title", "Two\nlines"), ("Command", "echo one\necho two\n")):
            self.copy(text)
            self.kestrel.click_on("text", name)
            self.desktop.key("ctrl+v")
            self.driver.wait_for_text(name, text)
        self.driver.confirm()
        self.kestrel.wait_for_stored([item(COMMAND, "Two\nlines", "echo one\necho two\n")])

    def test_letters_of_another_layout_and_dead_keys_are_typed(self):
        self.start(PointerDriver)
        self.desktop.run("setxkbmap", "de")
        self.open_form("Add First Item")
        self.driver.set_text("Title", "Ärger öffnen, Maß & \"Grüße\" @ 5 €")
        self.kestrel.click_on("text", "App")
        self.desktop.key("dead_acute", "e", "dead_circumflex", "o")
        self.driver.wait_for_text("App", "éô")
        self.driver.confirm()
        self.kestrel.wait_for_stored([item(APP, "Ärger öffnen, Maß & \"Grüße\" @ 5 €", "éô")])

    def test_texts_of_a_row_keep_to_their_lines(self):
        self.start_desktop(panel="fake")
        long = "/" + "folder/" * 300 + "end"
        items = [item(*fields, f"00000000-0000-4000-8000-{i:012X}") for i, fields in enumerate((
            (APP, "Plain", "/a"), (APP, "No path", None), (FILE, "No path either", None),
            (FILE, "Empty path", ""), (COMMAND, "No command", None), (COMMAND, "Long", long),
            (COMMAND, "Lines", "one\ntwo\nthree"), (APP, "Three\nlines\nhigh", "/a")), 1)]
        items[4]["path"] = "/not/shown"
        store_before_start(self.desktop, items)
        self.start_kestrel()
        self.kestrel.open_settings()
        rows = self.kestrel.accessible.find("list", "Items").find_all("list item")
        self.assertEqual([row.description for row in rows], [
            "App, /a", "App, (no path)", "Command File, (no path)", "Command File, ",
            "Inline Command, (no command)", f"Inline Command, {long}",
            "Inline Command, one\ntwo\nthree", "App, /a"])
        heights = [row.rect.height for row in rows]
        self.assertEqual(len(set(heights[:-1])), 1)
        self.assertGreater(heights[-1], heights[0] + 20)
        self.assertEqual(self.kestrel.stored(), encoded(items))
