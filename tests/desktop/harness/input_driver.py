"""What drives the program's windows for a test: the pointer (pointer_driver.py), the keyboard alone
(keyboard_driver.py) or the accessible tree alone (accessibility_driver.py). All offer the same, so
that one journey can be made with each.

Fields, kinds and choices of a menu are named in English; buttons by what they show.
"""
import re

from harness.processes import wait_for

APP, FILE, COMMAND = "App", "Command File", "Inline Command"
KINDS = (APP, FILE, COMMAND)
# The label of the field that belongs to each kind.
FIELD = {APP: "App", FILE: "File", COMMAND: "Command"}


class InputDriver:
    """The base of all of them: they read the accessible tree to see what they have done."""

    # Whether a row whose menu is opened becomes the selected one.
    menu_selects = False

    def __init__(self, kestrel):
        self.kestrel, self.desktop = kestrel, kestrel.desktop

    @property
    def tree(self):
        return self.kestrel.accessible

    def word(self, english):
        return self.kestrel.word(english)

    def row(self, title):
        return self.tree.find("list item", re.escape(title))

    def is_enabled(self, name):
        """Whether a button of the toolbar reacts."""
        return "sensitive" in self.tree.find("push button", name).states

    def field(self, name):
        return self.tree.find("text", self.word(name))

    def confirm_button(self):
        """The form's own button, where the toolbar has one of the same name."""
        names = "|".join({self.word("Add"), self.word("Save")})
        return wait_for(lambda: [button for button in self.tree.find_all("push button", names)
                                 if self.kestrel.in_form(button)], what="the form's button")[0]

    def can_confirm(self):
        return "sensitive" in self.confirm_button().states

    def wait_for_form(self):
        self.tree.find("push button", self.word("Cancel"))

    def wait_for_no_form(self):
        wait_for(lambda: not self.kestrel.form_is_open(), what="the form to close")

    def wait_for_text(self, name, text):
        wait_for(lambda: self.field(name).text == text,
                 what=f"{name!r} to hold {text!r} and not {self.field(name).text!r}")

    def confirm(self):
        """Ends the form by its "Add" or "Save"."""
        wait_for(self.can_confirm, what="the form's button to react")
        self.press_confirm()
        self.wait_for_no_form()

    def try_to_confirm(self):
        """Presses the form's button, which does not react."""
        self.press_confirm()

    def browse(self, path, is_taken=True):
        """Names a file in the dialog behind "Browse…", or cancels it for None. A file that is not
        taken is refused by the dialog or, after it, by the program. For an application the dialog
        is behind the list of those that are installed, which has to be cancelled where nothing is
        taken."""
        self.open_dialog()
        has_list = wait_for(lambda: self.list_of_applications() or self.file_name_fields(),
                            what="a dialog") and bool(self.list_of_applications())
        if has_list:
            self.press_button(self.word("Other…"))
        self.wait_for_dialog()
        if path is not None:
            self.name_file(path)
        if is_taken:
            wait_for(lambda: self.is_enabled(self.word("Open")), what="Open to react")
        if path is not None and self.is_enabled(self.word("Open")):
            self.accept_dialog()
        else:
            self.cancel_dialog()
        self.wait_for_dialog(False)
        if has_list and not is_taken:
            self.cancel_list()
        wait_for(lambda: not self.list_of_applications(), what="the list to close")

    def list_of_applications(self):
        """The dialogs with that list that are shown: one or none."""
        return self.tree.find_all("dialog", self.word("Choose an Application"))

    def list_cancel(self):
        """The button of that dialog; the form, which waits behind it, has one of the same name."""
        return self.list_of_applications()[0].find_all("push button", self.word("Cancel"))[0]

    def file_name_fields(self):
        """The fields for a name in the file dialogs that are shown: one or none."""
        return self.tree.find_all("text", self.word("File name:"))

    def wait_for_keys_in_dialog(self):
        """What is typed before the window manager has given it the keyboard is lost."""
        wait_for(lambda: any("focused" in field.states for field in self.file_name_fields()),
                 what="the keyboard focus in the file dialog")

    def dialog_cancel(self):
        """The dialog's button; the form, which waits behind it, has one of the same name."""
        name = self.tree.find("text", self.word("File name:")).rect
        return next(button for button in self.tree.find_all("push button", self.word("Cancel"))
                    if button.rect.x > name.x + name.width)

    def fill_in(self, kind, title, text):
        self.choose_kind(kind)
        if title is not None:
            self.set_text("Title", title)
        self.set_text(FIELD[kind], text)

    def wait_for_dialog(self, is_there=True):
        """Waits for the dialog behind "Browse…" to come or to go."""
        wait_for(lambda: bool(self.file_name_fields()) == is_there, what="the dialog")

    def wait_for_file_name(self, path):
        name = self.tree.find("text", self.word("File name:"))
        wait_for(lambda: name.text == path, what=f"the dialog to hold {path}")

    def wait_for_settings(self):
        window = self.desktop.wait_for_window(role="settings")
        self.kestrel.wait_for_no_popover()
        wait_for(lambda: self.desktop.focused_window() == window.id, what="the keyboard focus")
