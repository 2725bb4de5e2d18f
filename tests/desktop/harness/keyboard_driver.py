"""Works the program's windows by the keyboard alone; see input_driver.py."""
import os

from harness.input_driver import KINDS, InputDriver
from harness.processes import wait_for


class KeyboardDriver(InputDriver):
    """Presses keys and has no pointer."""

    menu_selects = True

    def tab_to(self, role, name):
        """Goes to a control by Tab."""
        def has_focus():
            return any("focused" in node.states for node in self.tree.find_all(role, name))
        self.tree.find(role, name)
        for _ in range(16):
            if has_focus():
                return
            self.desktop.key("Tab")
        raise AssertionError(f"Tab does not reach {role} {name!r}")

    def open_popover(self):
        """Starts the program again, as a shortcut of the desktop does."""
        wait_for(self.desktop.status_items, what="the running program")
        self.desktop.start([os.environ["KESTREL_PROGRAM"]]).wait()
        return self.kestrel.wait_for_popover()

    def open_settings(self):
        self.tab_to("push button", self.word("Settings"))
        self.desktop.key("space")
        self.wait_for_settings()

    def close_settings(self):
        self.kestrel.close_settings()

    def quit(self):
        self.tab_to("push button", self.word("Quit"))
        self.desktop.key("space")

    def press_button(self, name):
        self.tab_to("push button", name)
        self.desktop.key("space")

    def select(self, title):
        self.tab_to_list()
        self.desktop.key("Home", *["Down"] * self.kestrel.rows().index(title))
        wait_for(lambda: "selected" in self.row(title).states, what=f"{title} to be selected")

    def tab_to_list(self):
        """The list itself has the keys, or the row in it that is selected."""
        box = self.tree.find("list", self.word("Items"))
        for _ in range(16):
            if any("focused" in node.states for node in (box, *box.find_all("list item"))):
                return
            self.desktop.key("Tab")
        raise AssertionError("Tab does not reach the list")

    def choose_kind(self, kind):
        def chosen():
            return next(k for k in KINDS
                        if "checked" in self.tree.find("radio button", k).states)
        self.tab_to("radio button", chosen())
        while chosen() != kind:
            before = chosen()
            self.desktop.key("Right" if KINDS.index(before) < KINDS.index(kind) else "Left")
            wait_for(lambda: chosen() != before, what="another kind")

    def set_text(self, name, text):
        self.tab_to("text", self.word(name))
        self.desktop.key("ctrl+a", "BackSpace")
        self.desktop.type(text)
        self.wait_for_text(name, text)

    def press_confirm(self):
        self.desktop.key("ctrl+Return")

    def cancel(self):
        self.desktop.key("Escape")
        self.wait_for_no_form()

    def open_dialog(self):
        self.tab_to("push button", self.word("Browse…"))
        self.desktop.key("space")

    def name_file(self, path):
        self.wait_for_keys_in_dialog()
        self.desktop.type(path)
        self.wait_for_file_name(path)

    def accept_dialog(self):
        self.desktop.key("Return")

    def cancel_dialog(self):
        self.desktop.key("Escape")

    def cancel_list(self):
        wait_for(lambda: "focused" in self.tree.find("push button", self.word("Other…")).states,
                 what="the keyboard focus in the list")
        self.desktop.key("Escape")

    def choose_in_menu(self, title, choice):
        self.select(title)
        self.desktop.key("Menu")
        entry = self.tree.find("menu item", self.word(choice))
        for _ in range(4):
            if entry.states & {"focused", "selected"}:
                break
            self.desktop.key("Down")
        self.desktop.key("Return")

    def edit_by_gesture(self, title):
        self.select(title)
        self.desktop.key("Return")

    def delete_by_gesture(self, title):
        self.select(title)
        self.desktop.key("Delete")

    def move(self, title, steps):
        self.select(title)
        self.desktop.key(*["alt+Down" if steps > 0 else "alt+Up"] * abs(steps))
