"""Journeys through the settings window by a real pointer and keyboard, with the stored bytes
compared after every step."""
from harness.case import DesktopTest
from harness.program import item, popover_height, store_before_start

APP, FILE, COMMAND = "App", "Command File", "Inline Command"


class SettingsTest(DesktopTest):
    """Each test has a home of its own with the list that it starts from."""

    def start(self, items=()):
        """Starts the program with items (kind, title, text) in its store and opens the settings
        window. `self.items` holds them with their ids."""
        self.start_desktop(panel="fake")
        self.items = [item(*fields, f"00000000-0000-4000-8000-{i:012X}")
                      for i, fields in enumerate(items, 1)]
        if self.items:
            store_before_start(self.desktop, self.items)
        self.start_kestrel()
        self.window = self.kestrel.open_settings()
        return self.kestrel

    def start_with_three(self):
        return self.start([(APP, "Alpha", "/usr/share/applications/alpha.desktop"),
                           (FILE, "Bravo", "/opt/tools/bravo.sh"),
                           (COMMAND, "Charlie", "echo 'one/two'")])

    def assert_stored(self, *order):
        """The store holds those of `self.items`, in that order."""
        self.kestrel.wait_for_stored([self.items[i] for i in order])

    def is_sensitive(self, name):
        """Whether the button reacts."""
        return "sensitive" in self.kestrel.accessible.find("push button", name).states

    def form_button(self, name):
        """The form's own button, where the toolbar has one of the same name."""
        return next(b for b in self.kestrel.accessible.find_all("push button", name)
                    if self.kestrel.in_form(b))

    def test_window_is_one_of_its_size_in_the_middle(self):
        kestrel = self.start()
        rect, screen = self.window.rect, self.desktop.bounds
        self.assertEqual((self.window.title, *rect[2:]), ("Kestrel", 520, 420))
        self.assertLessEqual(abs(rect.center[0] - screen.center[0]), 4)
        self.assertLessEqual(abs(rect.center[1] - screen.center[1]), 24)
        again = kestrel.open_settings()
        self.assertEqual(again.id, self.window.id)
        self.assertEqual(sum(w.role == "settings" for w in self.desktop.windows()), 1)

    def test_settings_window_opened_again_has_nothing_selected(self):
        kestrel = self.start_with_three()
        kestrel.click_row("Bravo")
        self.wait_until(lambda: self.is_sensitive("Edit"), "Edit to react")
        kestrel.close_settings()
        self.assertTrue(kestrel.process.is_running)
        kestrel.open_settings()
        kestrel.wait_for_rows(["Alpha", "Bravo", "Charlie"])
        self.assertFalse(self.is_sensitive("Edit"))
        self.assertFalse(self.is_sensitive("Delete"))

    def test_added_items_of_each_kind_are_there_after_a_restart(self):
        kestrel = self.start()
        self.assertFalse(self.is_sensitive("Edit"))
        self.assertFalse(self.is_sensitive("Delete"))
        kestrel.add(APP, "Editor", "/usr/share/applications/editor.desktop", "Add First Item")
        items = kestrel.wait_for_stored(
            [item(APP, "Editor", "/usr/share/applications/editor.desktop")])
        self.assertFalse(self.is_sensitive("Edit"))
        kestrel.add(FILE, "Deploy", "/opt/deploy me.sh ")
        items = kestrel.wait_for_stored([*items, item(FILE, "Deploy", "/opt/deploy me.sh ")])
        kestrel.add(COMMAND, "Say \"hi\"", "echo \"a/b\" && true")
        items = kestrel.wait_for_stored(
            [*items, item(COMMAND, "Say \"hi\"", "echo \"a/b\" && true")])
        titles = ["Editor", "Deploy", "Say \"hi\""]
        kestrel.wait_for_rows(titles)
        kestrel.close_settings()
        kestrel.open_settings()
        kestrel.wait_for_rows(titles)
        kestrel.close_settings()
        self.assertEqual(kestrel.quit(), 0)

        again = self.start_kestrel()
        self.assertEqual(again.open_popover().rect.height, popover_height(3))
        again.wait_for_rows(titles)
        again.wait_for_stored(items)

    def test_blank_title_cannot_be_saved_and_a_padded_one_is_trimmed(self):
        kestrel = self.start()
        kestrel.click_on("push button", "Add First Item")
        self.wait_until(kestrel.form_is_open, "the form")
        self.assertNotIn("sensitive", self.form_button("Add").states)
        kestrel.set_field("Title", "   ")
        self.assertNotIn("sensitive", self.form_button("Add").states)
        self.desktop.key("ctrl+Return")
        self.assert_stays(kestrel.form_is_open)
        self.assertIsNone(kestrel.stored())
        kestrel.set_field("Title", "  Deploy  ")
        self.wait_until(lambda: "sensitive" in self.form_button("Add").states, "Add to react")
        self.desktop.key("Return")
        self.assert_stays(kestrel.form_is_open)
        self.desktop.key("ctrl+Return")
        kestrel.wait_for_stored([item(APP, "Deploy")])

    def test_switching_kinds_keeps_the_texts_and_saves_one(self):
        kestrel = self.start()
        kestrel.click_on("push button", "Add First Item")
        kestrel.set_field("Title", "Switch")
        kestrel.set_field("App", "/opt/switch")
        kestrel.choose_kind(COMMAND)
        kestrel.set_field("Command", "echo switch")
        kestrel.choose_kind(FILE)
        self.assertEqual(kestrel.field("File"), "/opt/switch")
        kestrel.choose_kind(COMMAND)
        self.assertEqual(kestrel.field("Command"), "echo switch")
        kestrel.choose_kind(APP)
        self.assertEqual(kestrel.field("App"), "/opt/switch")
        kestrel.choose_kind(COMMAND)
        kestrel.finish_form_adding()
        kestrel.wait_for_stored([item(COMMAND, "Switch", "echo switch")])

    def test_cancel_and_escape_change_nothing(self):
        kestrel = self.start_with_three()
        before = kestrel.stored()
        kestrel.click_on("push button", "Add")
        kestrel.set_field("Title", "Never")
        kestrel.finish_form("Cancel")
        kestrel.click_row("Alpha")
        kestrel.click_on("push button", "Edit")
        kestrel.set_field("Title", "Never")
        self.desktop.key("Escape")
        self.wait_until(lambda: not kestrel.form_is_open(), "the form to close")
        kestrel.wait_for_rows(["Alpha", "Bravo", "Charlie"])
        self.assertEqual(kestrel.stored(), before)

    def test_edit_by_the_toolbar(self):
        kestrel = self.start_with_three()
        kestrel.click_row("Bravo")
        kestrel.click_on("push button", "Edit")
        self.assertEqual(kestrel.field("Title"), "Bravo")
        self.assertEqual(kestrel.field("File"), "/opt/tools/bravo.sh")
        kestrel.set_field("Title", "Bravo two")
        kestrel.finish_form("Save")
        self.items[1]["title"] = "Bravo two"
        self.assert_stored(0, 1, 2)
        kestrel.wait_for_rows(["Alpha", "Bravo two", "Charlie"])

    def test_edit_by_the_menu_of_a_row(self):
        kestrel = self.start_with_three()
        kestrel.click_row_actions("Charlie", "Edit")
        kestrel.set_field("Command", "true")
        kestrel.finish_form("Save")
        self.items[2]["command"] = "true"
        self.assert_stored(0, 1, 2)

    def test_edit_by_a_double_click(self):
        kestrel = self.start_with_three()
        row = kestrel.accessible.find("list item", "Alpha")
        self.desktop.double_click(*row.rect.center)
        kestrel.choose_kind(COMMAND)
        kestrel.set_field("Command", "alpha --now")
        kestrel.finish_form("Save")
        self.items[0] = item(COMMAND, "Alpha", "alpha --now", self.items[0]["id"])
        self.assert_stored(0, 1, 2)

    def test_reorder_by_dragging(self):
        kestrel = self.start_with_three()
        first, _, last = (row.rect for row in
                          kestrel.accessible.find("list", "Items").find_all("list item"))
        self.desktop.drag(first.center, (last.center[0], last.y + last.height - 2))
        self.assert_stored(1, 2, 0)
        kestrel.wait_for_rows(["Bravo", "Charlie", "Alpha"])

    def test_reorder_by_the_keyboard(self):
        kestrel = self.start_with_three()
        kestrel.click_row("Alpha")
        self.desktop.key("alt+Down")
        self.assert_stored(1, 0, 2)
        self.desktop.key("alt+Down")
        self.assert_stored(1, 2, 0)
        self.desktop.key("alt+Down")
        self.desktop.key("alt+Up")
        self.assert_stored(1, 0, 2)
        kestrel.wait_for_rows(["Bravo", "Alpha", "Charlie"])

    def test_delete_by_the_toolbar(self):
        kestrel = self.start_with_three()
        kestrel.click_row("Bravo")
        kestrel.click_on("push button", "Delete")
        self.assert_stored(0, 2)
        kestrel.wait_for_rows(["Alpha", "Charlie"])
        self.assertFalse(self.is_sensitive("Edit"))
        self.assertFalse(self.is_sensitive("Delete"))

    def test_delete_by_the_menu_of_another_row_keeps_the_committed_one(self):
        kestrel = self.start_with_three()
        kestrel.click_row("Bravo")
        self.wait_until(lambda: self.is_sensitive("Delete"), "Delete to react")
        kestrel.click_row_actions("Alpha", "Delete")
        self.assert_stored(1, 2)
        self.assertTrue(self.is_sensitive("Delete"))
        kestrel.click_on("push button", "Delete")
        self.assert_stored(2)

    def test_delete_by_the_keyboard_down_to_the_empty_state(self):
        kestrel = self.start_with_three()
        for title, left in (("Charlie", [0, 1]), ("Bravo", [0]), ("Alpha", [])):
            kestrel.click_row(title)
            self.desktop.key("Delete")
            self.assert_stored(*left)
        kestrel.accessible.find("push button", "Add First Item")
        self.assertEqual(kestrel.stored(), b"[]")
        self.assertEqual(kestrel.open_popover().rect.height, popover_height(0))

    def test_click_where_a_row_was_deleted_is_no_double_click(self):
        kestrel = self.start_with_three()
        place = kestrel.accessible.find("list item", "Alpha").rect.center
        self.desktop.click(*place)
        self.desktop.key("Delete")
        self.desktop.click(*place)
        self.assert_stored(1, 2)
        self.assert_stays(lambda: not kestrel.form_is_open())

    def test_click_on_empty_space_keeps_edit_on_the_row(self):
        kestrel = self.start_with_three()
        kestrel.click_row("Alpha")
        box = kestrel.accessible.find("list", "Items").rect
        self.desktop.click(box.center[0], box.y + box.height - 12)
        self.assertTrue(self.is_sensitive("Edit"))
        kestrel.click_on("push button", "Edit")
        self.assertEqual(kestrel.field("Title"), "Alpha")
