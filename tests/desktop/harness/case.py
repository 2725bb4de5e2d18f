"""Base class of the tests of the running program."""
import os
import signal
import time
import unittest

from harness.desktop import Desktop
from harness.processes import Timeout, wait_for
from harness.program import Kestrel

# Where a test that fails leaves its screenshot.
EVIDENCE = os.environ.get("KESTREL_EVIDENCE", "build/desktop-failures")


class DesktopTest(unittest.TestCase):
    """A test with a desktop of its own, which ends with the test."""

    # How long one test may take, in seconds.
    limit = 120

    def setUp(self):
        self.desktop = self.kestrel = None
        signal.signal(signal.SIGALRM, self._expired)
        signal.alarm(self.limit)
        self.addCleanup(signal.alarm, 0)

    def _expired(self, *_):
        raise Timeout(f"the test took more than {self.limit} s")

    def start_desktop(self, **options):
        """Starts the test's desktop (see Desktop)."""
        self.desktop = self.enterContext(Desktop(**options))
        return self.desktop

    def start_kestrel(self, environment=None, words=None, command=None, tracer=(), **options):
        """Starts the program on the test's desktop (see Kestrel and Process), by another command if
        one is given, under a tracer if there is one."""
        command = command or [os.environ["KESTREL_PROGRAM"]]
        self.kestrel = Kestrel(self.desktop, [*tracer, *command], environment, words, **options)
        return self.kestrel

    def assert_stays(self, condition, seconds=0.4):
        """The condition holds, and still does a moment later."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            self.assertTrue(condition())
            time.sleep(0.05)

    def wait_until(self, condition, what):
        return wait_for(condition, what=what)

    def keep_evidence(self):
        """Leaves a screenshot and what the program said. For the runner, on failure."""
        if not self.desktop or not os.path.exists(self.desktop.folder):
            return None
        os.makedirs(EVIDENCE, exist_ok=True)
        path = os.path.join(EVIDENCE, self.id().rsplit(".", 1)[-1])
        self.desktop.screenshot().save(path + ".png")
        with open(path + ".txt", "w", encoding="utf-8") as file:
            if self.kestrel:
                print(*self.kestrel.process.lines, f"status {self.kestrel.process.status}",
                      sep="\n", file=file)
            try:
                print(self.desktop.accessibility.dump(), file=file)
            except Exception as error:  # The bus may be what failed.
                print("no accessible tree:", error, file=file)
        return path + ".png"
