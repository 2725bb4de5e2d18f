"""The whole program through its accessible tree alone: no pointer, no key."""
import os

from harness.case import DesktopTest
from harness.processes import wait_for
from harness.program import item, popover_height, store_before_start


class AccessibleTest(DesktopTest):
    """Opens things through the bus, as a panel that is driven by keyboard does."""

    def press(self, role, name):
        self.kestrel.accessible.press(role, name)

    def fill_in(self, kind, title, field, text):
        tree = self.kestrel.accessible
        radio = tree.find("radio button", kind)
        radio.do(next(a for a in ("Press", "Check", "Toggle") if a in radio.actions))
        tree.find("text", "Title").text = title
        tree.find("text", field).text = text

    def press_in_form(self, name):
        self.kestrel.accessible.find("push button", "Cancel")
        next(button for button in self.kestrel.accessible.find_all("push button", name)
             if self.kestrel.in_form(button)).do("Press")
        self.wait_until(lambda: not self.kestrel.form_is_open(), "the form to close")

    def press_in_row_menu(self, title, choice):
        button = self.kestrel.row_button(title)
        button.do(next(a for a in ("Press", "ShowMenu") if a in button.actions))
        self.press("menu item", choice)

    def open_settings(self):
        self.kestrel.open_popover()
        self.press("push button", "Settings")
        self.desktop.wait_for_window(role="settings")
        self.kestrel.wait_for_no_popover()

    def test_add_edit_delete_and_quit_without_pointer_or_keys(self):
        self.start_desktop(panel="fake")
        kestrel = self.start_kestrel()
        self.open_settings()
        self.press("push button", "Add First Item")
        self.fill_in("Inline Command", "First", "Command", "echo 1")
        self.press_in_form("Add")
        items = kestrel.wait_for_stored([item("Inline Command", "First", "echo 1")])
        self.press("push button", "Add")
        self.fill_in("Command File", "Second", "File", "/opt/second")
        self.press_in_form("Add")
        items = kestrel.wait_for_stored([*items, item("Command File", "Second", "/opt/second")])
        kestrel.wait_for_rows(["First", "Second"])

        self.press_in_row_menu("First", "Edit")
        kestrel.accessible.find("text", "Title").text = "First again"
        self.press_in_form("Save")
        items[0]["title"] = "First again"
        kestrel.wait_for_stored(items)
        self.press_in_row_menu("First again", "Delete")
        kestrel.wait_for_stored(items[1:])

        self.assertEqual(kestrel.open_popover().rect.height, popover_height(1))
        self.press("push button", "Quit")
        self.assertEqual(kestrel.process.wait(), 0)

    def test_row_of_the_popover_is_launched_without_pointer_or_keys(self):
        self.start_desktop(panel="fake")
        mark = self.desktop.path("mark")
        script = self.desktop.write("home/mark.sh", f"#!/bin/sh\ntouch '{mark}'\n", 0o755)
        store_before_start(self.desktop, [item("App", "Mark", script,
                                               "00000000-0000-4000-8000-000000000001")])
        self.start_kestrel().open_popover()
        row = wait_for(lambda: self.kestrel.accessible.find_all("list item", "Mark"))[0]
        row.do("Press")
        self.wait_until(lambda: os.path.exists(mark), "the mark")
        self.kestrel.wait_for_no_popover()

    def test_nothing_behind_the_form_can_be_pressed(self):
        self.start_desktop(panel="fake")
        items = [item("App", title, "/opt/x", f"00000000-0000-4000-8000-00000000000{i}")
                 for i, title in enumerate(("One", "Two"))]
        store_before_start(self.desktop, items)
        kestrel = self.start_kestrel()
        self.open_settings()
        tree = kestrel.accessible
        row = tree.find("list item", "One")
        self.assertEqual(sorted(row.actions),
                         ["MoveDown", "MoveUp", "Press", "SetFocus", "ShowMenu"])
        self.press("push button", "Add")
        tree.find("push button", "Cancel")
        behind = [row, tree.find("list item", "Two"), kestrel.row_button("One")]
        behind += [button for button in tree.find_all("push button", "Add|Edit|Delete")
                   if not kestrel.in_form(button)]
        self.assertEqual(len(behind), 6)
        for node in behind:
            self.assertEqual(set(node.actions) - {"SetFocus"}, set(), node.name)
            self.assertNotIn("sensitive", node.states)
        self.press("push button", "Cancel")
        self.wait_until(lambda: "Press" in row.actions, "the row to react again")
        self.assertEqual(kestrel.stored_items(), items)

    def test_everything_in_the_popover_has_a_name(self):
        self.start_desktop(panel="fake")
        self.start_kestrel().open_popover()
        tree = self.kestrel.accessible
        self.assertTrue(tree.find("label", "No items yet"))
        self.assertTrue(tree.find("label", r"Open Settings to add items\."))
        for name in ("Settings", "Quit"):
            button = tree.find("push button", name)
            self.assertIn("focusable", button.states)
            self.assertTrue(self.kestrel.popover().rect.contains(button.rect))
