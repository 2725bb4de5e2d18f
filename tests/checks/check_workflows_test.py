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


class CheckWorkflowsTest(unittest.TestCase):
    """Each mistake alone, in a workflow that is well without it."""

    def find(self, wrong, right, said):
        self.assertIn(right, GOOD)
        status, output = check(GOOD.replace(right, wrong))
        self.assertEqual(status, 1, output)
        self.assertIn(said, output)

    def test_good_one_passes(self):
        status, output = check(GOOD)
        self.assertEqual(status, 0, output)

    def test_mistakes_are_noticed(self):
        self.find("timeout-minuts", "timeout-minutes", "timeout-minuts")
        self.find("", "    timeout-minutes: 5\n", "has no time limit")
        self.find("actions/checkout@v4", PIN, "not pinned")
        self.find(PIN.split(" ", maxsplit=1)[0], PIN, "not pinned")
        self.find("", "permissions:\n  contents: read\n\n", "no permissions")
        self.find("ubuntu-24.05", "ubuntu-24.04", "ubuntu-24.05")
        self.find("${{ github.sah }}", "${{ github.sha }}", "sah")
        self.find('ls "$HOME', 'ls "$HOME"', "SC1")
        self.find("ls $HOME", 'ls "$HOME"', "SC2086")
        self.find("steps:\n      -  run: ls", "steps:", "too many spaces")
        self.find("\tpush:", "  push:", "cannot start any token")


if __name__ == "__main__":
    if check(GOOD)[0] == 77:
        sys.exit(77)
    unittest.main()
