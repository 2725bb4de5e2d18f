#!/usr/bin/env python3
"""Runs tests of the running program.

    KESTREL_PROGRAM=build/dev/shells/linux/kestrel tests/desktop/run.py [test_name...]

Without names: all of them. Needs Debian's python3-dbus and python3-gi, thus /usr/bin/python3;
exits with 77 (skipped) where those are missing, or when every test was skipped.

A test that fails is tried once more, on a desktop of its own again: panels, shells and compositors
that a stalled machine holds up at the wrong moment fail without any fault of the program's. What
needed a second try is told with a line that tools/count_tests.py repeats at the end. A crash of the
program and what a sanitizer found in it are its faults: they have no second try.
"""
import os
import pathlib
import signal
import sys
import unittest

SKIPPED = 77
SECOND_TRY = "passed at the second try:"
CRASHES = {-signal.SIGSEGV, -signal.SIGABRT, -signal.SIGBUS, -signal.SIGILL, -signal.SIGFPE,
           -signal.SIGTRAP}
FOLDER = pathlib.Path(__file__).resolve().parent


class KeepingResult(unittest.TextTestResult):
    """Lets a test that failed leave evidence while its desktop still exists. `faults`: the names of
    the tests in which the program crashed or a sanitizer found something."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.faults = set()

    def _keep(self, test, error):
        kestrel = getattr(test, "kestrel", None)
        if kestrel and kestrel.process.status in CRASHES or "Sanitizer" in str(error):
            self.faults.add(name_of(test))
        if hasattr(test, "keep_evidence"):
            kept = test.keep_evidence()
            if kept:
                print("the screen:", kept, file=sys.stderr)

    def addError(self, test, err):
        self._keep(test, err[1])
        super().addError(test, err)

    def addFailure(self, test, err):
        self._keep(test, err[1])
        super().addFailure(test, err)

    def addSubTest(self, test, subtest, err):
        if err:
            self._keep(test, err[1])
        super().addSubTest(test, subtest, err)


def flat(suite):
    for test in suite:
        if isinstance(test, unittest.TestSuite):
            yield from flat(test)
        else:
            yield test


def name_of(test):
    """The name of a test, also of one that a part (`subTest`) belongs to."""
    return getattr(test, "test_case", test).id().rsplit(".", 1)[-1]


def load(names, folder=FOLDER):
    """The tests with those names; without names, all."""
    tests = flat(unittest.TestLoader().discover(str(folder)))
    return [test for test in tests if not names or name_of(test) in names]


def run(tests):
    runner = unittest.TextTestRunner(verbosity=2, resultclass=KeepingResult)
    return runner.run(unittest.TestSuite(tests))


def failures(result):
    return {name_of(test) for test, _ in result.failures + result.errors}


def run_with_second_try(names, folder=FOLDER):
    """The exit status of the tests with those names."""
    result = run(load(names, folder))
    failed = failures(result)
    again = load(failed - result.faults, folder) if failed - result.faults else []
    if again:
        tried = {name_of(test) for test in again}
        failed = failed - tried | failures(run(again))
        for name in sorted(tried - failed):
            print(SECOND_TRY, name)
    if failed or result.unexpectedSuccesses:
        return 1
    return SKIPPED if len(result.skipped) == result.testsRun else 0


def main():
    try:
        import dbus  # noqa: F401
        import gi    # noqa: F401
    except ImportError as error:
        print(f"skipped: {error}")
        return SKIPPED
    if "KESTREL_PROGRAM" not in os.environ:
        print("KESTREL_PROGRAM does not say which program to test")
        return 2
    os.environ["KESTREL_PROGRAM"] = os.path.abspath(os.environ["KESTREL_PROGRAM"])
    names = sys.argv[1:]
    found = load(names)
    if len(found) < max(len(names), 1):
        print("no such test:", *names)
        return 2
    return run_with_second_try(names)


if __name__ == "__main__":
    sys.exit(main())
