#!/usr/bin/env python3
"""Tests that two clones at different paths and times give the same bytes, by what could tell them
apart: the program's resources and a library of the core.

    tests/checks/same_bytes_test.py CMAKE
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
COPIED = ("CMakeLists.txt", "CMakePresets.json", "cmake", "src", "shells", "packaging")
LIBRARY = "src/actions/libkestrel_actions.a"
RESOURCES = ("shells/linux/.rcc/qrc_translations.cpp", "shells/linux/.rcc/qrc_icon_index.cpp")
COMMENT = re.compile(rb"^ *//.*$", re.MULTILINE)
cmake = ""


def clone(folder, seconds):
    """A copy of the sources, of which every file is of that time."""
    folder.mkdir()
    for name in COPIED:
        copy = shutil.copytree if (ROOT / name).is_dir() else shutil.copy
        copy(ROOT / name, folder / name)
    for path in folder.rglob("*"):
        os.utime(path, (seconds, seconds))


def build(folder):
    """Makes the resources and the library; (their files, by their names)."""
    made = folder / "build"
    subprocess.run([cmake, "--preset", "release", "-B", made, "-DCCACHE_PROGRAM="], cwd=folder,
                   stdout=subprocess.DEVNULL, check=True, timeout=300)
    subprocess.run([cmake, "--build", made, "-j2", "--target", LIBRARY, *RESOURCES], cwd=folder,
                   stdout=subprocess.DEVNULL, check=True, timeout=600)
    # Its target would have all libraries built first.
    info, = made.glob("shells/linux/CMakeFiles/*/AutoRcc_kestrel_*_Info.json")
    subprocess.run([cmake, "-E", "cmake_autorcc", info, "Release"], stdout=subprocess.DEVNULL,
                   check=True, timeout=60)
    drawings, = made.glob("shells/linux/*_autogen/*/qrc_kestrel.cpp")
    names = (LIBRARY, *RESOURCES, drawings.relative_to(made))
    # The comments of the resources say where the files were; the compiler does not read them.
    return {str(name): COMMENT.sub(b"", (made / name).read_bytes()) for name in names}


class SameBytesTest(unittest.TestCase):
    def test_of_two_clones(self):
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory())).resolve()
        made = []
        for name, seconds in (("first", 1_600_000_000), ("another-and-longer", 1_700_000_000)):
            clone(folder / name, seconds)
            made.append(build(folder / name))
        self.assertEqual(made[0].keys(), made[1].keys())
        for name, content in made[0].items():
            with self.subTest(name):
                self.assertTrue(content == made[1][name], "not the same bytes")
                self.assertNotIn(str(folder).encode(), content)


if __name__ == "__main__":
    cmake = sys.argv.pop(1)
    unittest.main()
