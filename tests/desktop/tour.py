#!/usr/bin/env python3
"""Leads the program through a whole journey on a virtual desktop with a real panel.

    tests/desktop/tour.py PROGRAM FOLDER

A real pointer and keyboard do everything; each step is checked, told in one line and kept as a
screenshot in FOLDER. The exit status is 0 only when all of it happened. Needs /usr/bin/python3.
"""
import os
import pathlib
import sys

from harness.desktop import Desktop
from harness.processes import Timeout, wait_for
from harness.program import Kestrel, item, popover_content, popover_height

APP, FILE, COMMAND = "App", "Command File", "Inline Command"
BACKGROUND = (0x35, 0x50, 0x6B)
TERMINAL_LOOKS = "xterm*faceName: DejaVu Sans Mono\nxterm*faceSize: 10\n"


class Tour:
    """The journey; each step is a method that returns what it has seen."""

    def __init__(self, desktop, program, folder):
        self.desktop, self.program, self.folder = desktop, program, folder
        self.kestrel = self.items = self.entry = self.file = self.command = None
        self.count = 0

    def run(self):
        for step in (self.start, self.open_empty, self.open_settings, self.fill_in_form,
                     self.add_application, self.add_command_file, self.add_command,
                     self.open_full, self.launch_application, self.launch_command_file,
                     self.launch_command, self.reorder, self.edit, self.delete, self.close,
                     self.quit, self.start_again):
            self.count += 1
            name = step.__name__.replace("_", "-")
            try:
                seen = step()
            except Exception as error:  # Whatever went wrong, the journey ends here.
                self.save_screenshot(f"{name}-failed")
                print(f"{self.count:2} FAILED {name}: {error!r}")
                if self.kestrel:
                    print(*self.kestrel.process.lines, sep="\n")
                return False
            self.save_screenshot(name)
            print(f"{self.count:2} ok {name}: {seen}", flush=True)
        return True

    def save_screenshot(self, name):
        try:
            image = self.desktop.settled_screenshot(self.desktop.bounds)
        except AssertionError:      # something moves on
            image = self.desktop.screenshot()
        image.save(self.folder / f"{self.count:02}-{name}.png")

    # What the items start leaves a mark that tells the terminal it ran in.

    def mark(self, name):
        return self.desktop.path("home", f"{name}.mark")

    def script(self, name):
        return self.desktop.write(f"home/{name}", f"#!/bin/sh\ntty >'{self.mark(name)}'\n", 0o755)

    def wait_for_mark(self, name):
        def content():
            if not os.path.exists(self.mark(name)):
                return None
            with open(self.mark(name), encoding="utf-8") as file:
                return file.read().strip()
        return wait_for(content, what=f"the mark of {name}")

    # The steps.

    def click_icon(self):
        self.desktop.click(*self.desktop.icon_rect().center)
        return popover_content(self.kestrel.wait_for_popover())

    def start(self):
        self.kestrel = Kestrel(self.desktop, [self.program])
        return f"the icon is in the panel at {tuple(self.desktop.icon_rect())}"

    def open_empty(self):
        rect = self.click_icon()
        assert rect[2:] == (240, popover_height(0)), rect
        assert self.desktop.bounds.contains(rect), rect
        self.kestrel.accessible.find("label", "No items yet")
        return f"a click on it opens the empty popover, {rect.width} by {rect.height}"

    def open_settings(self):
        rect = self.kestrel.open_settings().rect
        assert rect[2:] == (520, 420), rect
        self.kestrel.accessible.find("push button", "Add First Item")
        return f"the popover gave way to the empty settings window, {rect.width} by {rect.height}"

    def fill_in_form(self):
        script = self.script("application")
        self.entry = self.desktop.write(
            "home/tour.desktop", "[Desktop Entry]\nType=Application\nName=Tour\n"
            f"Icon=accessories-text-editor\nExec={script}\n")
        self.kestrel.click_on("push button", "Add First Item")
        self.kestrel.set_field("Title", "  Editor ")
        self.kestrel.set_field("App", self.entry)
        assert self.kestrel.stored() is None
        return "the form holds a title and a path; nothing is stored yet"

    def add_application(self):
        self.kestrel.finish_form_adding()
        self.items = self.kestrel.wait_for_stored([item(APP, "Editor", self.entry)])
        return f"stored byte for byte: {self.kestrel.stored().decode()}"

    def add_command_file(self):
        self.file = self.script("deploy.command")
        self.kestrel.add(FILE, "Deploy", self.file)
        self.items = self.kestrel.wait_for_stored([*self.items, item(FILE, "Deploy", self.file)])
        return "the command file is stored after it"

    def add_command(self):
        self.command = f"tty > '{self.mark('command')}' && echo \"Hello / from Kestrel\""
        self.kestrel.add(COMMAND, "Say hello", self.command)
        self.items = self.kestrel.wait_for_stored(
            [*self.items, item(COMMAND, "Say hello", self.command)])
        self.kestrel.wait_for_rows(["Editor", "Deploy", "Say hello"])
        return "the command is stored last, its quotes and slashes escaped"

    def open_full(self):
        self.kestrel.close_settings()
        rect = self.click_icon()
        assert rect[2:] == (240, popover_height(3)), rect
        self.kestrel.wait_for_rows(["Editor", "Deploy", "Say hello"])
        return f"the popover shows the three items in a height of {rect.height}"

    def launch_application(self):
        self.kestrel.click_row("Editor")
        self.kestrel.wait_for_no_popover()
        assert self.wait_for_mark("application") == "not a tty"
        return "the desktop entry's program ran, without a terminal; the popover closed"

    def launch_command_file(self):
        self.click_icon()
        self.kestrel.click_row("Deploy")
        self.kestrel.wait_for_no_popover()
        return f"the file ran in the terminal {self.terminal_of('deploy.command')}"

    def launch_command(self):
        self.click_icon()
        self.kestrel.click_row("Say hello")
        self.kestrel.wait_for_no_popover()
        return f"the command was typed into the terminal {self.terminal_of('command')}"

    def terminal_of(self, name):
        terminal = self.wait_for_mark(name)
        assert terminal.startswith("/dev/pts/"), terminal
        return terminal

    def reorder(self):
        self.click_icon()
        self.kestrel.open_settings()
        rows = self.kestrel.accessible.find("list", "Items").find_all("list item")
        first, last = rows[0].rect, rows[-1].rect
        self.desktop.drag(first.center, (last.center[0], last.y + last.height - 2))
        self.items = self.kestrel.wait_for_stored([*self.items[1:], self.items[0]])
        self.kestrel.wait_for_rows(["Deploy", "Say hello", "Editor"])
        return "the first row was dragged below the last, and that order is stored"

    def edit(self):
        row = self.kestrel.accessible.find("list item", "Say hello").rect
        self.desktop.double_click(*row.center)
        self.kestrel.set_field("Title", "Say goodbye")
        self.kestrel.set_field("Command", "exit")
        self.kestrel.finish_form("Save")
        self.items[1].update(title="Say goodbye", command="exit")
        self.kestrel.wait_for_stored(self.items)
        return "the command has a new title and text, and its old id"

    def delete(self):
        self.kestrel.click_row_actions("Deploy", "Delete")
        self.items = self.kestrel.wait_for_stored(self.items[1:])
        self.kestrel.wait_for_rows(["Say goodbye", "Editor"])
        return "the command file is gone from the list and from the store"

    def close(self):
        self.kestrel.close_settings()
        assert self.kestrel.process.is_running
        assert self.click_icon().height == popover_height(2)
        return "the window is closed, the icon stays, and the popover shows two items"

    def quit(self):
        status = self.kestrel.quit()
        if status != 0:
            raise Timeout(f"status {status}")
        return "the program ended with status 0"

    def start_again(self):
        self.start()
        self.click_icon()
        self.kestrel.wait_for_rows(["Say goodbye", "Editor"])
        self.kestrel.wait_for_stored(self.items)
        assert self.kestrel.quit() == 0
        return "a new start showed the same list, byte for byte"


def main():
    program, folder = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    for old in folder.glob("[0-9][0-9]-*.png"):
        old.unlink()
    with Desktop(panel="xfce4-panel", window_manager="xfwm4", compositor=True) as desktop:
        desktop.fill_background(BACKGROUND)
        desktop.write("home/.Xdefaults", TERMINAL_LOOKS)
        done = Tour(desktop, program, folder).run()
    print("All of it happened." if done else "The journey ended early.", f"Screenshots: {folder}/")
    return 0 if done else 1


if __name__ == "__main__":
    sys.exit(main())
