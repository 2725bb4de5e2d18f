#!/usr/bin/env python3
"""Prints how many tests passed, failed and were skipped, from the JUnit reports that ctest wrote.

    tools/count_tests.py REPORT.xml...             ->  "41 0 2"
    tools/count_tests.py --failures REPORT.xml...  ->  the failed tests, each with its last lines

A test that could not be started (its program was not built, a fixture failed) has failed.
"""
import sys
import xml.etree.ElementTree as ElementTree


def outcome(case):
    """'passed', 'failed' or 'skipped' for one testcase element."""
    status = case.get("status")
    if status == "run":
        return "passed"
    if status == "disabled":
        return "skipped"
    reason = case.find("skipped")
    message = "" if reason is None else reason.get("message", "")
    return "skipped" if message.startswith("SKIP_") else "failed"


def cases(report):
    return ElementTree.parse(report).getroot().iter("testcase")


def outcomes(report):
    """The tests of one report by name."""
    return {case.get("name"): outcome(case) for case in cases(report)}


def print_failures(reports, lines=60):
    for report in reports:
        for case in cases(report):
            if outcome(case) == "failed":
                print(f"-- {report}: {case.get('name')}")
                print(*(case.findtext("system-out") or "").splitlines()[-lines:], sep="\n")


def main():
    if sys.argv[1:2] == ["--failures"]:
        print_failures(sys.argv[2:])
        return
    found = [result for report in sys.argv[1:] for result in outcomes(report).values()]
    print(*(found.count(kind) for kind in ("passed", "failed", "skipped")))


if __name__ == "__main__":
    main()
