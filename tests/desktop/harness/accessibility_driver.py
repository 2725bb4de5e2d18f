"""Works the program's windows through the accessible tree alone; see input_driver.py."""
import ctypes

from harness.input_driver import InputDriver
from harness.processes import wait_for


class _ClientMessage(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong),
                ("message_type", ctypes.c_ulong), ("format", ctypes.c_int),
                ("data", ctypes.c_long * 5), ("padding", ctypes.c_long * 16)]


def ask_to_close(desktop, window):
    """Asks the window manager to close a window, as its list of windows does."""
    client_message, substructure = 33, 1 << 19 | 1 << 20
    lib = ctypes.CDLL("libX11.so.6")
    lib.XOpenDisplay.restype = lib.XDefaultRootWindow.restype = ctypes.c_void_p
    display = ctypes.c_void_p(lib.XOpenDisplay(desktop.environment["DISPLAY"].encode()))
    lib.XInternAtom.restype = ctypes.c_ulong
    message = _ClientMessage(type=client_message, window=int(window.id, 16), format=32,
                             message_type=lib.XInternAtom(display, b"_NET_CLOSE_WINDOW", 0))
    lib.XSendEvent(display, ctypes.c_void_p(lib.XDefaultRootWindow(display)), 0,
                   ctypes.c_long(substructure), ctypes.byref(message))
    lib.XCloseDisplay(display)


class AccessibilityDriver(InputDriver):
    """Does all through the accessible tree, without a pointer and without a key."""

    def open_popover(self):
        return self.kestrel.open_popover()

    def open_settings(self):
        self.tree.press("push button", self.word("Settings"))
        self.wait_for_settings()

    def close_settings(self):
        ask_to_close(self.desktop, self.desktop.wait_for_window(role="settings"))
        self.desktop.wait_for_no_window(role="settings")

    def quit(self):
        self.tree.press("push button", self.word("Quit"))

    def press_button(self, name):
        self.tree.press("push button", name)

    def select(self, title):
        self.row(title).do("Press")
        wait_for(lambda: self.is_enabled("Edit"), what="Edit to react")

    def choose_kind(self, kind):
        radio = self.tree.find("radio button", kind)
        radio.do(next(a for a in ("Press", "Check", "Toggle") if a in radio.actions))
        wait_for(lambda: "checked" in radio.states, what=f"{kind} to be chosen")

    def set_text(self, name, text):
        self.field(name).text = text
        self.wait_for_text(name, text)

    def press_confirm(self):
        self.confirm_button().do("Press")

    def cancel(self):
        self.tree.press("push button", self.word("Cancel"))
        self.wait_for_no_form()

    def try_to_confirm(self):
        assert self.confirm_button().actions == []

    def open_dialog(self):
        self.tree.press("push button", self.word("Browse…"))

    def name_file(self, path):
        name = self.tree.find("text", self.word("File name:"))
        name.focus()    # without the keys the toolkit's dialog makes another text of it
        self.wait_for_keys_in_dialog()
        name.text = path
        self.wait_for_file_name(path)

    def accept_dialog(self):
        self.tree.press("push button", self.word("Open"))

    def cancel_dialog(self):
        self.dialog_cancel().do("Press")

    def cancel_list(self):
        self.list_cancel().do("Press")

    def choose_in_menu(self, title, choice):
        self.row(title).do("ShowMenu")
        self.tree.press("menu item", self.word(choice))

    # The tree has no gesture of its own for these; each stands for the menu's.

    def edit_by_gesture(self, title):
        self.choose_in_menu(title, "Edit")

    def delete_by_gesture(self, title):
        self.choose_in_menu(title, "Delete")

    def move(self, title, steps):
        titles = self.kestrel.rows()
        for _ in range(abs(steps)):
            place = titles.index(title)
            other = place + (1 if steps > 0 else -1)
            titles[place], titles[other] = titles[other], titles[place]
            self.row(title).do("MoveDown" if steps > 0 else "MoveUp")
            self.kestrel.wait_for_rows(titles)
