#!/usr/bin/env python3
"""Checks that every test that docs/edge-cases.md names exists and, given a report, has passed.

    tools/check_edge_cases.py BUILD_FOLDER [--report TESTS.xml [--left-out LABEL]]

A row of its tables is `| case | test |`; the second cell holds one name or several separated by
<br>: `Suite.Test` of a test program (also where the test is parameterised), or
`desktop:test_name`. A heading that says "(N cases)" must have at least N rows below it.

A test of another system is passed over: one whose source lies in a folder of tests/ that this build
was not configured with (on a Mac tests/linux and tests/desktop). A name that no source has is a
fault on every system. Of a run that left out the tests with a label they have only to exist.
"""
import argparse
import json
import pathlib
import re
import subprocess
import sys

from count_tests import outcomes

ROOT = pathlib.Path(__file__).resolve().parent.parent
TABLE = ROOT / "docs" / "edge-cases.md"
HEADING = re.compile(r"^#+ .*?\b(\d+) cases?\b")
CELL = re.compile(r"(?<!\\)\|")
NAME = re.compile(r"`?((?:desktop:|check:)?[A-Za-z]\w*(?:[./]\w+)*)`?$")
TEST = re.compile(r"^TEST(?:_F|_P)?\((\w+),\s*(\w+)\)", re.MULTILINE)
INSTANCE = re.compile(r"^INSTANTIATE_TEST_SUITE_P\(\s*(\w+),\s*(\w+),", re.MULTILINE)
METHOD = re.compile(r"^    def (test_\w+)\(", re.MULTILINE)


def registered_tests(build, label=None):
    """The names of all tests that ctest would run, or of those with a label."""
    listing = subprocess.run(["ctest", "--test-dir", str(build), "--show-only=json-v1"],
                             capture_output=True, text=True, check=True).stdout
    names = set()
    for test in json.loads(listing)["tests"]:
        properties = {p["name"]: p["value"] for p in test.get("properties", [])}
        if not properties.get("DISABLED") and (label is None or
                                               label in properties.get("LABELS", [])):
            names.add(test["name"])
    return names


def tests_in(source):
    """The names that the tests of a C++ source may have in the table."""
    text = source.read_text(encoding="utf-8")
    for suite, test in TEST.findall(text):
        yield f"{suite}.{test}"
        for instance, instantiated in INSTANCE.findall(text):
            if instantiated == suite:
                yield f"{instance}/{suite}.{test}"


def tests_of_other_systems(build):
    """The names of the tests in those folders of tests/ that the build leaves out."""
    names = set()
    for folder in (ROOT / "tests").iterdir():
        if (build / "tests" / folder.name / "CTestTestfile.cmake").is_file():
            continue
        for source in [*folder.rglob("*.cpp"), *folder.rglob("*.mm")]:
            names.update(tests_in(source))
        for source in folder.glob("test_*.py"):
            names.update("desktop:" + m for m in METHOD.findall(source.read_text("utf-8")))
    return names


def matching(name, names):
    """The tests that a name of the table stands for: itself, or its parameterised instances."""
    pattern = re.compile(rf"(?:.*/)?{re.escape(name)}(?:/.*)?")
    return [n for n in names if pattern.fullmatch(n)]


def rows(lines):
    """(line number, list of test names or None when the cell is not a list of names) of rows."""
    for number, line in enumerate(lines, 1):
        cells = [c.strip() for c in CELL.split(line.strip().strip("|"))]
        if not line.lstrip().startswith("|") or len(cells) < 2 or set(cells[1]) <= set("-: "):
            continue
        if number < len(lines) and re.match(r"^\s*\|[\s:|-]+\|\s*$", lines[number]):
            continue
        found = [NAME.match(part.strip()) for part in re.split(r"<br\s*/?>", cells[1])]
        yield number, [m[1] for m in found] if all(found) else None


def count_faults(lines, numbers):
    """Headings that promise more rows than follow them."""
    headings = [(n, int(m[1])) for n, m in ((i, HEADING.match(line))
                                            for i, line in enumerate(lines, 1)) if m]
    if not headings:
        yield "no heading says how many cases there are"
    for index, (start, promised) in enumerate(headings):
        end = headings[index + 1][0] if index + 1 < len(headings) else len(lines) + 1
        have = sum(start < n < end for n in numbers)
        if have < promised:
            yield f"line {start} promises {promised} cases, {have} follow"


def faults_of(lines, names, elsewhere, results=None):
    """What is wrong with the table in `lines`, and how many rows it has. `names`: the tests that
    this build runs; `elsewhere`: those that only another system does; `results`: how those went
    that were not left out."""
    table = list(rows(lines))
    faults = list(count_faults(lines, [number for number, _ in table]))
    for number, tests in table:
        if tests is None:
            faults.append(f"line {number}: the second cell names no test")
        for test in tests or []:
            found = matching(test, names)
            if not found and test not in elsewhere:
                faults.append(f"line {number}: there is no test {test}")
            elif results is not None and any(results.get(n, "passed") != "passed" for n in found):
                faults.append(f"line {number}: {test} did not pass")
    return faults, len(table)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--report", type=pathlib.Path)
    parser.add_argument("--left-out", metavar="LABEL")
    options = parser.parse_args()

    if not TABLE.is_file():
        print(f"there is no {TABLE.name}")
        return 1
    results = outcomes(options.report) if options.report else None
    names = set(results) if results is not None else registered_tests(options.build)
    if options.left_out:
        names |= registered_tests(options.build, options.left_out)
    faults, cases = faults_of(TABLE.read_text(encoding="utf-8").splitlines(), names,
                              tests_of_other_systems(options.build), results)
    print("\n".join([*faults, f"{cases} cases, {len(faults)} faults"]))
    return 0 if cases and not faults else 1


if __name__ == "__main__":
    sys.exit(main())
