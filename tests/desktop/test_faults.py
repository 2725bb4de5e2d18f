"""The running program with broken files, odd texts and missing parts of the desktop."""
import os

from harness.case import DesktopTest
from harness.program import encoded, item, popover_height, store_before_start

LIST = ("data", "kestrel", "launcherItems")
HOME_LIST = "home/.local/share/kestrel/launcherItems"


def identity(number):
    return f"00000000-0000-4000-8000-{number:012X}"


class FaultsTest(DesktopTest):
    """Each fault costs the one thing that it concerns, and the program runs."""

    def script(self, name):
        """A program whose run leaves a mark. Odd names stand in a folder of their own."""
        mark = self.desktop.path("marks", str(len(os.listdir(self.marks()))))
        path = self.desktop.write(f"home/odd/{name}", f"#!/bin/sh\ntouch '{mark}'\n", 0o755)
        return path, mark

    def marks(self):
        folder = self.desktop.path("marks")
        os.makedirs(folder, exist_ok=True)
        return folder

    def assert_shows(self, titles, environment=None):
        """A start of the program shows a list, which it then leaves alone."""
        kestrel = self.start_kestrel(environment)
        self.assertEqual(kestrel.open_popover().rect.height, popover_height(len(titles)))
        if titles:
            kestrel.wait_for_rows(titles)
        self.assertEqual(kestrel.quit(), 0)

    def test_list_that_does_not_decode_is_kept_until_the_next_save(self):
        self.start_desktop(panel="fake")
        for broken in (b"", b"{", b'[{"id":"x"}]', b"\xff\xfe[\x00]\x00"):
            self.desktop.write(os.path.join(*LIST), broken)
            self.assert_shows([])
            with open(self.desktop.path(*LIST), "rb") as file:
                self.assertEqual(file.read(), broken)
        kestrel = self.start_kestrel()
        kestrel.open_settings()
        kestrel.add("Inline Command", "New", "true", opener="Add First Item")
        kestrel.wait_for_stored([item("Inline Command", "New", "true")])

    def test_folder_in_the_place_of_the_list_is_left_and_the_screen_keeps_its_list(self):
        self.start_desktop(panel="fake")
        os.makedirs(self.desktop.path(*LIST, "inside"))
        kestrel = self.start_kestrel()
        kestrel.open_settings()
        kestrel.add("Inline Command", "New", "true", opener="Add First Item")
        kestrel.wait_for_rows(["New"])
        self.assertEqual(os.listdir(self.desktop.path(*LIST)), ["inside"])
        # Without a list nothing is in the folder but the date of the attempt.
        self.assertEqual(sorted(os.listdir(self.desktop.path(*LIST[:2]))),
                         ["lastLocalSync", "launcherItems"])

    def test_without_a_sound_data_home_the_list_is_below_home(self):
        self.start_desktop(panel="fake")
        store_before_start(self.desktop, [])
        self.desktop.write(HOME_LIST, encoded([item("App", "Mine", "/opt/x", identity(1))]))
        for value in (None, "", "relative/data"):
            self.assert_shows(["Mine"], {"XDG_DATA_HOME": value})
        self.assertFalse(os.path.exists(self.desktop.path("home", "relative")))

    def test_odd_names_are_launched_right_and_odd_texts_break_nothing(self):
        self.start_desktop(panel="fake")
        names = ("-rf", "a b", "quo'te\".sh", "$(touch no)", "new\nline", "%f %%", "ü\u0301 中")
        scripts = []
        for name in names:
            scripts.append(self.script(name))
            open(os.path.join(self.marks(), f"taken-{len(scripts)}"), "wb").close()
        items = [item("App", name, path, identity(i))
                 for i, (name, (path, _)) in enumerate(zip(names, scripts), 1)]
        items += [item("App", "x" * 10_000, "/" + "d/" * 2_048, identity(100)),
                  item("Command File", "\u202eright to left\n\n", "/dev/zero", identity(101))]
        store_before_start(self.desktop, items)
        kestrel = self.start_kestrel()
        for row in range(len(items)):
            kestrel.open_popover()
            self.desktop.key("Home", *["Down"] * row, "Return")
            kestrel.wait_for_no_popover()
        for name, (_, mark) in zip(names, scripts):
            self.wait_until(lambda m=mark: os.path.exists(m), f"the run of {name!r}")
        self.assertFalse(os.path.exists(self.desktop.path("home", "no")))
        kestrel.open_settings()
        self.assertEqual(kestrel.stored(), encoded(items))
        self.assertTrue(kestrel.process.is_running)

    def test_last_of_five_thousand_items_is_two_keys_away(self):
        self.start_desktop(panel="fake")
        path, mark = self.script("last")
        items = [item("App", f"Item {i}", "/nowhere", identity(i)) for i in range(4_999)]
        store_before_start(self.desktop, [*items, item("App", "Last", path, identity(5_000))])
        kestrel = self.start_kestrel()
        self.assertEqual(kestrel.open_popover().rect.height, popover_height(5_000))
        self.desktop.key("End", "Return")
        self.wait_until(lambda: os.path.exists(mark), "the last item's mark")
        kestrel.wait_for_no_popover()

    def test_without_terminal_and_icon_themes_a_command_does_nothing(self):
        self.start_desktop(panel="fake")
        mark = self.desktop.path("mark")
        store_before_start(self.desktop,
                           [item("Inline Command", "Mark", f"touch '{mark}'", identity(1))])
        nowhere = self.desktop.path("nowhere")
        kestrel = self.start_kestrel({"PATH": nowhere, "XDG_DATA_DIRS": nowhere, "TERMINAL": None})
        kestrel.open_popover()
        kestrel.click_row("Mark")
        kestrel.wait_for_no_popover()
        self.assert_stays(lambda: not os.path.exists(mark) and kestrel.process.is_running)
