"""What Debian's screen reader says while the program is worked by keyboard."""
import unittest

from harness.case import DesktopTest
from harness.program import item, store_before_start
from harness.screen_reader import ScreenReader, is_installed


@unittest.skipUnless(is_installed(), "needs Debian's package orca")
class ScreenReaderTest(DesktopTest):
    """Nothing may be said twice: what is said too much shows in the next step."""

    limit = 300
    three_items = (("App", "Alpha", "/opt/alpha"), ("Command File", "Beta", "/opt/beta.sh"),
                   ("Inline Command", "Gamma", "ls"))

    def start(self, *items):
        """Starts the program with items (kind, title, text) for the screen reader."""
        self.start_desktop(panel="fake")
        store_before_start(self.desktop, [
            item(kind, title, text, f"00000000-0000-4000-8000-00000000000{place}")
            for place, (kind, title, text) in enumerate(items)])
        self.reader = ScreenReader(self.desktop)
        self.addCleanup(self.reader.close)
        self.start_kestrel()

    def assert_said(self, key, *texts):
        """The key has exactly these texts said."""
        self.desktop.key(key)
        self.assertEqual(self.reader.hear(len(texts)), list(texts), key)

    def open_settings(self):
        self.kestrel.open_settings()
        self.reader.hear_until("Kestrel frame")
        self.assertEqual(self.reader.hear(2), ["Items", "List with 3 items"])

    def test_screen_reader_leads_a_new_user_to_the_first_item(self):
        self.start()
        self.kestrel.open_popover()
        self.assertEqual(self.reader.hear(2), [
            "Kestrel dialog No items yet Open Settings to add items", "Settings push button"])
        self.kestrel.open_settings()
        self.reader.hear_until("Kestrel frame")
        self.assertEqual(self.reader.hear(2), [
            "Add First Item push button",
            "Add apps, command files, or shell commands to your launcher"])
        self.assert_said("space", "Add Item dialog", "Title text", "e.g. Xcode, Deploy Script")

    def test_screen_reader_reads_the_popover(self):
        self.start(*self.three_items)
        self.kestrel.open_popover()
        self.assertEqual(self.reader.hear(3), ["Kestrel dialog", "Items", "List with 3 items"])
        self.assert_said("Down", "Alpha")
        self.assert_said("Down", "Beta")
        self.assert_said("Tab", "Settings push button")
        self.assert_said("Tab", "Quit push button")

    def test_screen_reader_reads_rows_whole_and_says_each_change_once(self):
        self.start(*self.three_items)
        self.open_settings()
        alpha, beta = ("Alpha", "App, /opt/alpha"), ("Beta", "Command File, /opt/beta.sh")
        self.assert_said("Down", *alpha)
        self.assert_said("Down", *beta)
        self.assert_said("alt+Down", *beta, "notification Moved to 3 of 3")
        self.assert_said("alt+Up", *beta, "notification Moved to 2 of 3")
        self.assert_said("Delete", "notification Deleted Beta")
        self.assert_said("Home", *alpha)
        self.assert_said("End", "Gamma", "Inline Command, ls")

    def test_screen_reader_says_once_that_the_sheet_opens_and_what_was_added(self):
        self.start(*self.three_items)
        self.open_settings()
        alpha = ("Alpha", "App, /opt/alpha")
        self.assert_said("Down", *alpha)
        self.kestrel.click_on("push button", "Add")
        self.assertEqual(self.reader.hear(3),
                         ["Add Item dialog", "Title text", "e.g. Xcode, Deploy Script"])
        self.desktop.type("New")
        # While a screen reader listens, letters reach the program later than shortcuts do.
        self.wait_until(lambda: self.kestrel.field("Title") == "New", "the title")
        self.desktop.key("ctrl+Return")
        # Whether it names the list too depends on which event of the focus it looks at first.
        self.assertEqual(self.reader.hear_until("notification Added New")[-3:],
                         [*alpha, "notification Added New"])
        self.assert_said("End", "New", "App, (no path)")
