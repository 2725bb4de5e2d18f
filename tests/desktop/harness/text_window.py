"""The window of text_editor_app.py, on a desktop that tells its managed windows and what its shell
shows."""
import pathlib
import sys

from harness.processes import wait_for
from harness.shell_session import text_of

PROGRAM = pathlib.Path(__file__).with_name("text_editor_app.py")


class TextWindow:
    """There is one for each title; starting it again brings it to the front."""

    def __init__(self, desktop, title="Text"):
        self.desktop, self.title = desktop, title
        self._process = None
        # The desktop's account need not be able to read the sources.
        program = desktop.write("home/text_editor_app.py", PROGRAM.read_bytes())
        self.command = [sys.executable, program, title, "org.example." + title]

    def start(self):
        """Starts it and waits until it has the keyboard and the task bar shows it: a panel that is
        clicked while the window manager gives the keyboard to a new window may not hear of it."""
        before = len(self.desktop.buttons())
        self._process = self.desktop.start(self.command)
        self.wait_for_keyboard()
        wait_for(lambda: len(self.desktop.buttons()) > before, what="the task bar's button")
        return self

    @property
    def text(self):
        """All that has been typed into it since it was started here."""
        return text_of(self._process)

    @property
    def window(self):
        return self.desktop.managed_window(self.title)

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
