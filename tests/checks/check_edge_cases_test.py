"""Shows that tools/check_edge_cases.py tells how tests went, and which ones a run may leave out.

    check_edge_cases_test.py BUILD_FOLDER
"""
import pathlib
import subprocess
import sys
import tempfile
import unittest
from xml.etree.ElementTree import Element, ElementTree, SubElement

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))

import check_edge_cases  # noqa: E402


def tests_of_table():
    lines = check_edge_cases.TABLE.read_text(encoding="utf-8").splitlines()
    return [name for _, tests in check_edge_cases.rows(lines) for name in tests]


class EdgeCasesTest(unittest.TestCase):
    """Of the table as it stands, with reports as ctest writes them."""

    @classmethod
    def setUpClass(cls):
        cls.every = check_edge_cases.registered_tests(build)
        cls.long = check_edge_cases.registered_tests(build, "long")
        named = {n for t in tests_of_table() for n in check_edge_cases.matching(t, cls.every)}
        cls.long_case = min(named & cls.long)
        cls.short_case = min(named - cls.long)

    def check(self, ran, *options, failed=()):
        suite = Element("testsuite")
        for name in ran:
            SubElement(suite, "testcase", name=name, status="fail" if name in failed else "run")
        with tempfile.TemporaryDirectory() as folder:
            report = pathlib.Path(folder, "tests.xml")
            ElementTree(suite).write(report)
            done = subprocess.run([sys.executable, ROOT / "tools" / "check_edge_cases.py", build,
                                   "--report", report, *options],
                                  capture_output=True, text=True, check=False, timeout=60)
        return done.returncode, done.stdout

    def assert_faults(self, result, *faults):
        status, output = result
        self.assertEqual(status, 1 if faults else 0, output)
        self.assertEqual([line.partition(": ")[2] for line in output.splitlines()[:-1]],
                         list(faults))

    def test_whole_run_is_right(self):
        self.assert_faults(self.check(self.every))

    def test_failure_is_noticed(self):
        for name, options in ((self.short_case, ["--left-out", "long"]), (self.long_case, [])):
            with self.subTest(name):
                status, output = self.check(self.every, *options, failed=[name])
                self.assertEqual(status, 1)
                self.assertIn(" did not pass", output)

    def test_tests_that_a_run_leaves_out_have_only_to_exist(self):
        ran = self.every - self.long
        self.assert_faults(self.check(ran, "--left-out", "long"))
        status, output = self.check(ran)
        self.assertEqual(status, 1)
        self.assertIn(f"there is no test {self.long_case}\n", output)

    def test_other_test_that_was_not_run_is_noticed(self):
        status, output = self.check(self.every - self.long - {self.short_case}, "--left-out", "long")
        self.assertEqual(status, 1)
        self.assertNotIn(f"there is no test {self.long_case}\n", output)
        self.assertIn("there is no test ", output)


if __name__ == "__main__":
    build = pathlib.Path(sys.argv.pop(1))
    unittest.main()
