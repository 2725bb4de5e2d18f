#!/usr/bin/env python3
"""Tests of a Mac's build, configured here with a compiler that is never run: everything is compiled
with the right options, and the checks of the sources hold, where neither the tests of this system
nor warnings as errors are, and still find what is wrong there. Exits with 77 without clang.

    tests/checks/as_on_a_mac_test.py BUILD_FOLDER
"""
import json
import pathlib
import plistlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
import check_edge_cases  # noqa: E402

SKIPPED = 77
NOT_BUILT = re.compile(r"^(.+)_NOT_BUILT")
here = pathlib.Path()


def configure_as_on_a_mac(folder):
    """What the preset macos-dev does. CMake would look for a Mac's compiler, tools and system."""
    clang = shutil.which("clang++")
    libraries = subprocess.run(["g++", "-print-multiarch"], capture_output=True, text=True,
                               check=True, timeout=10).stdout.strip()
    settings = {
        "CMAKE_BUILD_TYPE": "RelWithDebInfo", "CMAKE_EXPORT_COMPILE_COMMANDS": "ON",
        "KESTREL_FETCH_DEPENDENCIES": "OFF", "KESTREL_WERROR": "OFF",
        "CMAKE_SYSTEM_NAME": "Darwin", "CMAKE_OSX_SYSROOT": "/",
        "CMAKE_CXX_COMPILER": clang, "CMAKE_CXX_COMPILER_WORKS": "ON",
        "CMAKE_OBJCXX_COMPILER": clang, "CMAKE_OBJCXX_COMPILER_WORKS": "ON",
        "CMAKE_TRY_COMPILE_TARGET_TYPE": "STATIC_LIBRARY",
        "CMAKE_LIBRARY_ARCHITECTURE": libraries, "CMAKE_INSTALL_NAME_TOOL": "/bin/false"}
    subprocess.run(["cmake", "-S", ROOT, "-B", folder, "-G", "Ninja",
                    *(f"-D{name}={value}" for name, value in settings.items())],
                   check=True, stdout=subprocess.DEVNULL, timeout=60)


def listing(build):
    """ctest's list of a build's tests."""
    done = subprocess.run(["ctest", "--test-dir", str(build), "--show-only=json-v1"],
                          capture_output=True, text=True, check=True, timeout=60)
    return json.loads(done.stdout)["tests"]


def names_on_a_mac(build):
    """The tests that `build` registers once it is built. They are known only then: those of its
    test programs are taken from the build of this system, which has the same programs and more."""
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
    """`build` is configured as on a Mac."""

    @classmethod
    def setUpClass(cls):
        cls.build = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        configure_as_on_a_mac(cls.build)
        cls.names = names_on_a_mac(cls.build)
        cls.elsewhere = check_edge_cases.tests_of_other_systems(cls.build)

    def faults(self, test):
        return check_edge_cases.faults_of(row(test), self.names, self.elsewhere)[0]

    def flags(self, build):
        done = subprocess.run([sys.executable, ROOT / "tools" / "check_flags.py", build],
                              capture_output=True, text=True, check=False, timeout=60)
        return done.returncode, done.stdout

    def test_shell_and_its_tests_are_compiled_with_arc(self):
        commands = json.loads((self.build / "compile_commands.json").read_text(encoding="utf-8"))
        compiled = {pathlib.Path(c["file"]): c["command"].split() for c in commands}
        sources = [*(ROOT / "shells" / "macos").rglob("*.mm"),
                   *(ROOT / "tests" / "macos").glob("*.mm")]
        self.assertGreater(len(sources), 30)
        for source in sources:
            with self.subTest(source.relative_to(ROOT)):
                self.assertLessEqual({"-fobjc-arc", "-fobjc-weak", "-std=c++20"},
                                     set(compiled.get(source, ())))

    def test_tests_that_a_mac_builds_need_no_stand_ins(self):
        for source in (ROOT / "tests" / "macos").iterdir():
            with self.subTest(source.name):
                text = source.read_text(encoding="utf-8")
                self.assertNotRegex(text, r"#(include|import).*(macos-check/|macos_standins/)")

    def test_xcode_without_a_team_claims_nothing_that_needs_a_profile(self):
        path = self.build / "shells" / "macos" / "Kestrel.entitlements"
        self.assertEqual(list(plistlib.loads(path.read_bytes())),
                         ["com.apple.security.automation.apple-events"])

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
                     "NoShells/TypedCommandTest.EveryCharacterArrives",
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
    if not shutil.which("clang++"):
        print("SKIPPED: no clang")
        sys.exit(SKIPPED)
    here = pathlib.Path(sys.argv.pop(1))
    unittest.main()
