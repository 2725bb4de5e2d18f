#!/usr/bin/env python3
"""Tests of the level of the C library's checking functions (_FORTIFY_SOURCE) in the build that is
installed: ours where nobody has chosen one, else that of the compiler or of the flags, defined once.

    tests/checks/fortify_test.py CMAKE COMPILER
"""
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
LEVEL = re.compile(r"^#define _FORTIFY_SOURCE (\d)$", re.MULTILINE)
# As Ubuntu's does, which defines it for what is optimised.
PREDEFINING = """#!/bin/sh
case " $* " in
    *" -O"*) exec {compiler} -D_FORTIFY_SOURCE=3 "$@" ;;
esac
exec {compiler} "$@"
"""
cmake = compiler = ""


class FortifyTest(unittest.TestCase):
    """`folder` takes a build of the core alone."""

    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory())).resolve()
        self.settings = {"KESTREL_SHELL": "OFF", "CMAKE_CXX_COMPILER": compiler}
        self.environment = {name: value for name, value in os.environ.items()
                            if name not in ("CXX", "CXXFLAGS", "CPPFLAGS")}

    def levels(self):
        """The levels that the build's sources are compiled with. A second definition fails."""
        build = self.folder / "build"
        subprocess.run([cmake, "--preset", "release", "-B", build,
                        *(f"-D{name}={value}" for name, value in self.settings.items())],
                       cwd=ROOT, env=self.environment, stdout=subprocess.DEVNULL, check=True,
                       timeout=100)
        entries = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
        self.assertGreater(len(entries), 10)
        found = set()
        for entry in entries:
            command = shlex.split(entry["command"])
            # The definitions that a file begins with.
            command[command.index("-o"):] = ["-Werror", "-E", "-dM", "-x", "c++", "/dev/null"]
            done = subprocess.run(command, cwd=entry["directory"], env=self.environment,
                                  capture_output=True, text=True, check=False, timeout=20)
            self.assertEqual(done.returncode, 0, done.stderr)
            found.update(LEVEL.findall(done.stdout) or ["none"])
        return found

    def test_ours_where_nobody_has_chosen(self):
        self.assertEqual(self.levels(), {"2"})

    def test_that_of_the_flags(self):
        self.settings["CMAKE_CXX_FLAGS"] = "-D_FORTIFY_SOURCE=3"
        self.assertEqual(self.levels(), {"3"})

    def test_that_of_the_flags_of_the_kind_of_build(self):
        self.settings["CMAKE_CXX_FLAGS_RELEASE"] = "-O2 -Wp,-D_FORTIFY_SOURCE=3"
        self.assertEqual(self.levels(), {"3"})

    def test_that_of_the_environment(self):
        self.environment["CXXFLAGS"] = "-O2 -D_FORTIFY_SOURCE=1"
        self.assertEqual(self.levels(), {"1"})

    def test_that_of_the_compiler(self):
        script = self.folder / "c++"
        script.write_text(PREDEFINING.format(compiler=shlex.quote(compiler)), encoding="utf-8")
        script.chmod(0o755)
        self.settings["CMAKE_CXX_COMPILER"] = script
        self.assertEqual(self.levels(), {"3"})

    def test_flags_that_change_later_count(self):
        self.assertEqual(self.levels(), {"2"})
        self.settings["CMAKE_CXX_FLAGS"] = "-D_FORTIFY_SOURCE=3"
        self.assertEqual(self.levels(), {"3"})


if __name__ == "__main__":
    cmake, compiler = sys.argv[1:3]
    del sys.argv[1:3]
    unittest.main()
