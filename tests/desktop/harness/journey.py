"""One journey through the whole program, from its first start to the same list after a restart,
with the stored bytes compared after every step. Each way of working makes it in a test of its own.
"""
import os
import re

from harness.case import DesktopTest
from harness.input_driver import APP, COMMAND, FILE
from harness.program import item, popover_height

DATE = re.compile(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ")


class Journey(DesktopTest):
    """`driver_class` drives the windows; `has_cloud`: whether a cloud folder is there."""

    driver_class = None
    has_cloud = False
    words = {}
    environment = None
    limit = 110

    def run_journey(self):
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
        self.wait_until(lambda: [self.driver.is_enabled(name) for name in ("Edit", "Delete")]
                        == [acts, acts], f"Edit and Delete to be {'' if acts else 'un'}able")
        self.assertTrue(self.driver.is_enabled("Add"))

    def index(self, title):
        return [record["title"] for record in self.items].index(title)

    # The journey.

    def start(self):
        self.start_kestrel(self.environment, self.words)
        self.driver = self.driver_class(self.kestrel)
        return self.driver.open_popover()

    def first_start(self):
        self.items = []
        if self.has_cloud:
            os.makedirs(self.desktop.path("data", "kestrel", "cloud"))
        self.assertEqual(self.start().rect.height, popover_height(0))
        self.kestrel.accessible.find("label", self.kestrel.word("No items yet"))
        self.driver.open_settings()
        for text in ("No items yet",
                     "Add apps, command files, or shell commands to your launcher."):
            self.kestrel.accessible.find("label", re.escape(self.kestrel.word(text)))
        self.assert_toolbar(acts=False)
        self.assert_nothing_stored()

    def open_form(self, button="Add"):
        self.driver.press_button(button)
        self.driver.wait_for_form()

    def refuse_and_trim_titles(self):
        driver = self.driver
        self.open_form(self.kestrel.word("Add First Item"))
        self.assertEqual((driver.field("Title").text, driver.field("App").text), ("", ""))
        for blank in ("", "   "):
            driver.set_text("Title", blank)
            self.assert_stays(lambda: not driver.can_confirm(), 0.2)
        driver.try_to_confirm()
        self.assert_stays(self.kestrel.form_is_open)
        self.assert_nothing_stored()
        driver.set_text("Title", "  Padded title  ")
        driver.confirm()
        self.assert_stored(item(APP, "Padded title"))
        self.assert_toolbar(acts=False)

    def add_each_kind(self):
        """A title of its own comes from the chosen file or application, and only while there is
        none."""
        driver = self.driver
        entry = self.desktop.write("home/Web.Browser.desktop", "[Desktop Entry]\n"
                                   "Type=Application\nName=Web Browser\nExec=true\n")
        notes = self.desktop.write("home/notes.txt", "no application")
        script = self.desktop.write("home/Desktop/deploy.command", "#!/bin/sh\n", 0o755)
        self.open_form()
        for refused in (None, notes):
            driver.browse(refused, is_taken=False)
            self.assertEqual((driver.field("Title").text, driver.field("App").text), ("", ""))
        driver.browse(entry)
        driver.wait_for_text("App", entry)
        driver.wait_for_text("Title", "Web Browser")
        driver.confirm()
        self.assert_stored(item(APP, "Web Browser", entry))

        self.open_form()
        driver.choose_kind(FILE)
        driver.browse(notes)
        driver.wait_for_text("Title", "notes")
        driver.browse(script)
        driver.wait_for_text("File", script)
        driver.wait_for_text("Title", "notes")
        driver.set_text("Title", "Deploy")
        driver.confirm()
        self.assert_stored(item(FILE, "Deploy", script))

        self.open_form()
        driver.fill_in(COMMAND, "Say \"hi\"", " echo \"a/b\\\" && true ")
        driver.confirm()
        self.assert_stored(item(COMMAND, "Say \"hi\"", " echo \"a/b\\\" && true "))
        self.assert_toolbar(acts=False)

    def switch_kinds(self):
        driver = self.driver
        self.open_form()
        driver.fill_in(APP, "Switched", "/opt/switched ")
        driver.fill_in(COMMAND, None, "echo switched")
        driver.choose_kind(FILE)
        driver.wait_for_text("File", "/opt/switched ")
        driver.choose_kind(COMMAND)
        driver.wait_for_text("Command", "echo switched")
        driver.choose_kind(APP)
        driver.wait_for_text("App", "/opt/switched ")
        driver.choose_kind(FILE)
        driver.confirm()
        self.assert_stored(item(FILE, "Switched", "/opt/switched "))
        self.open_form()
        driver.set_text("Title", "Never")
        driver.cancel()
        self.assert_stored()

    def edit_in_every_way(self):
        driver = self.driver
        driver.select("Padded title")
        self.assert_toolbar(acts=True)
        driver.press_button("Edit")
        self.kestrel.accessible.find("label", self.kestrel.word("Edit Item"))
        driver.wait_for_text("Title", "Padded title")
        driver.set_text("Title", "By the toolbar")
        driver.set_text("App", "/opt/padded")
        driver.confirm()
        self.items[0].update(title="By the toolbar", path="/opt/padded")
        self.assert_stored()

        driver.choose_in_menu("Say \"hi\"", "Edit")
        driver.wait_for_text("Command", " echo \"a/b\\\" && true ")
        driver.set_text("Command", "true")
        driver.confirm()
        self.items[3]["command"] = "true"
        self.assert_stored()

        # The item keeps its id and its place; the text of its old kind goes.
        driver.edit_by_gesture("Web Browser")
        driver.wait_for_text("Title", "Web Browser")
        driver.fill_in(COMMAND, "By a gesture", "web --now")
        driver.confirm()
        self.items[1] = item(COMMAND, "By a gesture", "web --now", self.items[1]["id"])
        self.assert_stored()

        driver.choose_in_menu("Deploy", "Edit")
        driver.set_text("Title", "Never")
        driver.cancel()
        self.assert_stored()

    def reorder(self):
        """Each step moves one item down or up; the committed one stays committed."""
        for title, steps in (("By the toolbar", 2), ("Switched", -1), ("By a gesture", 1)):
            self.driver.move(title, steps)
            at = self.index(title)
            self.items.insert(at + steps, self.items.pop(at))
            self.assert_stored()
        self.assert_toolbar(acts=True)

    def delete_in_every_way(self):
        driver = self.driver
        driver.select("Deploy")
        # Another row than the committed one, which stays that.
        driver.kestrel.wait_for_rows([record["title"] for record in self.items])
        self.delete_other("Say \"hi\"", committed="Deploy")
        driver.select("Deploy")
        driver.press_button("Delete")
        del self.items[self.index("Deploy")]
        self.assert_stored()
        self.assert_toolbar(acts=False)
        driver.delete_by_gesture("Switched")
        del self.items[self.index("Switched")]
        self.assert_stored()
        self.assert_toolbar(acts=False)
        driver.select("By a gesture")
        driver.choose_in_menu("By a gesture", "Delete")
        del self.items[self.index("By a gesture")]
        self.assert_stored()
        self.assert_toolbar(acts=False)
        for title in ("Last but one", "Last"):
            self.open_form()
            driver.fill_in(COMMAND, title, f"echo {title}")
            driver.confirm()
            self.assert_stored(item(COMMAND, title, f"echo {title}"))

    def delete_other(self, title, committed):
        """Through its row's menu, deletes an item that is not the committed one."""
        self.driver.choose_in_menu(title, "Delete")
        del self.items[self.index(title)]
        self.assert_stored()
        # The keyboard cannot open the menu of a row without selecting it.
        self.assert_toolbar(acts=not self.driver.menu_selects)
        if not self.driver.menu_selects:
            self.driver.press_button("Edit")
            self.driver.wait_for_text("Title", committed)
            self.driver.cancel()

    def close_and_open_again(self):
        self.driver.select("Last")
        self.driver.close_settings()
        self.assertTrue(self.kestrel.process.is_running)
        self.assertEqual(self.driver.open_popover().rect.height, popover_height(3))
        self.assert_stored()
        self.driver.open_settings()
        self.assert_stored()
        self.assert_toolbar(acts=False)

    def quit_and_start_again(self):
        before = self.kestrel.stored()
        self.driver.open_popover()
        self.driver.quit()
        self.assertEqual(self.kestrel.process.wait(), 0)
        self.assertEqual(self.kestrel.stored(), before)
        self.assertEqual(self.start().rect.height, popover_height(3))
        self.assert_stored()
        self.driver.open_settings()
        self.assert_stored()
        self.assertEqual(self.kestrel.stored(), before)
        with open(self.desktop.path("data", "kestrel", "lastLocalSync"), encoding="ascii") as file:
            self.assertRegex(file.read(), DATE)
        names = sorted(os.listdir(self.desktop.path("data", "kestrel")))
        self.assertEqual(names, [*["cloud"] * self.has_cloud, "lastLocalSync", "launcherItems"])
        if self.has_cloud:
            self.assertEqual(os.listdir(self.desktop.path("data", "kestrel", "cloud")),
                             ["launcherItems"])
