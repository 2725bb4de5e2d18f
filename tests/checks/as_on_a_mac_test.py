#!/usr/bin/env python3
"""Tests that the checks of the sources hold in a Mac's build, where neither the tests of this system
nor warnings as errors are, and that they still find what is wrong there.

    tests/checks/as_on_a_mac_test.py BUILD_FOLDER
"""
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
import check_edge_cases  # noqa: E402
import check_libcxx  # noqa: E402

NOT_BUILT = re.compile(r"^(.+)_NOT_BUILT")
here = pathlib.Path()


def listing(build):
    """ctest's list of a build's tests."""
    done = subprocess.run(["ctest", "--test-dir", str(build), "--show-only=json-v1"],
                          capture_output=True, text=True, check=True, timeout=60)
    return json.loads(done.stdout)["tests"]


def names_on_a_mac(build):
    """The tests that `build` registers once it is built. They are known only then: those of its test
    programs are taken from the build of this system, which has the same programs and more."""
    names, programs = set(), set()
    for test in listing(build):
        if not_built := NOT_BUILT.match(test["name"]):
            programs.add(not_built[1])
        else:
            names.add(test["name"])
    for test in listing(here):
        if pathlib.Path(test.get("command", [""])[0]).name in programs:
            names.add(test["name"])
    return names


def row(test):
    """A table with that test."""
    return ["# Cases (1 case)", "| case | test |", "|---|---|", f"| a case | `{test}` |"]


class MacBuildTest(unittest.TestCase):
    """`build` is configured as on a Mac, without its shell."""

    @classmethod
    def setUpClass(cls):
        cls.build = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        check_libcxx.configure_as_on_a_mac(cls.build)
        cls.names = names_on_a_mac(cls.build)
        cls.elsewhere = check_edge_cases.tests_of_other_systems(cls.build)

    def faults(self, test):
        return check_edge_cases.faults_of(row(test), self.names, self.elsewhere)[0]

    def flags(self, build):
        done = subprocess.run([sys.executable, ROOT / "tools" / "check_flags.py", build],
                              capture_output=True, text=True, check=False, timeout=60)
        return done.returncode, done.stdout

    def test_flags_are_right(self):
        status, output = self.flags(self.build)
        self.assertEqual(status, 0, output)

    def test_warnings_that_should_be_errors_are_noticed(self):
        for was, now, fault in (("OFF", "ON", "without -Werror"), ("ON", "OFF", "no -Werror")):
            with self.subTest(now), tempfile.TemporaryDirectory() as folder:
                copy = pathlib.Path(folder)
                commands = (self.build / "compile_commands.json").read_text(encoding="utf-8")
                if was == "ON":
                    commands = commands.replace(" -Wall ", " -Wall -Werror ")
                (copy / "compile_commands.json").write_text(commands, encoding="utf-8")
                (copy / "CMakeCache.txt").write_text(f"KESTREL_WERROR:BOOL={now}\n", "ascii")
                status, output = self.flags(copy)
                self.assertEqual(status, 1)
                self.assertIn(fault, output)

    def test_edge_cases_of_other_systems_are_passed_over(self):
        self.assertGreater(len(self.names), 300)
        lines = check_edge_cases.TABLE.read_text(encoding="utf-8").splitlines()
        self.assertEqual(check_edge_cases.faults_of(lines, self.names, self.elsewhere)[0], [])
        self.assertNotEqual(check_edge_cases.faults_of(lines, self.names, set())[0], [],
                            "the table names no test of another system: nothing was shown")

    def test_misspelt_names_are_noticed_on_every_system(self):
        for test in ("desktop:test_no_such_thing", "CloudWatcherTest.NoSuchThing",
                     "ItemListJsonTest.NoSuchThing", "check:no_such_thing"):
            with self.subTest(test):
                self.assertEqual(self.faults(test), [f"line 4: there is no test {test}"])

    def test_test_of_this_build_that_is_not_registered_is_noticed(self):
        source = ROOT / "tests" / "model" / "uuid_test.cpp"
        name = ".".join(check_edge_cases.TEST.search(source.read_text(encoding="utf-8")).groups())
        lines = row(name)
        self.assertEqual(check_edge_cases.faults_of(lines, {name}, self.elsewhere)[0], [])
        self.assertEqual(check_edge_cases.faults_of(lines, set(), self.elsewhere)[0],
                         [f"line 4: there is no test {name}"])


if __name__ == "__main__":
    here = pathlib.Path(sys.argv.pop(1))
    unittest.main()
