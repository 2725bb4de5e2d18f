#!/usr/bin/python3
"""Measures the whole program against a bare Qt program that shows only a tray icon.

    benchmarks/process.py [BUILD_FOLDER]        (build/bench, by default)

On a virtual desktop of its own, the two programs in turn: the way to the icon, memory and wake-ups
while nothing happens, and from a panel's call to the painted popover. Prints each figure with its
goal; the exit status says whether all goals were met. Needs /usr/bin/python3.
"""
import json
import mmap
import pathlib
import statistics
import struct
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "desktop"))

from desktop import ITEM, Desktop  # noqa: E402
from processes import wait_for  # noqa: E402
from program import encoded, item  # noqa: E402

STARTS = 15
OPENINGS = 30
MEMORY_TURNS = 3
IDLE_SECONDS = 10
# What a program still does after its icon is there, timers of its start included, has ended then.
SETTLING_SECONDS = 5
# The homes are in a folder where nothing else happens: the program watches the way to its data, and
# compilers that write into /tmp would wake it.
HOMES = "/var/tmp"
# The paint of an opening has ended when nothing has changed for this long.
STILL_SECONDS = 0.08
MANY = 100_000
FRAME_MS = 1000 / 60
NO_ACCESSIBILITY = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": None}


def cpu_ms(pid):
    """The processor time of all living threads."""
    return sum(int(file.read_text().split()[0])
               for file in pathlib.Path(f"/proc/{pid}/task").glob("*/schedstat")) / 1e6


def pss_kib(pid):
    """The memory of the process, its part of what it shares included."""
    for line in pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines():
        if line.startswith("Pss:"):
            return int(line.split()[1])
    raise RuntimeError("no Pss line")


def wake_ups(pid):
    """How often its threads have waited for something so far, thus woken up again."""
    return sum(int(line.split()[1])
               for file in pathlib.Path(f"/proc/{pid}/task").glob("*/status")
               for line in file.read_text().splitlines()
               if line.startswith("voluntary_ctxt_switches"))


class Screen:
    """The server's frame buffer, read in place."""

    def __init__(self, desktop):
        with open(desktop.path("Xvfb_screen0"), "rb") as file:
            self._map = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
        header = struct.unpack(">25I", self._map[:100])
        self._start, self._stride = header[0] + header[19] * 12, header[12]

    def rows(self, rect):
        """The bytes of a part of the screen."""
        begin = self._start + rect.y * self._stride + rect.x * 4
        return b"".join(self._map[at:at + rect.width * 4] for at in range(
            begin, begin + rect.height * self._stride, self._stride))


class Bench:
    """One desktop with our own host, which notes when an icon is registered."""

    def __init__(self, build):
        self.programs = {"kestrel": build / "shells/linux/kestrel",
                         "bare": build / "benchmarks/bare_tray/bare_tray"}
        self.met = True

    def say(self, what, value, goal="", good=True):
        self.met = self.met and good
        print(f"{what:46} {value:>26}  {goal:24} {'' if good else 'NOT MET'}", flush=True)

    def start(self, desktop, name):
        """Starts a program; its process, and the milliseconds of time and of CPU to the icon."""
        host = desktop.host
        seen = len(host.lines)
        begin = time.monotonic()
        process = desktop.start([str(self.programs[name])], NO_ACCESSIBILITY)

        def registered():
            return next((json.loads(line) for line in host.lines[seen:]
                         if '"registered"' in line), None)
        event = wait_for(registered, 10, "the icon", pause=0.0005)
        return process, (event["time"] - begin) * 1000, cpu_ms(process.pid)

    def desktop(self, items=()):
        desktop = Desktop(window_manager="openbox")
        if items:
            desktop.write("data/kestrel/launcherItems", encoded(items))
        desktop.host = desktop.start_panel("fake")
        return desktop

    def measure_start_and_idling(self):
        walls, cpus, settled, memory, wakes = ({"kestrel": [], "bare": []} for _ in range(5))
        with self.desktop() as desktop:
            for _ in range(STARTS):
                for name in self.programs:
                    process, wall, cpu = self.start(desktop, name)
                    walls[name].append(wall)
                    cpus[name].append(cpu)
                    process.kill()
                    wait_for(lambda: not desktop.status_items(), what="the icon to go")
            for turn in range(MEMORY_TURNS):
                for name in self.programs:
                    process, _, _ = self.start(desktop, name)
                    time.sleep(SETTLING_SECONDS)
                    settled[name].append(cpu_ms(process.pid))
                    memory[name].append(pss_kib(process.pid) / 1024)
                    if turn == 0:
                        before = wake_ups(process.pid)
                        time.sleep(IDLE_SECONDS)
                        wakes[name].append(wake_ups(process.pid) - before)
                    process.kill()
                    wait_for(lambda: not desktop.status_items(), what="the icon to go")
        self.compare("start to icon, CPU, ms", cpus, 1.3)
        self.compare("start to icon, time, ms", walls)
        self.compare("start and all that follows it, CPU, ms", settled)
        # Other programs with the same toolkit share its pages while they run, which only lessens it.
        largest = {name: [max(figures)] for name, figures in memory.items()}
        self.compare("memory when idle, PSS, MiB", largest, 1.3)
        count = wakes["kestrel"][0]
        self.say(f"wake-ups in {IDLE_SECONDS} idle seconds", f"{count} / {wakes['bare'][0]} bare",
                 "none", count == 0)

    def compare(self, what, figures, goal=None):
        """Prints the two medians and their ratio, which may be at most `goal`."""
        ours, bare = (statistics.median(figures[name]) for name in ("kestrel", "bare"))
        ratio = ours / bare
        self.say(what, f"{ours:.1f} / {bare:.1f} bare = {ratio:.2f}",
                 f"at most {goal}" if goal else "", goal is None or ratio <= goal)

    def openings(self, count):
        """Milliseconds from the call to the painted popover: the first opening, all later ones."""
        items = [item("App", f"Item {i}", f"/opt/item-{i}", f"00000000-0000-4000-8000-{i:012X}")
                 for i in range(count)]
        with self.desktop(items) as desktop:
            process, _, _ = self.start(desktop, "kestrel")
            time.sleep(SETTLING_SECONDS)
            # A start with many items is still busy: wait until it has been idle for a moment.
            wait_for(lambda: self.is_idle(process.pid), 60, "the program to be idle")
            screen, whole = Screen(desktop), desktop.bounds
            first = self.open(desktop, screen, whole)
            rect = desktop.wait_for_window(role="popover").rect
            self.close(desktop)
            later = []
            for _ in range(OPENINGS):
                later.append(self.open(desktop, screen, rect))
                self.close(desktop)
        return first, later

    @staticmethod
    def is_idle(pid):
        before = cpu_ms(pid)
        time.sleep(0.3)
        return cpu_ms(pid) - before < 1

    @staticmethod
    def open(desktop, screen, rect):
        """One opening: until the last change of that part of the screen."""
        call = desktop.status_item().get_dbus_method("Activate", ITEM)
        shown = screen.rows(rect)
        begin = time.monotonic()
        call(0, 0, signature="ii", ignore_reply=True)
        desktop.bus.flush()
        painted = None
        while True:
            now, rows = time.monotonic(), screen.rows(rect)
            if rows != shown:
                shown, painted = rows, time.monotonic()
            elif now - (painted or begin + 2) > STILL_SECONDS:
                break
        if painted is None:
            raise AssertionError("no popover was painted")
        return (painted - begin) * 1000

    @staticmethod
    def close(desktop):
        # The toolkit refuses what looks like the close of an earlier popup for a moment.
        time.sleep(0.2)
        desktop.key("Escape")
        desktop.wait_for_no_window(role="popover")
        time.sleep(0.2)

    def measure_popover(self):
        medians = []
        for count in (10, MANY):
            first, later = self.openings(count)
            medians.append(statistics.median(later))
            self.say(f"call to painted popover, {count} items, ms",
                     f"{medians[-1]:.1f} (worst {max(later):.1f})",
                     f"at most {FRAME_MS:.1f}", medians[-1] <= FRAME_MS)
            self.say(f"the first of them, {count} items, ms", f"{first:.1f}")
        ratio = medians[1] / medians[0]
        self.say(f"{MANY} items against 10", f"{ratio:.2f}", "the same: at most 1.25",
                 ratio <= 1.25)


def main():
    build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "build" / "bench").resolve()
    tempfile.tempdir = HOMES
    bench = Bench(build)
    bench.measure_start_and_idling()
    bench.measure_popover()
    print("all goals met" if bench.met else "not all goals met")
    return 0 if bench.met else 1


if __name__ == "__main__":
    sys.exit(main())
