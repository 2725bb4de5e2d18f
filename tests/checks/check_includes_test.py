#!/usr/bin/env python3
"""Tests of tools/check_includes.py: it finds what a folder may not include."""
import pathlib
import sys
import unittest

sys.dont_write_bytecode = True
ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
import check_includes  # noqa: E402


def core_fault(file, target, bracket='"'):
    return check_includes.fault_of_core_include(ROOT / "src" / file, bracket, target)


def shell_fault(file, target, bracket='"'):
    return check_includes.fault_of_shell_include(ROOT / "shells" / file, bracket, target)


class CheckIncludesTest(unittest.TestCase):
    def test_the_core_includes_only_what_stands_left_of_a_folder(self):
        self.assertIsNone(core_fault("store/item_list.h", "model/launcher_item.h"))
        self.assertIn("right", core_fault("model/uuid.h", "store/item_list.h"))

    def test_the_core_includes_no_toolkit(self):
        self.assertIn("toolkit", core_fault("app/app_delegate.h", "QWidget", "<"))

    def test_a_shell_includes_only_what_stands_left_of_a_folder(self):
        self.assertIsNone(shell_fault("linux/views/badge.h", "shells/linux/views/kit/painting.h"))
        self.assertIsNone(shell_fault("linux/shell.h", "shells/linux/views/badge.h"))
        for file, target in (("linux/views/kit/painting.h", "shells/linux/views/badge.h"),
                             ("linux/posix/descriptor.h", "shells/linux/storage/file_store.h"),
                             ("linux/desktop/x11.h", "shells/linux/shell.h"),
                             ("macos/desktop/popover.h", "shells/macos/views/kit/text_label.h")):
            self.assertIn("right", shell_fault(file, target), file)

    def test_a_folder_without_a_place_in_the_order_is_a_fault(self):
        self.assertIn("SHELL_ORDER", shell_fault("linux/attic/old.h", "shells/linux/shell.h"))
        self.assertIn("SHELL_ORDER", shell_fault("linux/shell.h", "shells/linux/attic/old.h"))

    def test_no_shell_includes_another(self):
        self.assertIn("another", shell_fault("linux/shell.h", "shells/macos/ports.h"))

    def test_the_program_includes_nothing_of_its_tests(self):
        self.assertIn("tests", shell_fault("linux/shell.h", "tests/fakes/call_log.h"))


if __name__ == "__main__":
    unittest.main()
