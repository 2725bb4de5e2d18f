#!/usr/bin/env python3
"""Tests of packaging/macos/check_launch.sh with stand-ins for the Mac's programs."""
import os
import pathlib
import subprocess
import tempfile
import threading
import unittest

SCRIPT = (pathlib.Path(__file__).resolve().parents[2] / "packaging" / "macos" /
          "check_launch.sh")
TOOLS = {
    "open": 'touch "$HOME/opened"',
    "lsappinfo": '[ -e "$HOME/opened" ] && echo "    pid = $AGENT type=\\"$TYPE\\" flavor=3"',
    "osascript": '$QUIT',
    "sleep": 'exec /bin/sleep 0.01',
}


class LaunchCheckTest(unittest.TestCase):
    """`agent` is the process that stands for the program."""

    def setUp(self):
        self.home = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.reports = self.home / "Library" / "Logs" / "DiagnosticReports"
        self.reports.mkdir(parents=True)
        for name, action in TOOLS.items():
            tool = self.home / name
            tool.write_text(f"#!/bin/sh\n{action}\n", encoding="ascii")
            tool.chmod(0o755)
        self.agent = subprocess.Popen(["/bin/sleep", "120"])
        self.pid = self.agent.pid
        # A child that has ended stays a process until it is waited for.
        waiting = threading.Thread(target=self.agent.wait)
        waiting.start()
        self.addCleanup(waiting.join)
        self.addCleanup(self.agent.kill)

    def check(self, kind="UIElement", quit_command="kill $AGENT"):
        quit_command = quit_command.replace("$AGENT", str(self.pid))
        environment = {"HOME": str(self.home), "PATH": f"{self.home}:{os.environ['PATH']}",
                       "AGENT": str(self.pid), "TYPE": kind, "QUIT": quit_command}
        return subprocess.run([SCRIPT, "Kestrel.app"], env=environment, capture_output=True,
                              text=True, check=False, timeout=60)

    def test_agent_that_quits_is_good(self):
        done = self.check()
        self.assertEqual((done.returncode, done.stdout), (0, "it quit when it was asked to\n"))

    def test_request_that_nobody_answers_is_told_and_a_signal_ends_it(self):
        done = self.check(quit_command="exec /bin/sleep 30")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("a signal ends it", done.stdout)

    def test_program_with_a_dock_icon_is_noticed(self):
        done = self.check(kind="Foreground")
        self.assertEqual(done.returncode, 1)
        self.assertIn('type="Foreground"', done.stderr)

    def test_program_that_ends_by_itself_is_noticed(self):
        subprocess.run(["kill", str(self.pid)], check=True)
        done = self.check()
        self.assertEqual(done.returncode, 1)
        self.assertIn("it ended by itself", done.stderr)

    def test_crash_report_is_noticed(self):
        report = self.reports / "Kestrel-1.ips"
        end = self.home / "end"
        end.write_text(f"#!/bin/sh\ntouch {report}\nkill {self.pid}\n", encoding="ascii")
        end.chmod(0o755)
        done = self.check(quit_command=str(end))
        self.assertEqual(done.returncode, 1)
        self.assertIn(f"it left a crash report\n{report}\n", done.stderr)


if __name__ == "__main__":
    unittest.main()
