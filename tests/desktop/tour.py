#!/usr/bin/env python3
"""Leads the program through a whole journey on a virtual desktop with a real panel.

    tests/desktop/tour.py PROGRAM FOLDER

A real pointer and keyboard do everything; each step is checked, told in one line and kept as a
screenshot in FOLDER. At the end it takes the pictures of the README (see pictures.py). The exit
status is 0 only when all of it happened. Needs /usr/bin/python3.
"""
import os
import pathlib
import sys

from harness.desktop import Desktop
from harness.languages import translations
from harness.processes import Timeout, wait_for
from harness.program import Kestrel, item, popover_content, popover_height
from pictures import Pictures

APP, FILE, COMMAND = "App", "Command File", "Inline Command"
BACKGROUND = (0x35, 0x50, 0x6B)
GERMAN, HEBREW = "de_DE.UTF-8", "he_IL.UTF-8"
TERMINAL_LOOKS = "xterm*faceName: DejaVu Sans Mono\nxterm*faceSize: 10\n"


class Tour:
    """The journey; each step is a method that returns what it has seen."""

    def __init__(self, desktop, program, folder):
        self.desktop, self.program, self.folder = desktop, program, folder
        self.kestrel = self.items = self.entry = self.file = self.command = None
        self.count = 0

    def run(self):
        for step in (self.start, self.open_empty, self.open_settings, self.browse,
                     self.take_application, self.add_application, self.add_command_file,
                     self.add_command, self.open_full, self.launch_application,
                     self.launch_command_file, self.launch_command, self.carry, self.drop,
                     self.open_row_menu, self.delete, self.edit, self.close,
                     self.start_again_in_german, self.mirror):
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

    def start(self, locale="C.UTF-8", words=None):
        self.kestrel = Kestrel(self.desktop, [self.program], {"LANG": locale}, words)
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

    def browse(self):
        script = self.script("application")
        self.entry = self.desktop.write(
            "data/applications/org.example.FieldNotes.desktop", "[Desktop Entry]\n"
            "Type=Application\nName=Field Notes\nIcon=accessories-text-editor\n"
            f"Exec={script}\n")
        self.kestrel.click_on("push button", "Add First Item")
        self.kestrel.click_on("push button", "Browse…")
        found = wait_for(self.applications, what="the applications")
        assert "Field Notes" in found and not any(".desktop" in name for name in found), found
        return f"the form's button shows the installed applications by name, {found[0]} first"

    def applications(self):
        """The names that the list of applications shows."""
        dialogs = self.kestrel.accessible.find_all("dialog", "Choose an Application")
        return [row.name for dialog in dialogs for row in dialog.find_all("list item")]

    def take_application(self):
        self.desktop.type("field n")
        wait_for(lambda: self.applications() == ["Field Notes"], what="the one that is sought")
        self.desktop.key("Return")
        wait_for(lambda: not self.applications(), what="the list to close")
        fields = self.kestrel.field("Title"), self.kestrel.field("App")
        assert fields == ("Field Notes", self.entry), fields
        assert self.kestrel.stored() is None
        return "typing found it, Return put its name and path into the form; nothing is stored yet"

    def add_application(self):
        self.kestrel.finish_form_adding()
        self.items = self.kestrel.wait_for_stored([item(APP, "Field Notes", self.entry)])
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
        self.kestrel.wait_for_rows(["Field Notes", "Deploy", "Say hello"])
        return "the command is stored last, its quotes and slashes escaped"

    def open_full(self):
        self.kestrel.close_settings()
        rect = self.click_icon()
        assert rect[2:] == (240, popover_height(3)), rect
        self.kestrel.wait_for_rows(["Field Notes", "Deploy", "Say hello"])
        return f"the popover shows the three items in a height of {rect.height}"

    def launch_application(self):
        self.kestrel.click_row("Field Notes")
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

    def carry(self):
        self.click_icon()
        window = self.kestrel.open_settings().rect
        places = [row.rect for row in
                  self.kestrel.accessible.find("list", "Items").find_all("list item")]
        self.desktop.move(window.center[0], window.y + 20)
        second = self.desktop.settled_screenshot(places[1])
        self.desktop.move(*places[0].center)
        self.desktop.press()
        for place in places[1:]:
            self.desktop.move(*place.center)
        self.desktop.move(places[-1].center[0], places[-1].y + places[-1].height - 2)
        wait_for(lambda: self.desktop.screenshot().cut(places[0]) == second,
                 what="the second row at the first place")
        self.kestrel.wait_for_stored(self.items)
        return "the first row is carried below the last, and the others have made room"

    def drop(self):
        self.desktop.release()
        self.items = self.kestrel.wait_for_stored([*self.items[1:], self.items[0]])
        self.kestrel.wait_for_rows(["Deploy", "Say hello", "Field Notes"])
        return "the row was let go there, and that order is stored"

    def open_row_menu(self):
        row = self.kestrel.accessible.find("list item", "Deploy").rect
        self.desktop.click(*row.center, button=3)
        wait_for(lambda: self.menu() == ["Edit", "Delete"], what="the row's menu")
        self.desktop.key("Down")
        return "the right button opened the row's menu, which tells the keys for the same"

    def menu(self):
        """What the open menu offers; the terminals have menus too."""
        return [node.name for program in self.kestrel.accessible.applications()
                if program.name.lower() == "kestrel" for node in program.find_all("menu item")]

    def delete(self):
        self.desktop.key("Escape")
        wait_for(lambda: not self.menu(), what="the menu to close")
        self.desktop.key("Delete")
        self.items = self.kestrel.wait_for_stored(self.items[1:])
        self.kestrel.wait_for_rows(["Say hello", "Field Notes"])
        return "the key that the menu shows took the command file from the list and the store"

    def edit(self):
        row = self.kestrel.accessible.find("list item", "Say hello").rect
        self.desktop.double_click(*row.center)
        self.kestrel.set_field("Title", "  Say goodbye ")
        self.kestrel.set_field("Command", "exit")
        self.kestrel.finish_form("Save")
        self.items[0].update(title="Say goodbye", command="exit")
        self.kestrel.wait_for_stored(self.items)
        return "the command has a new title, without its spaces, a new text, and its old id"

    def close(self):
        self.kestrel.close_settings()
        assert self.kestrel.process.is_running
        assert self.click_icon().height == popover_height(2)
        return "the window is closed, the icon stays, and the popover shows two items"

    def start_again_in_german(self):
        self.quit()
        self.start(GERMAN, translations("de"))
        self.click_icon()
        self.kestrel.wait_for_rows(["Say goodbye", "Field Notes"])
        self.kestrel.wait_for_stored(self.items)
        self.kestrel.accessible.find("push button", "Einstellungen")
        self.kestrel.accessible.find("push button", "Beenden")
        return "a new start showed the same list, byte for byte, and spoke German"

    def mirror(self):
        self.quit()
        self.start(HEBREW)
        self.click_icon()
        self.kestrel.open_settings()
        places = [self.kestrel.accessible.find("push button", name).rect.x
                  for name in ("Add", "Edit", "Delete")]
        assert places == sorted(places, reverse=True), places
        self.kestrel.wait_for_rows(["Say goodbye", "Field Notes"])
        return "in Hebrew the settings window is laid out from the right"

    def quit(self):
        status = self.kestrel.quit()
        if status != 0:
            raise Timeout(f"status {status}")


def main():
    program, folder = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    for old in folder.glob("[0-9][0-9]-*.png"):
        old.unlink()
    with Desktop(panel="xfce4-panel", window_manager="xfwm4", compositor=True) as desktop:
        desktop.fill_background(BACKGROUND)
        desktop.write("home/.Xdefaults", TERMINAL_LOOKS)
        done = Tour(desktop, program, folder).run()
    if done:
        taken = Pictures(program, folder).take()
        print("   ", *taken or ["no pictures for the README: nothing can be mounted here"])
    print("All of it happened." if done else "The journey ended early.", f"Screenshots: {folder}/")
    return 0 if done else 1


if __name__ == "__main__":
    sys.exit(main())
