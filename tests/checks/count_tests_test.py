#!/usr/bin/env python3
"""Tests of tools/count_tests.py: no test that failed or did not run is lost."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
TOOLS = pathlib.Path(__file__).resolve().parents[2] / "tools"
sys.path.insert(0, str(TOOLS))
import count_tests  # noqa: E402

PASSED = 'status="run"/>'
FAILED = 'status="fail"><failure/><system-out>what it printed</system-out></testcase>'
NOT_RUN = 'status="notrun"><skipped message="Fixture dependency failed"/></testcase>'
SKIPPED = 'status="notrun"><skipped message="SKIP_RETURN_CODE=77"/></testcase>'


class CountTest(unittest.TestCase):
    """`builds` holds the reports of the builds."""

    def setUp(self):
        self.builds = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))

    def report(self, build, **tests):
        """Writes the report of a build: the end of the testcase element by the test's name."""
        (self.builds / build).mkdir()
        cases = "".join(f'<testcase name="{name.replace("_", "-")}" {end}'
                        for name, end in tests.items())
        path = self.builds / build / "tests.xml"
        path.write_text(f"<testsuite>{cases}</testsuite>", encoding="utf-8")
        return path

    def expanded(self, **test):
        """The outcomes that the one test stands for."""
        found, = count_tests.read(self.report("dev", **test))
        return [(t.name, t.outcome) for t in count_tests.expanded(found, self.builds)]

    def run_tool(self, *arguments):
        """Its output's last line, its exit status and all that it printed."""
        done = subprocess.run([sys.executable, TOOLS / "count_tests.py", *arguments],
                              capture_output=True, text=True, timeout=20, check=False)
        return done.stdout.splitlines()[-1], done.returncode, done.stdout

    def test_each_outcome_is_counted(self):
        report = self.report("dev", a=PASSED, b=FAILED, c=NOT_RUN, d=SKIPPED, e=PASSED)
        last, status, output = self.run_tool(report)
        self.assertEqual((last, status), ("2 passed, 2 failed, 1 skipped", 1))
        self.assertIn("what it printed", output)
        self.assertIn("failed: b\nfailed: c\n", output)

    def test_second_try_is_told(self):
        report = self.report("dev", a='status="run"><system-out>noise\npassed at the second try: a\n'
                                      '</system-out></testcase>', b=PASSED)
        last, status, output = self.run_tool(report)
        self.assertEqual((last, status), ("2 passed, 0 failed, 0 skipped", 0))
        self.assertIn("passed at the second try: a\n2 passed", output)

    def test_only_passed_tests_are_a_success(self):
        self.assertEqual(self.run_tool(self.report("dev", a=PASSED, b=SKIPPED))[:2],
                         ("1 passed, 0 failed, 1 skipped", 0))
        self.assertEqual(self.run_tool(self.report("other", a=SKIPPED))[:2],
                         ("0 passed, 0 failed, 1 skipped", 1))

    def test_further_tests_are_counted(self):
        report = self.report("dev", a=PASSED)
        self.assertEqual(self.run_tool("--passed", "b", "--passed", "c", report)[:2],
                         ("3 passed, 0 failed, 0 skipped", 0))
        self.assertEqual(self.run_tool("--failed", "b", report)[:2],
                         ("1 passed, 1 failed, 0 skipped", 1))

    def test_failed_run_counts_unless_a_failed_test_is_in_the_report(self):
        for build, end, last in (("dev", PASSED, "1 passed, 1 failed, 0 skipped"),
                                 ("other", FAILED, "0 passed, 1 failed, 0 skipped")):
            self.assertEqual(self.run_tool("--run-failed", "ctest", self.report(build, a=end))[:2],
                             (last, 1))
        self.assertEqual(self.run_tool("--run-failed", "ctest", self.builds / "none.xml")[:2],
                         ("0 passed, 1 failed, 0 skipped", 1))

    def test_tests_of_a_build_take_the_place_of_the_step_that_ran_them(self):
        self.report("asan", a=PASSED, b=SKIPPED)
        self.assertEqual(self.expanded(asan_tests=PASSED),
                         [("asan: a", "passed"), ("asan: b", "skipped")])

    def test_step_that_failed_counts_unless_a_failed_test_is_in_its_report(self):
        self.report("asan", a=PASSED)
        self.assertEqual(self.expanded(asan_tests=FAILED),
                         [("asan: a", "passed"), ("asan-tests", "failed")])

    def test_step_whose_test_failed_does_not_count_twice(self):
        self.report("asan", a=FAILED)
        self.assertEqual(self.expanded(asan_tests=FAILED), [("asan: a", "failed")])

    def test_step_without_a_report_has_failed(self):
        self.assertEqual(self.expanded(asan_tests=PASSED), [("asan-tests", "failed")])

    def test_report_that_is_cut_off_holds_no_tests(self):
        report = self.report("asan", a=PASSED)
        report.write_bytes(report.read_bytes()[:-5])
        self.assertEqual(self.expanded(asan_tests=NOT_RUN), [("asan-tests", "failed")])


if __name__ == "__main__":
    unittest.main()
