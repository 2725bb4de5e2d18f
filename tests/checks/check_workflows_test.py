#!/usr/bin/env python3
"""tools/check_workflows.py notices what is wrong with a workflow."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parent.parent.parent / "tools" / "check_workflows.py"
PIN = "actions/checkout@11bd71901bbe5b1630ceea73d27597364c9af683 # v4.2.2"
GOOD = f"""name: good

on:
  push:

permissions:
  contents: read

jobs:
  one:
    runs-on: ubuntu-24.04
    timeout-minutes: 5
    steps:
      - uses: {PIN}
      - run: ls "$HOME" ${{{{ github.sha }}}}
"""


def check(text):
    """The exit status of the tool for a workflow, and what it says."""
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder, "workflow.yml")
        file.write_text(text, encoding="utf-8")
        done = subprocess.run([sys.executable, TOOL, file], timeout=200, capture_output=True,
                              text=True, check=False)
    return done.returncode, done.stdout + done.stderr


# What is right in GOOD, what is wrong instead, and what the tool says of it.
MISTAKES = (
    ("    timeout-minutes: 5\n", "    timeout-minuts: 5\n", "timeout-minuts"),
    ("    timeout-minutes: 5\n", "    timeout-minuts: 5\n", "job one has no time limit"),
    ("permissions:\n  contents: read\n\n", "", "no permissions"),
    (f"- uses: {PIN}", "- uses: actions/checkout@v4", "not pinned"),
    ("ubuntu-24.04", "ubuntu-24.05", "ubuntu-24.05"),
    ("${{ github.sha }}", "${{ github.sah }}", 'property "sah"'),
    ('"$HOME"', "$HOME", "SC2086"),
    ("- run:", "-  run:", "too many spaces"),
)


class CheckWorkflowsTest(unittest.TestCase):
    """A run of the tool takes seconds, so most mistakes are in one workflow."""

    def test_good_one_passes(self):
        status, output = check(GOOD)
        self.assertEqual(status, 0, output)

    def test_mistakes_are_noticed(self):
        text = GOOD
        for right, wrong, _ in MISTAKES:
            self.assertIn(right, GOOD)
            text = text.replace(right, wrong)
        status, output = check(text)
        self.assertEqual(status, 1, output)
        for _, _, said in MISTAKES:
            self.assertIn(said, output)

    def test_what_is_no_yaml_is_noticed(self):
        status, output = check(GOOD.replace("  push:", "\tpush:"))
        self.assertEqual(status, 1, output)
        self.assertIn("cannot start any token", output)

    def test_pin_without_its_version_is_noticed(self):
        status, output = check(GOOD.replace(PIN, PIN.split(" ", maxsplit=1)[0]))
        self.assertEqual(status, 1, output)
        self.assertIn("not pinned", output)


if __name__ == "__main__":
    if check(GOOD)[0] == 77:
        sys.exit(77)
    unittest.main()
