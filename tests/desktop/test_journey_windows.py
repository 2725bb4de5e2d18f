"""How the windows behave: sizes, hovering, closing and reopening."""
from harness.case import DesktopTest
from harness.images import Rect
from harness.input_driver import APP, COMMAND, FILE
from harness.pointer_driver import PointerDriver
from harness.program import encoded, item, store_before_start

THREE = [item(*fields, f"00000000-0000-4000-8000-{i:012X}") for i, fields in enumerate((
    (APP, "Alpha", "/opt/alpha"), (FILE, "Bravo", "/opt/bravo"), (COMMAND, "Charlie", "c")), 1)]
DARK = """[Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=252,252,252
[Colors:View]
BackgroundNormal=27,30,32
ForegroundNormal=252,252,252
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
"""


def lightness(color):
    red, green, blue = color
    return (2 * red + 5 * green + blue) / 8


class WindowsTest(DesktopTest):
    """The popover is opened through the bus, the rest by the pointer."""

    def start(self, items=(), environment=None, **options):
        self.start_desktop(panel="fake", **options)
        if items:
            store_before_start(self.desktop, list(items))
        self.start_kestrel(environment)
        self.driver = PointerDriver(self.kestrel)
        return self.kestrel

    def start_with_window(self, items=(), **options):
        self.start(items, **options)
        self.window = self.kestrel.open_settings()
        return self.kestrel

    def root_windows(self):
        """The ids of the windows that taskbars show."""
        return self.desktop.run("xprop", "-root", "_NET_CLIENT_LIST").split("#")[-1].split(", ")

    def is_in_taskbar(self, window):
        return any(window.id == listed.strip() for listed in self.root_windows())

    # The settings window.

    def test_closed_window_takes_its_place_and_its_form_with_it(self):
        kestrel = self.start_with_window()
        before = self.window.rect
        self.desktop.run("xdotool", "windowsize", "--sync", self.window.id, "700", "500",
                         "windowmove", "--sync", self.window.id, "5", "40")
        self.wait_until(lambda: self.desktop.window("settings").rect[2:] == (700, 500), "the size")
        kestrel.click_on("push button", "Add First Item")
        kestrel.set_field("Title", "Never")
        kestrel.close_settings()
        self.assertTrue(kestrel.process.is_running)
        again = kestrel.open_settings()
        self.assertEqual(again.rect, before)
        self.assertFalse(kestrel.form_is_open())
        self.assertIsNone(kestrel.stored())

    def test_minimised_window_is_brought_back_by_settings(self):
        kestrel = self.start_with_window(THREE)
        kestrel.click_row("Bravo")
        self.desktop.run("xdotool", "windowminimize", self.window.id)
        self.desktop.wait_for_no_window(role="settings")
        self.assertEqual(kestrel.open_settings().id, self.window.id)
        self.assertTrue(self.driver.is_enabled("Edit"))

    def test_window_has_the_buttons_and_the_smallest_size_of_a_document(self):
        self.start_with_window()
        hints = self.desktop.run("xprop", "-id", self.window.id)
        self.assertRegex(hints, "minimum size: 480 by 360")
        self.assertNotIn("maximum size", hints)
        for action in ("CLOSE", "MINIMIZE", "RESIZE", "MOVE"):
            self.assertIn("_NET_WM_ACTION_" + action, hints)

    def test_program_is_in_the_taskbar_only_with_its_window(self):
        kestrel = self.start()
        self.assertFalse(self.is_in_taskbar(kestrel.open_popover()))
        window = kestrel.open_settings()
        self.assertTrue(self.is_in_taskbar(window))
        kestrel.close_settings()
        self.wait_until(lambda: not self.is_in_taskbar(window), "the taskbar to forget it")

    def test_toolbar_explains_itself_under_the_pointer(self):
        kestrel = self.start_with_window()
        self.desktop.move(5, 400)
        before = {window.id for window in self.desktop.windows()}
        button = kestrel.accessible.find("push button", "Add").rect
        self.desktop.move(*button.center)
        tip = self.wait_until(lambda: [window.rect for window in self.desktop.windows()
                                       if window.id not in before], "the tooltip")[0]
        self.assertLess(tip.height, button.height)
        self.assertLess(abs(tip.y - button.center[1]), 40)

    def test_row_clicked_last_is_the_one_that_edit_opens(self):
        kestrel = self.start_with_window(THREE)
        kestrel.click_row("Alpha")
        self.wait_until(lambda: self.driver.is_enabled("Edit"), "Edit to react")
        kestrel.click_row("Charlie")
        self.assert_stays(lambda: not kestrel.form_is_open())
        # It stays that one where it goes.
        self.desktop.key("alt+Up", "alt+Up")
        kestrel.wait_for_stored([THREE[2], *THREE[:2]])
        kestrel.click_on("push button", "Edit")
        self.assertEqual(kestrel.field("Title"), "Charlie")

    def test_saving_what_is_unchanged_writes_it_again(self):
        kestrel = self.start_with_window(THREE)
        self.desktop.write("data/kestrel/lastLocalSync", "old")
        kestrel.click_row_actions("Alpha", "Edit")
        kestrel.finish_form("Save")
        with open(self.desktop.path("data", "kestrel", "lastLocalSync"), encoding="ascii") as file:
            self.assertRegex(file.read(), r"^20\d\d-")
        self.assertEqual(kestrel.stored(), encoded(THREE))

    def test_edit_of_an_item_that_another_machine_deleted_changes_nothing(self):
        cloud = "data/kestrel/cloud/launcherItems"
        self.start_desktop(panel="fake")
        self.desktop.write(cloud, encoded(THREE))
        self.driver = PointerDriver(self.start_kestrel())
        self.kestrel.open_settings()
        self.kestrel.click_row_actions("Bravo", "Edit")
        self.kestrel.set_field("Title", "Late")
        self.desktop.write(cloud, encoded([THREE[0], THREE[2]]))
        self.kestrel.wait_for_stored([THREE[0], THREE[2]])
        self.kestrel.finish_form("Save")
        self.kestrel.wait_for_rows(["Alpha", "Charlie"])
        self.assert_stays(lambda: self.kestrel.is_stored(encoded([THREE[0], THREE[2]])))

    # Hovering and clicking where nothing is.

    def test_row_of_the_popover_is_lit_while_the_pointer_is_over_it(self):
        kestrel = self.start(THREE)
        self.desktop.move(5, 400)
        kestrel.open_popover()
        row = kestrel.accessible.find("list item", "Bravo").rect
        before = self.desktop.settled_screenshot(row)
        self.desktop.move(*row.center)
        # Four points stay free on both sides, and the whole height is lit.
        lit = Rect(4, 0, row.width - 8, row.height)
        self.wait_until(lambda: before.difference(self.desktop.screenshot().cut(row)) == lit,
                        "the highlight")
        self.desktop.move(row.x + 20, row.y + row.height + 10)
        self.wait_until(lambda: not before.difference(self.desktop.screenshot().cut(row)),
                        "the highlight to go")

    def test_actions_of_a_row_show_only_under_the_pointer_and_for_the_committed_one(self):
        kestrel = self.start_with_window(THREE)
        row = kestrel.accessible.find("list item", "Bravo").rect
        button = kestrel.row_button("Bravo").rect
        before = self.desktop.settled_screenshot(button)

        def is_shown():
            change = before.difference(self.desktop.screenshot().cut(button))
            return change is not None and change.width > 8

        self.desktop.move(row.x + 60, row.center[1])
        self.wait_until(is_shown, "the button")
        self.desktop.move(row.x + 60, self.window.rect.y + 330)
        self.wait_until(lambda: not before.difference(self.desktop.screenshot().cut(button)),
                        "the button to go")
        kestrel.click_row("Bravo")
        self.desktop.click(row.x + 60, self.window.rect.y + 330)
        self.wait_until(is_shown, "the button of the committed row")

    def test_nothing_in_the_empty_popover_reacts_but_the_footer(self):
        kestrel = self.start()
        rect = kestrel.open_popover().rect
        for y in (30, 70, 100, 139):
            self.desktop.click(rect.center[0], rect.y + y)
        self.assert_stays(kestrel.popover)
        self.assertFalse(self.desktop.window(role="settings"))

    def test_menu_of_a_row_offers_edit_and_delete(self):
        kestrel = self.start_with_window(THREE)
        self.desktop.move(*kestrel.accessible.find("list item", "Alpha").rect.center)
        self.desktop.click(*kestrel.row_button("Alpha").rect.center)
        menu = kestrel.accessible.find("popup menu")
        self.assertEqual([(node.role, node.name) for node in menu.children],
                         [("menu item", "Edit"), ("separator", ""), ("menu item", "Delete")])
        self.desktop.key("Escape")
        self.assertEqual(kestrel.stored(), encoded(THREE))

    # Dark screens.

    def test_dark_desktop_has_light_texts_on_dark_windows(self):
        self.start_desktop(panel="fake")
        self.desktop.write("config/kdeglobals", DARK)
        store_before_start(self.desktop, THREE)
        kestrel = self.start_kestrel({"XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true",
                                      "KDE_SESSION_VERSION": "5"})
        self.driver = PointerDriver(kestrel)
        self.assert_dark(kestrel.open_popover().rect)
        self.assert_dark(kestrel.open_settings().rect)
        kestrel.click_on("push button", "Add")
        self.driver.wait_for_form()
        self.assert_dark(kestrel.accessible.find("dialog", "Add Item").rect)

    def assert_dark(self, rect):
        """Most of it is dark, and what is written on it is light."""
        def shades():
            image = self.desktop.screenshot().cut(rect)
            return sorted(lightness(image.pixel(x, y))
                          for x in range(2, image.width - 2, 2)
                          for y in range(2, image.height - 2, 2))
        found = self.wait_until(lambda: (s := shades())[-1] > 180 and s, "light texts")
        self.assertLess(found[int(len(found) * 0.9)], 80)
