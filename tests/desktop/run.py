#!/usr/bin/env python3
"""Runs tests of the running program.

    KESTREL_PROGRAM=build/dev/shells/linux/kestrel tests/desktop/run.py [test_name...]

Without names: all of them. Needs Debian's python3-dbus and python3-gi, thus /usr/bin/python3;
exits with 77 (skipped) where those are missing, or when every test was skipped.
"""
import os
import pathlib
import sys
import unittest

SKIPPED = 77
FOLDER = pathlib.Path(__file__).resolve().parent


class KeepingResult(unittest.TextTestResult):
    """Lets a test that failed leave evidence while its desktop still exists."""

    @staticmethod
    def _keep(test):
        if hasattr(test, "keep_evidence"):
            kept = test.keep_evidence()
            if kept:
                print("the screen:", kept, file=sys.stderr)

    def addError(self, test, err):
        self._keep(test)
        super().addError(test, err)

    def addFailure(self, test, err):
        self._keep(test)
        super().addFailure(test, err)


def flat(suite):
    for test in suite:
        if isinstance(test, unittest.TestSuite):
            yield from flat(test)
        else:
            yield test


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
    tests = [test for test in flat(unittest.TestLoader().discover(str(FOLDER)))
             if not names or test.id().rsplit(".", 1)[-1] in names]
    if len(tests) < max(len(names), 1):
        print("no such test:", *names)
        return 2
    runner = unittest.TextTestRunner(verbosity=2, resultclass=KeepingResult)
    result = runner.run(unittest.TestSuite(tests))
    if not result.wasSuccessful():
        return 1
    return SKIPPED if len(result.skipped) == result.testsRun else 0


if __name__ == "__main__":
    sys.exit(main())
