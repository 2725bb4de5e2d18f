#!/usr/bin/env python3
"""Tests of where warnings are errors: in the builds of those who work on the program, and not for
someone who builds what is installed with a compiler that we have not seen.

    tests/checks/presets_test.py CMAKE
"""
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PRESETS = json.loads((ROOT / "CMakePresets.json").read_text(encoding="utf-8"))
WITH = {"dev", "clang", "asan", "tsan", "fuzz"}
WITHOUT = {"release", "bench", "macos", "macos-xcode", "macos-dev"}
cmake = ""


def variables(preset):
    """What a preset sets, its ancestors' values included."""
    found = {}
    parents = preset.get("inherits", [])
    for parent in [parents] if isinstance(parents, str) else parents:
        found.update(variables(by_name()[parent]))
    found.update(preset.get("cacheVariables", {}))
    return found


def by_name():
    return {preset["name"]: preset for preset in PRESETS["configurePresets"]}


class WarningsAreErrorsTest(unittest.TestCase):
    def test_in_the_builds_for_work_and_no_other(self):
        chosen = {name: variables(preset).get("KESTREL_WERROR", "OFF")
                  for name, preset in by_name().items() if not preset.get("hidden")}
        self.assertEqual(chosen, {**dict.fromkeys(WITH, "ON"), **dict.fromkeys(WITHOUT, "OFF")})

    def test_not_without_a_preset(self):
        with tempfile.TemporaryDirectory() as build:
            subprocess.run([cmake, "-S", ROOT, "-B", build, "-G", "Ninja", "-DKESTREL_SHELL=OFF",
                            "-DKESTREL_TESTS=OFF", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON"],
                           stdout=subprocess.DEVNULL, check=True, timeout=100)
            commands = (pathlib.Path(build) / "compile_commands.json").read_text(encoding="utf-8")
            self.assertRegex(commands, "-Wall")
            self.assertNotRegex(commands, "-Werror")
            cache = (pathlib.Path(build) / "CMakeCache.txt").read_text(encoding="utf-8")
            self.assertTrue(re.search("^KESTREL_WERROR:BOOL=OFF$", cache, re.MULTILINE))


if __name__ == "__main__":
    cmake = sys.argv.pop(1)
    unittest.main()
