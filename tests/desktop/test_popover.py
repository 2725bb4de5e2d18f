"""The popover's list: launching, its keys, and lists that change from outside."""
import os

from harness.case import DesktopTest
from harness.program import Kestrel, encoded, item, popover_height, store_before_start


class PopoverTest(DesktopTest):
    """What is launched leaves a mark in the desktop's folder: the terminal that it runs in."""

    def mark(self, name):
        """The path of a mark, which does not exist yet."""
        return self.desktop.path("mark-" + name)

    def script(self, name):
        """An executable that leaves the mark of that name."""
        return self.desktop.write(f"home/{name}.sh",
                                  f"#!/bin/sh\ntty > '{self.mark(name)}'\n", 0o755)

    def start(self, items):
        if items:
            store_before_start(self.desktop, items)
        return self.start_kestrel()

    def wait_for_mark(self, name):
        """What the mark says: the name of a terminal, or "not a tty"."""
        def content():
            if not os.path.exists(self.mark(name)):
                return None
            with open(self.mark(name), encoding="utf-8") as file:
                return file.read().strip()
        return self.wait_until(content, f"the mark of {name}")

    def test_click_on_a_row_launches_an_application_and_closes(self):
        self.start_desktop(panel="fake")
        entry = self.desktop.write("home/mark.desktop", "[Desktop Entry]\nType=Application\n"
                                   f"Name=Mark\nExec={self.script('application')}\n")
        kestrel = self.start([item("App", "Mark", entry, "00000000-0000-4000-8000-000000000001")])
        kestrel.open_popover()
        row = kestrel.accessible.find("list item", "Mark").rect
        self.desktop.click(row.x + row.width - 12, row.center[1])
        self.assertEqual(self.wait_for_mark("application"), "not a tty")
        kestrel.wait_for_no_popover()

    def test_click_on_a_row_runs_a_command_file_in_a_terminal(self):
        self.start_desktop(panel="fake")
        kestrel = self.start([item("Command File", "Mark", self.script("file"),
                                   "00000000-0000-4000-8000-000000000001")])
        kestrel.open_popover()
        kestrel.click_row("Mark")
        self.assertRegex(self.wait_for_mark("file"), "^/dev/pts/")
        kestrel.wait_for_no_popover()

    def test_click_on_a_row_types_a_command_into_a_terminal(self):
        self.start_desktop(panel="fake")
        command = f"tty > '{self.mark('command')}' && echo \"a\\b\""
        kestrel = self.start([item("Inline Command", "Mark", command,
                                   "00000000-0000-4000-8000-000000000001")])
        kestrel.open_popover()
        kestrel.click_row("Mark")
        self.assertRegex(self.wait_for_mark("command"), "^/dev/pts/")
        kestrel.wait_for_no_popover()

    def test_launch_that_fails_is_silent_and_closes(self):
        self.start_desktop(panel="fake")
        kestrel = self.start([item("App", "Gone", "/nowhere/gone.desktop",
                                   "00000000-0000-4000-8000-000000000001")])
        kestrel.open_popover()
        windows = len(self.desktop.windows())
        kestrel.click_row("Gone")
        kestrel.wait_for_no_popover()
        self.assert_stays(lambda: len(self.desktop.windows()) < windows)
        self.assertTrue(kestrel.process.is_running)

    def test_keys_choose_and_launch_a_row(self):
        self.start_desktop(panel="fake")
        kestrel = self.start([
            item("App", title, self.script(title), f"00000000-0000-4000-8000-00000000000{i}")
            for i, title in enumerate(("one", "two", "three"), 1)])
        kestrel.open_popover()
        kestrel.wait_for_rows(["one", "two", "three"])
        self.desktop.key("Home", "Down", "Down", "Up", "Return")
        self.wait_for_mark("two")
        kestrel.wait_for_no_popover()
        self.assertFalse(os.path.exists(self.mark("one")))
        self.assertFalse(os.path.exists(self.mark("three")))

    def test_height_follows_the_number_of_items(self):
        self.start_desktop(panel="fake")
        self.show_from_outside(0)
        kestrel = self.start([])
        for count in (1, 5, 9, 10, 20):
            self.show_from_outside(count)
            self.wait_until(lambda: self.height(kestrel) == popover_height(count),
                            f"the height for {count} items")

    def height(self, kestrel):
        """Opens the popover, and closes it again."""
        height = kestrel.open_popover().rect.height
        self.desktop.key("Escape")
        kestrel.wait_for_no_popover()
        return height

    def test_outside_change_shows_in_the_open_popover(self):
        self.start_desktop(panel="fake")
        items = [item("Inline Command", "Before", "true", "00000000-0000-4000-8000-000000000001")]
        self.desktop.write("data/kestrel/cloud/launcherItems", encoded(items))
        kestrel = self.start([])
        kestrel.open_popover()
        kestrel.wait_for_rows(["Before"])
        items.insert(0, item("App", "From outside", "/opt/x",
                             "00000000-0000-4000-8000-000000000002"))
        self.desktop.write("data/kestrel/cloud/launcherItems", encoded(items))
        kestrel.wait_for_rows(["From outside", "Before"])
        self.assertTrue(kestrel.popover())

    def show_from_outside(self, count):
        """Another machine's list of that many items arrives."""
        items = [item("App", f"Item {i}", None, f"00000000-0000-4000-8000-{i:012X}")
                 for i in range(count)]
        self.desktop.write("data/kestrel/cloud/launcherItems", encoded(items))

    def assert_follows(self, edge):
        """The popover that a click on the icon opens has the height of each list that arrives while
        it is open, and keeps its edge at the icon. It closes in the end."""
        self.desktop.click(*self.desktop.icon_rect().center)
        before = self.kestrel.wait_for_popover().rect
        self.assertEqual(before.height, popover_height(0))
        for count in (20, 1, 5, 0):
            self.show_from_outside(count)
            rect = self.wait_until(
                lambda: next((w.rect for w in [self.kestrel.popover()]
                              if w.rect.height == popover_height(count)), None),
                f"the height for {count} items")
            bottom = before.y + before.height - rect.height
            self.assertEqual((rect.x, rect.y), (before.x, before.y if edge == "top" else bottom))
        self.desktop.key("Escape")
        self.kestrel.wait_for_no_popover()

    def test_open_popover_follows_the_list_and_stays_at_its_icon(self):
        self.start_desktop(panel="fake", panel_options=["--bar=dock"])
        self.show_from_outside(0)
        self.start([])
        self.assert_follows("top")
        self.desktop.kill_panel("fake")
        self.desktop.start_panel("fake", ["--bar=dock"], edge="bottom")
        self.assert_follows("bottom")

    def test_own_list_goes_to_an_empty_cloud_folder(self):
        self.start_desktop(panel="fake")
        items = [item("App", "Mine", "/opt/x", "00000000-0000-4000-8000-000000000001")]
        os.makedirs(self.desktop.path("data", "kestrel", "cloud"))
        kestrel = self.start(items)
        self.assertIsInstance(kestrel, Kestrel)
        path = self.desktop.path("data", "kestrel", "cloud", "launcherItems")

        def copied():
            if not os.path.exists(path):
                return False
            with open(path, "rb") as file:
                return file.read() == encoded(items)
        self.wait_until(copied, "the cloud folder to hold the list")
