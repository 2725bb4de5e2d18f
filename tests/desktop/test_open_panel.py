"""Choosing an application or a command file with "Browse…", by a real pointer and keyboard."""
import os
import re

from harness.accessibility_driver import AccessibilityDriver
from harness.case import DesktopTest
from harness.languages import translations
from harness.program import item

APP, FILE = "App", "Command File"
LIST = "Choose an Application"
EDITOR = "org.gnome.TextEditor.desktop"


class OpenPanelTest(DesktopTest):
    """Each test has applications of its own, in the user's folder of data and in the system's."""

    def start(self, words=None, **environment):
        """Starts the program and opens the form for a new item."""
        self.start_desktop(panel="fake")
        self.install("data", EDITOR, "Text Editor", "Name[de]=Texteditor\nExec=true\n")
        self.install("system", "maps.desktop", "Maps", "Keywords=Route;Places;\nExec=true\n")
        self.install("system", "mail.desktop", "Éclair Mail", "Exec=true\n")
        self.install("system", "quiet.desktop", "Quiet", "Exec=true\nNoDisplay=true\n")
        self.install("system", "foreign.desktop", "Foreign", "Exec=true\nOnlyShowIn=GNOME;\n")
        for shared in ("icons", "mime"):    # without types the toolkit's file dialog shows no files
            os.symlink("/usr/share/" + shared, self.desktop.path("system", shared))
        self.desktop.write("config/user-dirs.dirs", 'XDG_DESKTOP_DIR="$HOME/Schreibtisch"\n')
        self.start_kestrel({"XDG_DATA_DIRS": self.desktop.path("system"),
                            "XDG_CURRENT_DESKTOP": "KDE", **environment}, words)
        self.kestrel.open_settings()
        self.kestrel.click_on("push button", self.word("Add First Item"))
        return self.kestrel

    def install(self, folder, name, title, lines):
        """Makes the desktop entry of an application and returns its path."""
        return self.desktop.write(f"{folder}/applications/{name}",
                                  f"[Desktop Entry]\nType=Application\nName={title}\n{lines}")

    def application(self, folder, name):
        return self.desktop.path(folder, "applications", name)

    def word(self, english):
        return self.kestrel.word(english)

    def open_list(self):
        """Opens the list of applications and waits until the keys go to it."""
        self.kestrel.click_on("push button", self.word("Browse…"))
        dialog = self.kestrel.accessible.find("dialog", self.word(LIST))
        self.wait_until(lambda: dialog.find_all("list item"), "the applications")
        search = dialog.find_all("text")[0]
        self.wait_until(lambda: "focused" in search.states, "the keyboard focus")
        return dialog

    def names(self, dialog):
        return [row.name for row in dialog.find_all("list item")]

    def wait_for_no_list(self):
        self.wait_until(lambda: not self.kestrel.accessible.find_all("dialog", self.word(LIST)),
                        "the list to close")

    def fields(self):
        """The title and the path of the form."""
        return (self.kestrel.field(self.word("Title")), self.kestrel.field(self.word("App")))

    def wait_for_fields(self, *expected):
        self.wait_for_no_list()
        self.wait_until(lambda: self.fields() == expected, f"{expected} and not {self.fields()}")

    def test_application_is_found_by_typing_and_gives_an_empty_title_its_name(self):
        kestrel = self.start()
        dialog = self.open_list()
        # What another desktop shows, and what none does, is not there.
        self.assertEqual(self.names(dialog), ["Éclair Mail", "Maps", "Text Editor"])
        self.desktop.type("text ed")
        self.wait_until(lambda: self.names(dialog) == ["Text Editor"], "the one that is sought")
        self.wait_until(lambda: dialog.find_all("text")[0].description == "Text Editor",
                        "the screen reader's word of it")
        self.desktop.key("Return")
        self.wait_for_fields("Text Editor", self.application("data", EDITOR))
        # Once there is a title it stays, and Escape changes nothing at all.
        dialog = self.open_list()
        self.desktop.double_click(*dialog.find_all("list item", "Maps")[0].rect.center)
        self.wait_for_fields("Text Editor", self.application("system", "maps.desktop"))
        self.open_list()
        self.desktop.type("mail")
        self.desktop.key("Escape")
        self.wait_for_fields("Text Editor", self.application("system", "maps.desktop"))
        kestrel.finish_form_adding()
        kestrel.wait_for_stored(
            [item(APP, "Text Editor", self.application("system", "maps.desktop"))])

    def test_application_is_chosen_with_the_arrows_and_leaves_a_title_of_spaces(self):
        kestrel = self.start()
        kestrel.set_field("Title", "  ")
        dialog = self.open_list()
        self.desktop.key("Return")      # nothing is selected
        self.desktop.key("Down", "Down", "Up")
        row = dialog.find_all("list item", "Éclair Mail")[0]
        self.wait_until(lambda: "selected" in row.states, "the first application")
        self.desktop.type("ecl")
        self.wait_until(lambda: self.names(dialog) == ["Éclair Mail"], "the one that is sought")
        kestrel.click_on("push button", "Choose")
        self.wait_for_fields("  ", self.application("system", "mail.desktop"))

    def test_application_has_its_name_in_the_users_language(self):
        self.start(translations("de"), LANG="de_DE.UTF-8", LANGUAGE="de")
        dialog = self.open_list()
        self.assertEqual(self.names(dialog), ["Éclair Mail", "Maps", "Texteditor"])
        self.assertTrue(dialog.find_all("push button", "Andere.…"))
        self.desktop.type("xyz")
        self.wait_until(lambda: dialog.find_all("label", "Keine Anwendungen gefunden"),
                        "the word that there is none")
        self.desktop.key("ctrl+a")
        self.desktop.type("editor")
        self.wait_until(lambda: self.names(dialog) == ["Texteditor"], "the one that is sought")
        self.desktop.key("Return")
        self.wait_for_fields("Texteditor", self.application("data", EDITOR))

    def test_other_leads_to_a_dialog_for_executables_and_entries_elsewhere(self):
        kestrel = self.start()
        program = self.desktop.write("home/tool", "#!/bin/sh\n", 0o755)
        notes = self.desktop.write("home/notes", "")
        entry = self.install("home", "org.example.Editor.desktop", "Editor", "Exec=true\n")
        driver = AccessibilityDriver(kestrel)
        driver.browse(None, is_taken=False)
        driver.browse(notes, is_taken=False)
        self.assertEqual(self.fields(), ("", ""))
        driver.browse(entry)
        self.wait_for_fields("Editor", entry)
        self.open_list()
        kestrel.click_on("push button", "Other…")
        kestrel.accessible.find("combo box", "/usr/share/applications")
        self.desktop.click(*kestrel.accessible.find("combo box", "App .*").rect.center)
        self.desktop.key("End", "Return")
        kestrel.accessible.find("combo box", "All files.*")
        driver.name_file(program)
        driver.accept_dialog()
        self.wait_for_fields("Editor", program)

    def test_program_that_quits_while_the_list_shows_ends_at_once(self):
        kestrel = self.start()
        self.open_list()
        self.assertEqual(kestrel.quit(), 0)

    def test_browse_for_a_command_file_starts_on_the_users_desktop_and_names_the_title(self):
        kestrel = self.start()
        script = self.desktop.write("home/Schreibtisch/deploy.command", "#!/bin/sh\n", 0o755)
        other = self.desktop.write("home/other.txt", "")
        driver = AccessibilityDriver(kestrel)
        kestrel.choose_kind(FILE)
        kestrel.click_on("push button", "Browse…")
        kestrel.accessible.find("combo box", re.escape(os.path.dirname(script)))
        driver.cancel_dialog()
        driver.wait_for_dialog(False)
        self.assertEqual((kestrel.field("Title"), kestrel.field("File")), ("", ""))
        for path in (script, other):
            driver.browse(path)
            self.wait_until(lambda: kestrel.field("File") == path, "the path")
            self.assertEqual(kestrel.field("Title"), "deploy")
        kestrel.finish_form_adding()
        kestrel.wait_for_stored([item(FILE, "deploy", other)])
