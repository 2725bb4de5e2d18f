"""What a screen reader finds in each state of the program, compared with written lists."""
from harness.case import DesktopTest
from harness.processes import Timeout, wait_for
from harness.program import item, store_before_start

EMPTY_POPOVER = """
dialog 'Kestrel'
  filler
    filler
      graphic
      label 'No items yet'
      label 'Open Settings to add items.'
    separator
    push button 'Settings' focused
    push button 'Quit'
"""

POPOVER = """
dialog 'Kestrel'
  filler
    list 'Items' focused
      list item 'Alpha' focused selected
      list item 'Beta'
    separator
    push button 'Settings'
    push button 'Quit'
"""

PLACEHOLDER = """
frame 'Kestrel'
  filler
    filler
      filler
        push button 'Add' (Add)
        push button 'Edit' (Edit) disabled
        push button 'Delete' (Delete) disabled
      separator
      filler
        graphic
        label 'No items yet'
        label 'Add apps, command files, or shell commands to your launcher.'
        push button 'Add First Item' \
(Add apps, command files, or shell commands to your launcher.) focused
"""

BEHIND_THE_SHEET = """
frame 'Kestrel'
  filler
    filler disabled
      filler disabled
        push button 'Add' (Add) disabled
        push button 'Edit' (Edit) disabled
        push button 'Delete' (Delete) disabled
      separator disabled
      filler disabled
        graphic disabled
        label 'No items yet' disabled
        label 'Add apps, command files, or shell commands to your launcher.' disabled
        push button 'Add First Item' \
(Add apps, command files, or shell commands to your launcher.) disabled
"""

SHEET_FOR_AN_APP = BEHIND_THE_SHEET + """
    dialog 'Add Item' modal
      filler
        label 'Add Item'
        label 'Title'
        text 'Title' (e.g. Xcode, Deploy Script) focused
        label 'Type'
        panel 'Type'
          radio button 'App' checked
          radio button 'Command File'
          radio button 'Inline Command'
        label 'App'
        text 'App' (/Applications/MyApp.app)
        push button 'Browse…'
        separator
        push button 'Cancel' (Esc)
        push button 'Add' (Ctrl+Return) disabled
"""

SHEET_FOR_A_FILE = BEHIND_THE_SHEET + """
    dialog 'Add Item' modal
      filler
        label 'Add Item'
        label 'Title'
        text 'Title' (e.g. Xcode, Deploy Script)
        label 'Type'
        panel 'Type'
          radio button 'App'
          radio button 'Command File' focused checked
          radio button 'Inline Command'
        label 'File'
        text 'File' (~/Desktop/script.command)
        push button 'Browse…'
        separator
        push button 'Cancel' (Esc)
        push button 'Add' (Ctrl+Return) disabled
"""

SHEET_FOR_A_COMMAND = BEHIND_THE_SHEET + """
    dialog 'Add Item' modal
      filler
        label 'Add Item'
        label 'Title'
        text 'Title' (e.g. Xcode, Deploy Script)
        label 'Type'
        panel 'Type'
          radio button 'App'
          radio button 'Command File'
          radio button 'Inline Command' focused checked
        label 'Command'
        text 'Command' (e.g. open -a Safari)
        separator
        push button 'Cancel' (Esc)
        push button 'Add' (Ctrl+Return) disabled
"""

NO_ROW_SELECTED = """
frame 'Kestrel'
  filler
    filler
      filler
        push button 'Add' (Add)
        push button 'Edit' (Edit) disabled
        push button 'Delete' (Delete) disabled
      separator
      list 'Items' focused
        list item 'Alpha' (Inline Command, ls)
          button menu 'Actions' (Actions)
        list item 'Beta' (App, /opt/beta)
          button menu 'Actions' (Actions)
"""

SECOND_ROW_SELECTED = """
frame 'Kestrel'
  filler
    filler
      filler
        push button 'Add' (Add)
        push button 'Edit' (Edit)
        push button 'Delete' (Delete)
      separator
      list 'Items' focused
        list item 'Alpha' (Inline Command, ls)
          button menu 'Actions' (Actions)
        list item 'Beta' (App, /opt/beta) focused selected
          button menu 'Actions' (Actions)
"""

ROW_MENU_OPEN = SECOND_ROW_SELECTED + """
popup menu
  menu item 'Edit'
  separator disabled
  menu item 'Delete'
"""

SHEET_OF_THE_SECOND_ROW = """
frame 'Kestrel'
  filler
    filler disabled
      filler disabled
        push button 'Add' (Add) disabled
        push button 'Edit' (Edit) disabled
        push button 'Delete' (Delete) disabled
      separator disabled
      list 'Items' disabled
        list item 'Alpha' (Inline Command, ls) disabled
          button menu 'Actions' (Actions) disabled
        list item 'Beta' (App, /opt/beta) selected disabled
          button menu 'Actions' (Actions) disabled
    dialog 'Edit Item' modal
      filler
        label 'Edit Item'
        label 'Title'
        text 'Title' (e.g. Xcode, Deploy Script) focused
        label 'Type'
        panel 'Type'
          radio button 'App' checked
          radio button 'Command File'
          radio button 'Inline Command'
        label 'App'
        text 'App' (/Applications/MyApp.app)
        push button 'Browse…'
        separator
        push button 'Cancel' (Esc)
        push button 'Save' (Ctrl+Return)
"""


class AccessibleTreeTest(DesktopTest):
    """Each state is reached by pointer and keyboard."""

    def assert_tree(self, expected):
        """All windows of the program, once what a screen reader finds there is what is expected."""
        wanted = "\n".join(filter(None, expected.splitlines()))

        def found():
            return "\n".join(application.outline()
                             for application in self.kestrel.accessible.applications()
                             if application.name == "kestrel")
        try:
            wait_for(lambda: found() == wanted)
        except Timeout:
            self.assertEqual(found(), wanted)

    def test_screen_reader_finds_what_the_empty_program_shows(self):
        self.start_desktop(panel="fake")
        kestrel = self.start_kestrel()
        kestrel.open_popover()
        self.assert_tree(EMPTY_POPOVER)
        kestrel.open_settings()
        self.assert_tree(PLACEHOLDER)
        kestrel.click_on("push button", "Add First Item")
        self.assert_tree(SHEET_FOR_AN_APP)
        kestrel.choose_kind("Command File")
        self.assert_tree(SHEET_FOR_A_FILE)
        kestrel.choose_kind("Inline Command")
        self.assert_tree(SHEET_FOR_A_COMMAND)

    def test_screen_reader_finds_what_the_program_with_items_shows(self):
        self.start_desktop(panel="fake")
        store_before_start(self.desktop, [
            item("Inline Command", "Alpha", "ls", "00000000-0000-4000-8000-000000000001"),
            item("App", "Beta", "/opt/beta", "00000000-0000-4000-8000-000000000002")])
        kestrel = self.start_kestrel()
        kestrel.open_popover()
        self.desktop.key("Down")
        self.assert_tree(POPOVER)
        kestrel.open_settings()
        self.assert_tree(NO_ROW_SELECTED)
        kestrel.click_row("Beta")
        self.assert_tree(SECOND_ROW_SELECTED)
        self.desktop.key("Menu")
        self.assert_tree(ROW_MENU_OPEN)
        self.desktop.key("Escape")
        self.assert_tree(SECOND_ROW_SELECTED)
        self.desktop.key("Return")
        self.assert_tree(SHEET_OF_THE_SECOND_ROW)
