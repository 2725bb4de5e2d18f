"""Folders that do not answer, as on a network that is down: what the program does meanwhile."""
import os

from harness.program import encoded, item, popover_height
from harness.stored_lists import StoredListsTest, list_of


class SilentFoldersTest(StoredListsTest):
    """Calls on files in a folder wait until it is released."""

    def start_with_silence(self, folder, **options):
        """The program, for which the folder does not answer from the start."""
        self.listen().hold(folder)
        return self.start_kestrel(prepare=self.calls.prepare, **options)

    def open_by_click(self, rows):
        """A click on the icon opens the popover with that many rows, however often."""
        for _ in range(3):
            self.desktop.click(*self.desktop.icon_rect().center)
            window = self.kestrel.wait_for_popover()
            self.assertEqual(window.rect.height, popover_height(rows))
            self.desktop.click(*self.desktop.icon_rect().center)
            self.kestrel.wait_for_no_popover()

    def wait_for_silence(self):
        self.wait_until(lambda: self.calls.waiting > 0, "a call that waits")

    def test_popover_opens_while_a_folder_of_programs_does_not_answer(self):
        self.start_desktop(panel="fake", panel_options=["--bar=dock"])
        commands = encoded([item("Inline Command", name, "true",
                                 f"00000000-0000-4000-8000-00000000000{i}")
                            for i, name in enumerate(("One", "Two"))])
        self.store(local=commands)
        silent = self.desktop.path("data", "bin")
        os.mkdir(silent)
        self.start_with_silence(silent, environment={
            "PATH": f"{silent}:{os.environ['PATH']}", "TERMINAL": "xterm"})
        self.open_by_click(rows=2)
        self.wait_for_silence()
        self.open_by_click(rows=2)
        self.assertEqual(self.calls.waiting, 1, "one search for both rows")
        self.kestrel.open_popover()
        symbols = self.popover_image()
        self.calls.release()
        self.wait_until(lambda: self.popover_image() != symbols, "the terminal's icon")

    def popover_image(self):
        return self.desktop.screenshot().cut(self.kestrel.popover().rect)

    def test_local_list_is_there_while_the_cloud_folder_does_not_answer(self):
        self.start_desktop(panel="fake", panel_options=["--bar=dock"])
        self.store(local=list_of("ab"), cloud=list_of("xyz"))
        self.start_with_silence(os.path.dirname(self.cloud))
        self.open_by_click(rows=2)
        self.wait_for_silence()
        self.open_settings()
        self.kestrel.wait_for_rows(["a", "b"])
        self.swap_first("ab")
        self.wait_until(lambda: self.read(self.local) == list_of("ba"), "the save")
        self.assertEqual(self.read(self.cloud), list_of("xyz"))
        self.calls.release()
        self.kestrel.wait_for_rows(["x", "y", "z"])
        self.wait_until(lambda: self.read(self.local) == list_of("xyz"), "the cloud's list here")

    def test_saves_reach_a_cloud_folder_that_has_fallen_silent_when_it_answers(self):
        self.start_desktop(panel="fake", panel_options=["--bar=dock"])
        self.store(local=list_of("abc"), cloud=list_of("abc"))
        self.listen()
        self.start_kestrel(prepare=self.calls.prepare)
        self.open_settings()
        self.kestrel.wait_for_rows(["a", "b", "c"])
        self.calls.hold(os.path.dirname(self.cloud))
        self.swap_first("abc")
        self.wait_for_silence()
        self.swap_last("bac")
        self.wait_until(lambda: self.read(self.local) == list_of("bca"), "the second save")
        self.assertEqual(self.read(self.cloud), list_of("abc"))
        self.open_by_click(rows=3)
        self.calls.release()
        self.wait_until(lambda: self.read(self.cloud) == list_of("bca"), "the save in the cloud")
        self.kestrel.wait_for_rows(["b", "c", "a"])
        self.wait_until(lambda: not self.leftovers(), "no file to be left over")

    def test_program_ends_while_the_cloud_folder_does_not_answer(self):
        self.start_desktop(panel="fake", panel_options=["--bar=dock"])
        self.store(local=list_of("ab"), cloud=list_of("xyz"))
        self.start_with_silence(os.path.dirname(self.cloud))
        self.activate()
        self.wait_for_silence()
        self.assertEqual(self.kestrel.quit(), 0)
