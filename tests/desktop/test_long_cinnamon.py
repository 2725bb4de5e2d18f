"""Cinnamon, whose own panel shows the icon."""
import shutil
import unittest

from harness.cinnamon import Cinnamon
from harness.shell_case import ShellTest


@unittest.skipUnless(shutil.which("cinnamon"), "no Cinnamon")
class CinnamonTest(ShellTest):
    """On X11."""

    empty_part = 0.5

    def window_titles(self):
        return self.desktop.window_list(self.kestrel.process.pid)

    def test_icon_and_popover_in_cinnamon(self):
        self.start_session(Cinnamon())
        self.start_program()
        self.find_icon()
        self.assert_six_clicks()
        editor = self.open_editor()
        self.assert_keyboard_is_the_popovers(editor)
        self.assert_closes_by_clicks(self.place_in("Editor"), self.elsewhere(),
                                     self.empty_place_on_the_bar())
        self.assert_opens_at_a_second_start()
        self.assert_other_buttons_do_nothing()
        self.assert_only_the_settings_are_listed()
        self.desktop.restart_shell()
        self.assert_comes_back()
