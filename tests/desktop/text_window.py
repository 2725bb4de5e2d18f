"""A window to type into, of a toolkit that is a Wayland program in a Wayland session."""
import pathlib
import re
import sys

from processes import wait_for

PROGRAM = pathlib.Path(__file__).with_name("text_application.py")


class TextWindow:
    """On a desktop that knows its managed windows."""

    def __init__(self, desktop, title="Text"):
        self.desktop, self.title = desktop, title
        self._file = desktop.path("home", title + ".text")
        # The account of the desktop need not be able to read the sources.
        program = desktop.write("home/text_application.py", PROGRAM.read_bytes())
        self.command = [sys.executable, program, title, self._file]

    def start(self):
        """Starts it and waits until it has the keyboard."""
        self.desktop.start(self.command)
        self.wait_for_keyboard()
        return self

    @property
    def text(self):
        """All that has been typed into it; None before it is there."""
        try:
            with open(self._file, encoding="utf-8") as file:
                return file.read()
        except FileNotFoundError:
            return None

    @property
    def window(self):
        return self.desktop.managed_window(f"^{re.escape(self.title)}$")

    def has_keyboard(self):
        window = self.window
        return window is not None and window.is_active

    def wait_for_keyboard(self):
        wait_for(self.has_keyboard, what=f"{self.title} to have the keyboard")

    def wait_for_text(self, text):
        try:
            wait_for(lambda: self.text == text)
        except AssertionError:
            raise AssertionError(f"{self.title} holds {self.text!r} and not {text!r}") from None
