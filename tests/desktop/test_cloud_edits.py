"""Edits in the settings window while lists arrive from another machine."""
from harness.cloud import COMMAND, CloudCase, items
from harness.program import encoded, item


class EditsTest(CloudCase):
    """What the user sees last is what an edit changes."""

    def is_sensitive(self, name):
        return "sensitive" in self.kestrel.accessible.find("push button", name).states

    def assert_both_stores(self, records):
        records = self.kestrel.wait_for_stored(records)
        self.assertEqual(self.in_cloud(), encoded(records))
        self.kestrel.wait_for_rows([record["title"] for record in records])

    def rows_behind_the_form(self, titles):
        """Waits until the list behind the form shows those."""
        self.kestrel.wait_for_rows(titles)
        self.assertTrue(self.kestrel.form_is_open())

    def test_edit_of_an_item_that_vanished_meanwhile_is_dropped(self):
        kestrel = self.start_with("Alpha", "Bravo")
        kestrel.click_row("Bravo")
        kestrel.click_on("push button", "Edit")
        kestrel.set_field("Title", "Bravo edited")
        self.change("Alpha", "Charlie")
        self.assertEqual(kestrel.field("Title"), "Bravo edited")
        before = self.state()
        kestrel.finish_form("Save")
        self.assert_stays(lambda: self.state() == before)
        kestrel.wait_for_rows(["Alpha", "Charlie"])

    def test_edit_of_an_item_that_stayed_keeps_what_arrived_around_it(self):
        kestrel = self.start_with("Alpha", "Bravo")
        kestrel.click_row("Bravo")
        kestrel.click_on("push button", "Edit")
        kestrel.set_field("Title", "Bravo edited")
        self.change("Charlie", "Bravo from elsewhere", "Delta")
        kestrel.finish_form("Save")
        expected = items("Charlie", "Bravo from elsewhere", "Delta")
        expected[1]["title"] = "Bravo edited"
        self.assert_both_stores(expected)

    def test_item_added_meanwhile_is_appended_to_what_arrived(self):
        kestrel = self.start_with("Alpha")
        kestrel.click_on("push button", "Add")
        kestrel.choose_kind(COMMAND)
        kestrel.set_field("Title", "New")
        kestrel.set_field("Command", "true")
        self.change("Bravo", "Charlie")
        kestrel.finish_form_adding()
        self.assert_both_stores([*items("Bravo", "Charlie"), item(COMMAND, "New", "true")])

    def test_first_and_last_item_arrive_and_vanish_under_an_open_form(self):
        kestrel = self.start_with("Alpha")
        kestrel.click_on("push button", "Add")
        kestrel.choose_kind(COMMAND)
        kestrel.set_field("Title", "New")
        kestrel.set_field("Command", "true")
        self.put(b"[]")
        self.wait_until(lambda: kestrel.stored() == b"[]", "the empty list")
        self.assertTrue(kestrel.form_is_open())
        self.change("Bravo")
        self.put(b"[]")
        self.wait_until(lambda: kestrel.stored() == b"[]", "the empty list again")
        kestrel.finish_form_adding()
        self.assert_both_stores([item(COMMAND, "New", "true")])

    def test_selected_item_that_vanishes_takes_edit_and_delete_with_it_and_brings_them_back(self):
        kestrel = self.start_with("Alpha", "Bravo", "Charlie")
        kestrel.click_row("Bravo")
        self.wait_until(lambda: self.is_sensitive("Delete"), "Delete to react")
        self.change("Alpha", "Charlie")
        self.wait_until(lambda: not self.is_sensitive("Delete"), "Delete to rest")
        self.assertFalse(self.is_sensitive("Edit"))
        before = self.state()
        for key in ("Delete", "alt+Up", "alt+Down", "Return"):
            self.desktop.key(key)
        self.assert_stays(lambda: self.state() == before and not kestrel.form_is_open())
        # The committed item is known by its id, so it is the committed one again.
        self.change("Charlie", "Bravo", "Alpha")
        self.wait_until(lambda: self.is_sensitive("Delete"), "Delete to react again")
        kestrel.click_on("push button", "Delete")
        self.assert_both_stores(items("Charlie", "Alpha"))
        self.assertFalse(self.is_sensitive("Delete"))

    def test_selection_follows_its_item_to_another_place(self):
        kestrel = self.start_with("Alpha", "Bravo", "Charlie")
        kestrel.click_row("Alpha")
        self.change("Charlie", "Bravo", "Alpha")
        self.desktop.key("alt+Up")
        self.assert_both_stores(items("Charlie", "Alpha", "Bravo"))
        self.change("Bravo", "Alpha", "Charlie")
        self.desktop.key("Delete")
        self.assert_both_stores(items("Bravo", "Charlie"))

    def test_open_menu_of_a_row_that_vanished_deletes_nothing(self):
        kestrel = self.start_with("Alpha", "Bravo", "Charlie")
        row = kestrel.accessible.find("list item", "Bravo").rect
        self.desktop.move(*row.center)
        self.desktop.click(*kestrel.row_button("Bravo").rect.center)
        kestrel.accessible.find("menu item", "Delete")
        self.put(encoded(items("Alpha", "Charlie")))
        self.wait_for_local(encoded(items("Alpha", "Charlie")))
        before = self.state()
        if kestrel.accessible.find_all("menu item", "Delete"):
            kestrel.click_on("menu item", "Delete")
        self.assert_stays(lambda: self.state() == before)
        kestrel.wait_for_rows(["Alpha", "Charlie"])
        self.assertTrue(kestrel.process.is_running)

    def test_row_dragged_while_the_list_changes_loses_nothing(self):
        kestrel = self.start_with("Alpha", "Bravo", "Charlie")
        first, _, last = (row.rect for row in
                          kestrel.accessible.find("list", "Items").find_all("list item"))
        self.desktop.move(*first.center)
        self.desktop.press()
        for step in range(1, 9):
            self.desktop.move(first.center[0], first.center[1] + step * first.height // 4)
        self.put(encoded(items("Delta", "Echo")))
        self.wait_for_local(encoded(items("Delta", "Echo")))
        self.desktop.move(last.center[0], last.y + last.height - 2)
        self.desktop.release()
        # Whatever the drag was worth, the list is the one that arrived, in some order.
        self.wait_until(lambda: sorted(kestrel.rows()) == ["Delta", "Echo"], "the list")
        self.assert_stays(lambda: sorted(record["title"] for record in kestrel.stored_items())
                          == ["Delta", "Echo"] and self.in_cloud() == kestrel.stored())
        self.assertTrue(kestrel.process.is_running)
