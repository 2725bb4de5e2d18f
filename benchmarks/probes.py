"""What can be seen of a running program from outside: its processor time, its instructions, its
memory, its waits, and what it paints."""
import mmap
import pathlib
import re
import struct
import subprocess
import time

from harness.processes import wait_for


def cpu_ms(pid):
    """The processor time of a process so far, that of its ended threads included."""
    # The kernel's name for the clock of another process (clock_getcpuclockid).
    return time.clock_gettime((~pid << 3) | 2) * 1000


def is_idle(pid):
    """True when the process has had nothing to do for a moment, which this call waits."""
    before = cpu_ms(pid)
    time.sleep(0.3)
    return cpu_ms(pid) - before < 1


def memory_mib(pid):
    """The memory of a process with its part of what it shares, and what is its alone."""
    sizes = {}
    for line in pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines()[1:]:
        name, size = line.split(":")
        sizes[name] = int(size.split()[0]) / 1024
    return sizes["Pss"], sizes["Private_Dirty"]


def programs_with(library):
    """How many processes have loaded a library: they share its pages."""
    count = 0
    for maps in pathlib.Path("/proc").glob("[0-9]*/maps"):
        try:
            count += library in maps.read_text()
        except OSError:
            pass  # It has ended, or is another user's.
    return count


def wake_ups(pid):
    """How often its threads have waited for something so far, thus woken up again."""
    return sum(int(line.split()[1])
               for file in pathlib.Path(f"/proc/{pid}/task").glob("*/status")
               for line in file.read_text().splitlines()
               if line.startswith("voluntary_ctxt_switches"))


class Instructions:
    """Counts the instructions of a program that is started with `command` before its own."""

    def __init__(self, folder):
        self._files = pathlib.Path(folder)
        self._pattern = self._files / "instructions.%p"
        self.command = ["valgrind", "--tool=callgrind", f"--callgrind-out-file={self._pattern}"]

    def take(self, pid):
        """How many there have been since the start or the last call, in millions."""
        wait_for(lambda: is_idle(pid), 120, "the program to be idle under callgrind")
        before = set(self._dumps(pid))
        subprocess.run(["callgrind_control", "--dump", str(pid)], check=True, timeout=60,
                       capture_output=True)
        dump = wait_for(lambda: next(iter(set(self._dumps(pid)) - before), None), 60, "the count")
        total = wait_for(lambda: re.search(r"^totals: (\d+)", dump.read_text(), re.M), 60,
                         "the end of the count")
        return int(total[1]) / 1e6

    def _dumps(self, pid):
        return self._files.glob(f"instructions.{pid}.*")


class Screen:
    """The server's frame buffer, read in place."""

    # The paint of an opening has ended when nothing has changed for this long.
    STILL_SECONDS = 0.08
    # So long may the beginning of a paint take under a tool that slows the program down.
    LIMIT_SECONDS = 30

    def __init__(self, desktop):
        with open(desktop.path("Xvfb_screen0"), "rb") as file:
            self._map = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
        header = struct.unpack(">25I", self._map[:100])
        self._start, self._stride = header[0] + header[19] * 12, header[12]

    def _rows(self, rect):
        begin = self._start + rect.y * self._stride + rect.x * 4
        return b"".join(self._map[at:at + rect.width * 4] for at in range(
            begin, begin + rect.height * self._stride, self._stride))

    def milliseconds_of(self, act, rect):
        """From the beginning of an act until the last change of that part of the screen."""
        shown = self._rows(rect)
        begin, painted = time.monotonic(), None
        act()
        while True:
            now, rows = time.monotonic(), self._rows(rect)
            if rows != shown:
                shown, painted = rows, time.monotonic()
            elif now - (painted or begin + self.LIMIT_SECONDS) > self.STILL_SECONDS:
                break
        if painted is None:
            raise AssertionError("nothing was painted")
        return (painted - begin) * 1000
