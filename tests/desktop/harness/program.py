"""The running program as its user meets it: its windows, its rows and buttons, its stored list."""
import functools
import json
import mmap
import os
import re

from harness.images import Rect
from harness.processes import DEFAULT_TIMEOUT, wait_for

BUS_NAME = "app.kestrel.Kestrel"
UUID = re.compile(r"[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}")
POPOVER_WIDTH = 240


@functools.cache
def has_sanitizer():
    """Whether the program was built with a sanitizer, which keeps freed memory to find its uses and
    needs descriptors of its own."""
    with open(os.environ["KESTREL_PROGRAM"], "rb") as file, \
            mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ) as data:
        return any(data.find(name) >= 0 for name in (b"__asan_init", b"__tsan_init"))


def popover_height(count):
    """The height of the popover in pixels for a number of items."""
    return 181 if count == 0 else min(count * 34 + 12, 320) + 41


def popover_content(window, scale=1):
    """Where the popover's content is: without the shadow that it has around it on a desktop with a
    compositor."""
    margin = (window.rect.width - scale * POPOVER_WIDTH) // 2
    x, y, width, height = window.rect
    return Rect(x + margin, y + margin, width - 2 * margin, height - 2 * margin)


def item(kind, title, text=None, identity=None):
    """An item as the stored list holds it; `text` is its path or its command."""
    record = {"id": identity, "title": title, "type": kind}
    if text is not None:
        record["command" if kind == "Inline Command" else "path"] = text
    return record


def encoded(items):
    """The bytes of a stored list."""
    text = json.dumps(items, ensure_ascii=False, separators=(",", ":"))
    return text.replace("/", "\\/").encode()


class Kestrel:
    """One run of the program on a desktop."""

    def __init__(self, desktop, command, environment=None, words=None, **options):
        """`words` translates the texts of a localised run, by the English ones; the options are
        those of Process."""
        self.desktop, self.words = desktop, words or {}
        self.process = desktop.start(list(command), environment, **options)

    def word(self, english):
        """A text that the program looks up in its translations, as this run shows it."""
        return self.words.get(english, english)

    @property
    def accessible(self):
        return self.desktop.accessibility

    # The stored list.

    def stored(self, *folder):
        """The bytes of the list in the local store; None before anything was saved."""
        try:
            with open(self.desktop.path("data", "kestrel", *folder, "launcherItems"),
                      "rb") as file:
                return file.read()
        except FileNotFoundError:
            return None

    def own_memory(self):
        """What the program has written to memory and shares with nobody, in KiB. Pages that it only
        reads do not count: they are its own or not as other programs come and go."""
        with open(f"/proc/{self.process.pid}/smaps_rollup", encoding="ascii") as file:
            return next(int(line.split()[1]) for line in file if line.startswith("Private_Dirty:"))

    def is_stored(self, data):
        """Whether the stores hold exactly these bytes: the local one, and the cloud folder where
        there is one."""
        has_cloud = os.path.isdir(self.desktop.path("data", "kestrel", "cloud"))
        return self.stored() == data and (not has_cloud or self.stored("cloud") == data)

    def stored_items(self):
        return json.loads(self.stored() or b"[]")

    def wait_for_stored(self, items, limit=DEFAULT_TIMEOUT):
        """Waits until the stored bytes are exactly those of `items`, in the cloud folder too where
        there is one, and returns the items with the ids that they have got.

        An item whose id is None takes the one that the store holds at its place, which must be a
        fresh one: version 4, in capitals, and of no other item.
        """
        def expected():
            stored = self.stored_items()
            if len(stored) != len(items):
                return None
            return [{**wanted, "id": wanted["id"] or found["id"]}
                    for wanted, found in zip(items, stored)]
        try:
            wait_for(lambda: expected() is not None and self.is_stored(encoded(expected())), limit)
        except AssertionError:
            wanted = expected()
            wanted = encoded(items if wanted is None else wanted)
            raise AssertionError(f"stored:   {self.stored()}\nin cloud: {self.stored('cloud')}\n"
                                 f"expected: {wanted}") from None
        result = expected()
        for record in result:
            assert UUID.fullmatch(record["id"]), record
        assert len({record["id"] for record in result}) == len(result), result
        return result

    # The popover.

    def popover(self):
        return self.desktop.window(role="popover")

    def wait_for_popover(self, limit=DEFAULT_TIMEOUT):
        return self.desktop.wait_for_window(role="popover", limit=limit)

    def wait_for_no_popover(self):
        self.desktop.wait_for_no_window(role="popover")

    def activate(self):
        """Toggles the popover through the bus, as a panel does."""
        self.desktop.call_status_item("Activate")

    def open_popover(self):
        self.activate()
        return self.wait_for_popover()

    def settle_popover(self):
        """Opens the popover unless it is there, after calls that may have opened or closed it and
        that the screen need not show yet."""
        for _ in range(3):
            try:
                return self.wait_for_popover(limit=3)
            except AssertionError:
                self.activate()
        return self.wait_for_popover()

    def rows(self):
        """The titles in the one list that is shown."""
        items = self.accessible.find("list", self.word("Items"))
        return [row.name for row in items.find_all("list item")]

    def wait_for_rows(self, titles):
        try:
            wait_for(lambda: self.rows() == titles)
        except AssertionError:
            raise AssertionError(f"the list shows {self.rows()} and not {titles}") from None

    def quit(self):
        """Ends it by its own button; its exit status."""
        if not self.popover():
            self.open_popover()
        self.click_on("push button", self.word("Quit"))
        return self.process.wait()

    # Windows and what is in them, by the real pointer.

    def click_on(self, role, name):
        self.desktop.click(*self.accessible.find(role, name).rect.center)

    def click_row(self, title):
        self.click_on("list item", re.escape(title))

    def row_button(self, title):
        """The button of a row's own menu, by its place: toolkits differ in whose child it is."""
        row = self.accessible.find("list item", re.escape(title)).rect
        name = self.word("Actions")
        return wait_for(lambda: [button for button in self.accessible.find_all(None, name)
                                 if row.contains(button.rect)],
                        what=f"the button in the row of {title}")[0]

    def click_row_actions(self, title, choice):
        """Chooses from the menu of the row's own button."""
        self.desktop.move(*self.accessible.find("list item", re.escape(title)).rect.center)
        self.desktop.click(*self.row_button(title).rect.center)
        self.click_on("menu item", self.word(choice))

    def open_settings(self):
        """Opens the settings window from the popover and returns it."""
        if not self.popover():
            self.open_popover()
        self.click_on("push button", self.word("Settings"))
        window = self.desktop.wait_for_window(role="settings")
        self.wait_for_no_popover()
        wait_for(lambda: self.desktop.focused_window() == window.id, what="the keyboard focus")
        return window

    def close_settings(self):
        self.desktop.key("alt+F4")
        self.desktop.wait_for_no_window(role="settings")

    def set_field(self, name, text):
        """Replaces the text of a field of the form, typed by the keyboard."""
        self.click_on("text", name)
        self.desktop.key("ctrl+a", "BackSpace")
        self.desktop.type(text)
        field = self.accessible.find("text", name)
        wait_for(lambda: field.text == text, what=f"{name!r} to hold {text!r}")

    def field(self, name):
        return self.accessible.find("text", name).text

    def choose_kind(self, kind):
        self.click_on("radio button", kind)

    def form_is_open(self):
        return bool(self.accessible.find_all("push button", self.word("Cancel")))

    def finish_form(self, button):
        """Clicks one of the form's buttons and waits until the form has gone."""
        self.click_on("push button", button)
        wait_for(lambda: not self.form_is_open(), what="the form to close")

    def add(self, kind, title, text, opener="Add"):
        """Adds an item by the pointer and the keyboard."""
        self.click_on("push button", opener)
        self.accessible.find("push button", self.word("Cancel"))
        self.choose_kind(kind)
        self.set_field("Title", title)
        self.set_field({"App": "App", "Command File": "File",
                        "Inline Command": "Command"}[kind], text)
        self.finish_form_adding()

    def finish_form_adding(self):
        """Clicks the form's "Add", which is not the toolbar's."""
        buttons = [b for b in self.accessible.find_all("push button", "Add") if self.in_form(b)]
        self.desktop.click(*buttons[0].rect.center)
        wait_for(lambda: not self.form_is_open(), what="the form to close")

    def in_form(self, node):
        """Whether a node is in the same row as the form's "Cancel"."""
        cancel = self.accessible.find("push button", self.word("Cancel")).rect
        return abs(node.rect.center[1] - cancel.center[1]) <= cancel.height // 2


def store_before_start(desktop, items, store="data/kestrel/launcherItems"):
    """Puts a list where the program finds it."""
    desktop.write(store, encoded(items))
    os.chmod(desktop.path("data", "kestrel"), 0o700)
