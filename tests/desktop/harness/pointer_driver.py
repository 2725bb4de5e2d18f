"""Works the program's windows by the pointer; see input_driver.py."""
import time

from harness.input_driver import InputDriver
from harness.processes import wait_for


class PointerDriver(InputDriver):
    """Clicks, and types only texts; but Delete is a key."""

    def open_popover(self):
        self.desktop.click(*self.desktop.icon_rect().center)
        return self.kestrel.wait_for_popover()

    def open_settings(self):
        self.kestrel.click_on("push button", self.word("Settings"))
        self.wait_for_settings()

    def close_settings(self):
        # The button at the right end of the title bar, as high as it is wide.
        frame = self.desktop.wait_for_window(role="settings").rect
        self.desktop.click(frame.x + frame.width - 10, frame.y - 11)
        self.desktop.wait_for_no_window(role="settings")

    def quit(self):
        self.kestrel.click_on("push button", self.word("Quit"))

    def press_button(self, name):
        self.kestrel.click_on("push button", name)

    def select(self, title):
        self.kestrel.click_row(title)
        wait_for(lambda: self.is_enabled("Edit"), what="Edit to react")

    def choose_kind(self, kind):
        self.kestrel.choose_kind(kind)

    def set_text(self, name, text):
        self.kestrel.set_field(self.word(name), text)

    def press_confirm(self):
        self.desktop.click(*self.confirm_button().rect.center)

    def cancel(self):
        self.kestrel.finish_form(self.word("Cancel"))

    def open_dialog(self):
        self.kestrel.click_on("push button", self.word("Browse…"))

    def name_file(self, path):
        self.wait_for_keys_in_dialog()
        self.desktop.type(path)
        self.wait_for_file_name(path)

    def accept_dialog(self):
        # The first click may only close the list of names that typing has opened.
        while found := self.tree.find_all("push button", self.word("Open")):
            self.desktop.click(*found[0].rect.center)
            time.sleep(0.2)

    def cancel_dialog(self):
        while self.tree.find_all("push button", self.word("Open")):
            self.desktop.click(*self.dialog_cancel().rect.center)
            time.sleep(0.2)

    def cancel_list(self):
        self.desktop.click(*self.list_cancel().rect.center)

    def choose_in_menu(self, title, choice):
        self.kestrel.click_row_actions(title, choice)

    def edit_by_gesture(self, title):
        self.desktop.double_click(*self.row(title).rect.center)

    def delete_by_gesture(self, title):
        self.select(title)
        self.desktop.key("Delete")

    def move(self, title, steps):
        """Drags a row `steps` places down, or up where that is negative."""
        titles = self.kestrel.rows()
        start = self.row(title).rect
        goal = self.row(titles[titles.index(title) + steps]).rect
        edge = goal.y + (goal.height - 2 if steps > 0 else 2)
        self.desktop.drag(start.center, (start.center[0], edge))
