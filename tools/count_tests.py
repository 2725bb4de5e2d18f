#!/usr/bin/env python3
"""Prints how many tests passed, failed and were skipped, from the JUnit reports that ctest wrote.

    tools/count_tests.py REPORT.xml...     ->  "41 0 2"

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


def outcomes(report):
    """The tests of one report by name."""
    return {case.get("name"): outcome(case)
            for case in ElementTree.parse(report).getroot().iter("testcase")}


def main():
    found = [result for report in sys.argv[1:] for result in outcomes(report).values()]
    print(*(found.count(kind) for kind in ("passed", "failed", "skipped")))


if __name__ == "__main__":
    main()
