"""One journey through the whole program, from its first start to the same list after a restart,
with the stored bytes compared after every step. Each way of working makes it in a test of its own.
"""
import os
import re

from case import DesktopTest
from hands import APP, COMMAND, FILE
from program import item, popover_height

DATE = re.compile(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ")


class Journey(DesktopTest):
    """`hands_class` is the way of working, and `has_cloud` says whether a cloud folder is there."""

    hands_class = None
    has_cloud = False
    words = {}
    environment = None
    limit = 110

    def travel(self):
        self.first_start()
        self.refuse_and_trim_titles()
        self.add_each_kind()
        self.switch_kinds()
        self.edit_in_every_way()
        self.reorder()
        self.delete_in_every_way()
        self.close_and_open_again()
        self.quit_and_start_again()

    # What is compared.

    def assert_stored(self, *changed):
        """The stores hold the bytes of `self.items`, to which `changed` is appended first."""
        self.items = self.kestrel.wait_for_stored([*self.items, *changed])
        self.kestrel.wait_for_rows([record["title"] for record in self.items])

    def assert_nothing_stored(self):
        """No file is there yet."""
        folder = self.desktop.path("data", "kestrel")
        found = sorted(os.path.relpath(os.path.join(place, name), folder)
                       for place, _, names in os.walk(folder) for name in names)
        self.assertEqual(found, [])

    def assert_toolbar(self, acts):
        """Edit and Delete react exactly when an item is committed; Add always does."""
        self.wait_until(lambda: [self.hands.is_enabled(name) for name in ("Edit", "Delete")]
                        == [acts, acts], f"Edit and Delete to be {'' if acts else 'un'}able")
        self.assertTrue(self.hands.is_enabled("Add"))

    def index(self, title):
        return [record["title"] for record in self.items].index(title)

    # The journey.

    def start(self):
        self.start_kestrel(self.environment, self.words)
        self.hands = self.hands_class(self.kestrel)
        return self.hands.open_popover()

    def first_start(self):
        self.items = []
        if self.has_cloud:
            os.makedirs(self.desktop.path("data", "kestrel", "cloud"))
        self.assertEqual(self.start().rect.height, popover_height(0))
        self.kestrel.accessible.find("label", "No items yet")
        self.hands.open_settings()
        for text in ("No items yet",
                     "Add apps, command files, or shell commands to your launcher."):
            self.kestrel.accessible.find("label", re.escape(self.kestrel.word(text)))
        self.assert_toolbar(acts=False)
        self.assert_nothing_stored()

    def open_form(self, button="Add"):
        self.hands.press_button(button)
        self.hands.wait_for_form()

    def refuse_and_trim_titles(self):
        hands = self.hands
        self.open_form(self.kestrel.word("Add First Item"))
        self.assertEqual((hands.field("Title").text, hands.field("App").text), ("", ""))
        for blank in ("", "   "):
            hands.set_text("Title", blank)
            self.assert_stays(lambda: not hands.can_confirm(), 0.2)
        hands.try_to_confirm()
        self.assert_stays(self.kestrel.form_is_open)
        self.assert_nothing_stored()
        hands.set_text("Title", "  Padded title  ")
        hands.confirm()
        self.assert_stored(item(APP, "Padded title"))
        self.assert_toolbar(acts=False)

    def add_each_kind(self):
        """A title of its own comes from the chosen file, and only while there is none."""
        hands = self.hands
        entry = self.desktop.write("home/Web.Browser.desktop", "[Desktop Entry]\n"
                                   "Type=Application\nName=Any\nExec=true\n")
        notes = self.desktop.write("home/notes.txt", "no application")
        script = self.desktop.write("home/Desktop/deploy.command", "#!/bin/sh\n", 0o755)
        self.open_form()
        for refused in (None, notes):
            hands.browse(refused, is_taken=False)
            self.assertEqual((hands.field("Title").text, hands.field("App").text), ("", ""))
        hands.browse(entry)
        hands.wait_for_text("App", entry)
        hands.wait_for_text("Title", "Web.Browser")
        hands.confirm()
        self.assert_stored(item(APP, "Web.Browser", entry))

        self.open_form()
        hands.choose_kind(FILE)
        hands.browse(notes)
        hands.wait_for_text("Title", "notes")
        hands.browse(script)
        hands.wait_for_text("File", script)
        hands.wait_for_text("Title", "notes")
        hands.set_text("Title", "Deploy")
        hands.confirm()
        self.assert_stored(item(FILE, "Deploy", script))

        self.open_form()
        hands.fill_in(COMMAND, "Say \"hi\"", " echo \"a/b\\\" && true ")
        hands.confirm()
        self.assert_stored(item(COMMAND, "Say \"hi\"", " echo \"a/b\\\" && true "))
        self.assert_toolbar(acts=False)

    def switch_kinds(self):
        hands = self.hands
        self.open_form()
        hands.fill_in(APP, "Switched", "/opt/switched ")
        hands.fill_in(COMMAND, None, "echo switched")
        hands.choose_kind(FILE)
        hands.wait_for_text("File", "/opt/switched ")
        hands.choose_kind(COMMAND)
        hands.wait_for_text("Command", "echo switched")
        hands.choose_kind(APP)
        hands.wait_for_text("App", "/opt/switched ")
        hands.choose_kind(FILE)
        hands.confirm()
        self.assert_stored(item(FILE, "Switched", "/opt/switched "))
        self.open_form()
        hands.set_text("Title", "Never")
        hands.cancel()
        self.assert_stored()

    def edit_in_every_way(self):
        hands = self.hands
        hands.select("Padded title")
        self.assert_toolbar(acts=True)
        hands.press_button("Edit")
        self.kestrel.accessible.find("label", self.kestrel.word("Edit Item"))
        hands.wait_for_text("Title", "Padded title")
        hands.set_text("Title", "By the toolbar")
        hands.set_text("App", "/opt/padded")
        hands.confirm()
        self.items[0].update(title="By the toolbar", path="/opt/padded")
        self.assert_stored()

        hands.choose_in_menu("Say \"hi\"", "Edit")
        hands.wait_for_text("Command", " echo \"a/b\\\" && true ")
        hands.set_text("Command", "true")
        hands.confirm()
        self.items[3]["command"] = "true"
        self.assert_stored()

        # The item keeps its id and its place; the text of its old kind goes.
        hands.edit_by_gesture("Web.Browser")
        hands.wait_for_text("Title", "Web.Browser")
        hands.fill_in(COMMAND, "By a gesture", "web --now")
        hands.confirm()
        self.items[1] = item(COMMAND, "By a gesture", "web --now", self.items[1]["id"])
        self.assert_stored()

        hands.choose_in_menu("Deploy", "Edit")
        hands.set_text("Title", "Never")
        hands.cancel()
        self.assert_stored()

    def reorder(self):
        """Each step moves one item down or up; the committed one stays committed."""
        for title, steps in (("By the toolbar", 2), ("Switched", -1), ("By a gesture", 1)):
            self.hands.move(title, steps)
            at = self.index(title)
            self.items.insert(at + steps, self.items.pop(at))
            self.assert_stored()
        self.assert_toolbar(acts=True)

    def delete_in_every_way(self):
        hands = self.hands
        hands.select("Deploy")
        # Another row than the committed one, which stays that.
        hands.kestrel.wait_for_rows([record["title"] for record in self.items])
        self.delete_other("Say \"hi\"", committed="Deploy")
        hands.select("Deploy")
        hands.press_button("Delete")
        del self.items[self.index("Deploy")]
        self.assert_stored()
        self.assert_toolbar(acts=False)
        hands.delete_by_gesture("Switched")
        del self.items[self.index("Switched")]
        self.assert_stored()
        self.assert_toolbar(acts=False)
        hands.select("By a gesture")
        hands.choose_in_menu("By a gesture", "Delete")
        del self.items[self.index("By a gesture")]
        self.assert_stored()
        self.assert_toolbar(acts=False)
        for title in ("Last but one", "Last"):
            self.open_form()
            hands.fill_in(COMMAND, title, f"echo {title}")
            hands.confirm()
            self.assert_stored(item(COMMAND, title, f"echo {title}"))

    def delete_other(self, title, committed):
        """Through its row's menu, deletes an item that is not the committed one."""
        self.hands.choose_in_menu(title, "Delete")
        del self.items[self.index(title)]
        self.assert_stored()
        # The keyboard cannot open the menu of a row without selecting it.
        self.assert_toolbar(acts=not self.hands.menu_selects)
        if not self.hands.menu_selects:
            self.hands.press_button("Edit")
            self.hands.wait_for_text("Title", committed)
            self.hands.cancel()

    def close_and_open_again(self):
        self.hands.select("Last")
        self.hands.close_settings()
        self.assertTrue(self.kestrel.process.is_running)
        self.assertEqual(self.hands.open_popover().rect.height, popover_height(3))
        self.assert_stored()
        self.hands.open_settings()
        self.assert_stored()
        self.assert_toolbar(acts=False)

    def quit_and_start_again(self):
        before = self.kestrel.stored()
        self.hands.open_popover()
        self.hands.quit()
        self.assertEqual(self.kestrel.process.wait(), 0)
        self.assertEqual(self.kestrel.stored(), before)
        self.assertEqual(self.start().rect.height, popover_height(3))
        self.assert_stored()
        self.hands.open_settings()
        self.assert_stored()
        self.assertEqual(self.kestrel.stored(), before)
        with open(self.desktop.path("data", "kestrel", "lastLocalSync"), encoding="ascii") as file:
            self.assertRegex(file.read(), DATE)
        names = sorted(os.listdir(self.desktop.path("data", "kestrel")))
        self.assertEqual(names, [*["cloud"] * self.has_cloud, "lastLocalSync", "launcherItems"])
        if self.has_cloud:
            self.assertEqual(os.listdir(self.desktop.path("data", "kestrel", "cloud")),
                             ["launcherItems"])
