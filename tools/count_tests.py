#!/usr/bin/env python3
"""Tells which tests failed, each with its last lines, and how many passed, failed and were skipped,
from the JUnit report that ctest wrote. What passed only at a second try is told too.

    tools/count_tests.py [options] REPORT.xml

The last line is "N passed, N failed, N skipped", and the exit status 0 only when something passed
and nothing failed. A test that could not be started (its program was not built, a fixture failed)
has failed. A test PRESET-tests stands for the tests of that preset's build, whose report is in the
build's folder.
"""
import argparse
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree
from typing import NamedTuple

BUILDS = pathlib.Path(__file__).resolve().parent.parent / "build"


class Test(NamedTuple):
    """`outcome` is "passed", "failed" or "skipped"; `output` is what it printed."""

    name: str
    outcome: str
    output: str = ""


def outcome(case):
    """The outcome of one testcase element."""
    status = case.get("status")
    if status == "run":
        return "passed"
    if status == "disabled":
        return "skipped"
    reason = case.find("skipped")
    message = "" if reason is None else reason.get("message", "")
    return "skipped" if message.startswith("SKIP_") else "failed"


def read(report):
    """The tests of one report; of one that is missing or cut off: none."""
    try:
        cases = ElementTree.parse(report).getroot().iter("testcase")
        return [Test(case.get("name"), outcome(case), case.findtext("system-out") or "")
                for case in cases]
    except (OSError, ElementTree.ParseError):
        return []


def outcomes(report):
    """The outcomes of one report by the tests' names."""
    return {test.name: test.outcome for test in read(report)}


def second_tries(tests):
    """What the tests say of those that failed and then passed (tests/desktop/run.py)."""
    return [line for test in tests for line in test.output.splitlines()
            if line.startswith("passed at the second try:")]


def has_failed(tests):
    return any(test.outcome == "failed" for test in tests)


def expanded(test, builds=BUILDS):
    """The tests that a test stands for. It counts itself when it failed and none of them did: ctest
    also fails for what is not in its report, a timeout for one."""
    preset = re.fullmatch(r"(\w+)-tests", test.name)
    if not preset:
        return [test]
    tests = [inner._replace(name=f"{preset[1]}: {inner.name}")
             for inner in read(builds / preset[1] / "tests.xml")]
    if not tests or test.outcome == "failed" and not has_failed(tests):
        tests.append(test._replace(outcome="failed"))
    return tests


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("report", type=pathlib.Path)
    for option, text in (("passed", "a further test, which passed"),
                         ("failed", "a further test, which failed"),
                         ("run-failed", "the run that wrote the report failed: counts as a test "
                                        "unless a failed one is in the report")):
        parser.add_argument("--" + option, metavar="NAME", action="append", default=[], help=text)
    options = parser.parse_args()

    tests = [inner for test in read(options.report) for inner in expanded(test)]
    if not has_failed(tests):
        options.failed += options.run_failed
    tests += [Test(name, "passed") for name in options.passed]
    tests += [Test(name, "failed") for name in options.failed]
    for test in tests:
        if test.outcome == "failed":
            print("-- failed:", test.name, *test.output.splitlines()[-60:], sep="\n")
    for line in second_tries(tests):
        print(line)
    for test in tests:
        if test.outcome == "failed":
            print("failed:", test.name)
    kinds = ("passed", "failed", "skipped")
    counts = {kind: sum(test.outcome == kind for test in tests) for kind in kinds}
    print(", ".join(f"{counts[kind]} {kind}" for kind in kinds))
    return 0 if counts["passed"] and not counts["failed"] else 1


if __name__ == "__main__":
    sys.exit(main())
