#!/usr/bin/env python3
"""Tests of tests/desktop/run.py: a test that fails twice has failed."""
import contextlib
import io
import pathlib
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "desktop"))
import run  # noqa: E402

TESTS = """import pathlib
import signal
import unittest
from unittest import mock


class Tries(unittest.TestCase):
    def test_fails_once(self):
        mark = pathlib.Path({folder!r}, "tried")
        was_tried = mark.exists()
        mark.touch()
        self.assertTrue(was_tried)

    def test_fails(self):
        self.fail("always")

    def test_breaks(self):
        raise OSError("always")

    def test_crashes_once(self):
        mark = pathlib.Path({folder!r}, "crashed")
        self.kestrel = mock.Mock()
        self.kestrel.process.status = 0 if mark.exists() else -signal.SIGSEGV
        was_tried = mark.exists()
        mark.touch()
        self.assertTrue(was_tried)

    def test_fails_in_a_part(self):
        with self.subTest("1.5 parts"):
            self.fail("always")

    def test_fails_once_in_a_part(self):
        with self.subTest("1.5 parts"):
            self.test_fails_once()

    def test_crashes_once_in_a_part(self):
        with self.subTest("1.5 parts"):
            self.test_crashes_once()

    def test_passes(self):
        pass

    @unittest.skip("always")
    def test_is_skipped(self):
        pass


class WithoutStart(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        raise OSError("always")

    def test_is_never_started(self):
        pass
"""


class SecondTryTest(unittest.TestCase):
    def outcome(self, *names):
        """The exit status of a run of those tests, and what it printed."""
        folder = self.enterContext(tempfile.TemporaryDirectory())
        # A module of this name is not loaded yet: each folder has another.
        module = "test_of_" + pathlib.Path(folder).name
        pathlib.Path(folder, module + ".py").write_text(TESTS.format(folder=folder), "utf-8")
        self.addCleanup(sys.path.remove, folder)
        output = io.StringIO()
        with contextlib.redirect_stdout(output), contextlib.redirect_stderr(io.StringIO()):
            return run.run_with_second_try(names, folder), output.getvalue()

    def test_passes_when_the_second_try_does_and_says_so(self):
        self.assertEqual(self.outcome("test_fails_once"),
                         (0, "passed at the second try: test_fails_once\n"))
        self.assertEqual(self.outcome("test_fails_once_in_a_part"),
                         (0, "passed at the second try: test_fails_once_in_a_part\n"))

    def test_second_failure_counts(self):
        for name in ("test_fails", "test_breaks", "test_crashes_once", "test_fails_in_a_part",
                     "test_crashes_once_in_a_part", "test_is_never_started"):
            with self.subTest(name):
                self.assertEqual(self.outcome(name), (1, ""))
        self.assertEqual(self.outcome(), (1, "passed at the second try: test_fails_once\n"))

    def test_other_outcomes_are_as_they_were(self):
        self.assertEqual(self.outcome("test_passes"), (0, ""))
        self.assertEqual(self.outcome("test_is_skipped"), (run.SKIPPED, ""))


if __name__ == "__main__":
    unittest.main()
