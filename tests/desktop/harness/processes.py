"""Processes of a test: started with their output collected, waited for, and reliably ended.

Whatever a `ProcessGroup` starts carries the group's mark in its environment, so that also what
those processes start (services that the bus activates, for one) is found and ended by its id.
"""
import ctypes
import os
import re
import signal
import subprocess
import threading
import time
import uuid

import dbus

# How long, in seconds, what a test waits for may take on a busy machine before it counts as failed.
DEFAULT_TIMEOUT = 40
PR_SET_PDEATHSIG = 1
PR_SET_CHILD_SUBREAPER = 36
_libc = ctypes.CDLL(None)


class Timeout(AssertionError):
    """A condition did not come true within its limit."""


def wait_for(condition, limit=DEFAULT_TIMEOUT, what="a condition", pause=0.02):
    """Asks `condition` until it gives something true and returns that; `Timeout` after `limit`
    seconds. A D-Bus error does not end the wait: an object may be replaced at that moment."""
    end = time.monotonic() + limit
    while True:
        error = None
        try:
            result = condition()
            if result:
                return result
        except dbus.DBusException as failure:
            error = failure
        if time.monotonic() > end:
            raise Timeout(f"waited {limit} s for {what}") from error
        time.sleep(pause)


def own_session_that_dies_with_us():
    os.setsid()
    _libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


class Process:
    """A started program whose standard output and error are collected line by line."""

    def __init__(self, command, environment, name=None, folder=None, pass_fds=(), prepare=None):
        """`prepare` is called in the new process before it becomes the program."""
        def before_exec():
            own_session_that_dies_with_us()
            if prepare:
                prepare()

        self.name = name or os.path.basename(command[0])
        self.lines = []
        self._popen = subprocess.Popen(
            command, env=environment, cwd=folder, stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, pass_fds=pass_fds,
            preexec_fn=before_exec)
        self.pid = self._popen.pid
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()

    def _read(self):
        for line in self._popen.stdout:
            self.lines.append(line.decode(errors="replace").rstrip("\n"))

    @property
    def is_running(self):
        return self._popen.poll() is None

    @property
    def status(self):
        """The exit status, or None while it runs."""
        return self._popen.poll()

    def wait(self, limit=DEFAULT_TIMEOUT):
        """Waits for its end and returns the exit status."""
        return self._popen.wait(limit)

    def wait_for_line(self, pattern, limit=DEFAULT_TIMEOUT):
        """The match of the first line of output that `pattern` is found in."""
        def look():
            ended = not self.is_running and not self._reader.is_alive()
            for line in list(self.lines):
                match = re.search(pattern, line)
                if match:
                    return match
            if ended:
                output = "\n".join(self.lines)
                raise AssertionError(f"{self.name} ended with {self.status}:\n{output}")
            return None
        return wait_for(look, limit, f"a line like {pattern!r} from {self.name}")

    def stop(self, grace=1.0):
        """Asks it to end, and makes it end after `grace` seconds."""
        if self.is_running:
            self._popen.terminate()
            try:
                self._popen.wait(grace)
            except subprocess.TimeoutExpired:
                self.kill()
        self._reader.join(0.5)
        if not self._reader.is_alive():
            self._popen.stdout.close()

    def kill(self):
        """Ends it without a chance to clean up, as a crash would."""
        self._popen.kill()
        self._popen.wait(5)


class ProcessGroup:
    """All processes of one desktop."""

    MARK = "KESTREL_TEST_DESKTOP"

    def __init__(self):
        self.mark = uuid.uuid4().hex
        self._started = []
        _libc.prctl(PR_SET_CHILD_SUBREAPER, 1)

    def start(self, command, environment, **options):
        process = Process(command, {**environment, self.MARK: self.mark}, **options)
        self._started.append(process)
        return process

    def _left(self):
        """The ids of all living processes that carry the mark."""
        mark = f"{self.MARK}={self.mark}".encode()
        for entry in os.listdir("/proc"):
            if entry.isdigit() and int(entry) != os.getpid():
                try:
                    with open(f"/proc/{entry}/environ", "rb") as file:
                        if mark in file.read().split(b"\0"):
                            yield int(entry)
                except OSError:
                    continue

    @staticmethod
    def _reap():
        try:
            while os.waitpid(-1, os.WNOHANG)[0]:
                pass
        except ChildProcessError:
            pass

    def stop(self):
        """Ends everything, the last started first, then what those have started."""
        for process in reversed(self._started):
            process.stop()
        for number in (signal.SIGTERM, signal.SIGKILL):
            left = list(self._left())
            for pid in left:
                try:
                    os.kill(pid, number)
                except OSError:
                    continue
            end = time.monotonic() + 1
            while left and time.monotonic() < end:
                self._reap()
                left = list(self._left())
                time.sleep(0.02)
