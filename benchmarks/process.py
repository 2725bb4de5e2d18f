#!/usr/bin/python3
"""Measures the whole program against bare Qt programs and prints one table of all figures.

    benchmarks/process.py [BUILD_FOLDER]        (build/bench, by default)

On virtual desktops of its own, the programs in turn: the way to the icon and to rest, openings of
the popover, memory and wake-ups while nothing happens, instructions, questions to the X server,
what load.py measures, and the reading and writing of a long list. The exit status says whether all
goals were met. Takes some minutes, in which the machine should do nothing else. Needs
/usr/bin/python3 and valgrind.
"""
import json
import pathlib
import re
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "desktop"))

from harness.desktop import ITEM, Desktop  # noqa: E402
from harness.processes import wait_for  # noqa: E402
from harness.program import encoded, item  # noqa: E402
from harness.round_trips import RoundTrips  # noqa: E402
from load import Load  # noqa: E402
from probes import (Instructions, Screen, cpu_ms, is_idle, memory_mib,  # noqa: E402
                    programs_with, wake_ups)
from table import Table  # noqa: E402

STARTS = 9
OPENINGS = 6
LATER_OPENINGS = 20
MEMORY_TURNS = 2
IDLE_SECONDS = 10
# What a program still does after its icon is there, timers of its start included, has ended then.
SETTLING_SECONDS = 5
# What follows the icon's appearance without a pause in which a program would seem to rest.
PREPARING_SECONDS = 1
# The homes are in a folder where nothing else happens: the program watches the way to its data, and
# compilers that write into /tmp would wake it.
HOMES = "/var/tmp"
MANY = 100_000
FRAME_MS = 1000 / 60
NO_ACCESSIBILITY = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": None}
BARE = "a bare Qt program with only a tray icon"
POPUP = "a bare Qt program with tray icon and popup"
# As many as the bare popup has rows.
ROWS = 20
ICONS = ("utilities-terminal", "system-file-manager", "web-browser", "accessories-text-editor",
         "help-browser", "accessories-calculator", "preferences-system")


def identity(number):
    return f"00000000-0000-4000-8000-{number:012X}"


def usual_items(desktop):
    """The items of a user, of the three kinds: an icon of its own, that of its file's type, that of
    the terminal."""
    items = []
    for i in range(ROWS):
        kind = ("App", "Command File", "Inline Command")[i % 3]
        if kind == "App":
            text = desktop.write(f"data/applications/program-{i}.desktop", "\n".join((
                "[Desktop Entry]", "Type=Application", f"Name=Program {i}", "Exec=true",
                f"Icon={ICONS[i // 3 % len(ICONS)]}", "")))
        elif kind == "Command File":
            text = desktop.write(f"home/file-{i}" + (".sh", ".txt", ".py")[i // 3 % 3],
                                 "#!/bin/sh\ntrue\n", 0o755)
        else:
            text = f"echo {i}"
        items.append(item(kind, f"Item {i}", text, identity(i)))
    return items


def plain_items(count):
    return [item("App", f"Item {i}", f"/opt/item-{i}", identity(i)) for i in range(count)]


class Run:
    """A program on a desktop with our own panel, from its start to its icon."""

    def __init__(self, desktop, command, before=(), environment=None, limit=10):
        """`before` is a command that runs the program."""
        self.desktop, host = desktop, desktop.host
        seen = len(host.lines)
        begin = time.monotonic()
        self.process = desktop.start([*before, *map(str, command)],
                                     {**NO_ACCESSIBILITY, **(environment or {})})

        def registered():
            return next((json.loads(line) for line in host.lines[seen:]
                         if '"registered"' in line), None)
        event = wait_for(registered, limit, "the icon", pause=0.0005)
        self.milliseconds = (event["time"] - begin) * 1000
        self.cpu = cpu_ms(self.pid)
        self.window, self.place = None, desktop.bounds

    @property
    def pid(self):
        return self.process.pid

    def settle(self):
        """Waits until the program rests; its processor time until then."""
        time.sleep(PREPARING_SECONDS)
        # A start with many items is busy for long.
        wait_for(lambda: is_idle(self.pid), 60, "the program to be idle")
        return cpu_ms(self.pid)

    def activate(self):
        call = self.desktop.status_item().get_dbus_method("Activate", ITEM)

        def act():
            call(0, 0, signature="ii", ignore_reply=True)
            self.desktop.bus.flush()
        return act

    def open(self, screen):
        """Milliseconds from the call to the painted popover."""
        milliseconds = screen.milliseconds_of(self.activate(), self.place)
        self.window = self.find_window()
        self.place = self.window.rect
        return milliseconds

    def find_window(self):
        """The popover: the one window that no window manager has given a frame."""
        windows = [window for window in self.desktop.windows() if window.rect.height > 100]
        if len(windows) != 1:
            raise AssertionError(f"there are {len(windows)} windows and not the popover alone")
        return windows[0]

    def close(self):
        # The toolkit refuses what looks like the close of an earlier popup for a moment.
        time.sleep(0.2)
        self.desktop.key("Escape")
        wait_for(lambda: not any(window.id == self.window.id for window in self.desktop.windows()),
                 20, "the popover to go")
        time.sleep(0.2)

    def end(self):
        self.process.kill()
        wait_for(lambda: not self.desktop.status_items(), what="the icon to go")


class Bench:
    """All measurements, one after another."""

    def __init__(self, build, table):
        self.kestrel = [build / "shells/linux/kestrel"]
        self.bare = [build / "benchmarks/bare_tray/bare_tray"]
        self.popup = [*self.bare, "popup"]
        self.round_trips = build / "benchmarks/round_trips/libround_trips.so"
        self.list_benchmark = build / "benchmarks/item_list_json_benchmark"
        self.table = table

    @staticmethod
    def desktop(items=usual_items):
        """A desktop with the list that `items` gives for it."""
        desktop = Desktop(window_manager="openbox")
        desktop.write("data/kestrel/launcherItems", encoded(items(desktop)))
        desktop.host = desktop.start_panel("fake")
        return desktop

    def measure_starts(self):
        ours, bare, first, later = ([] for _ in range(4))
        with self.desktop() as desktop:
            screen, place = Screen(desktop), None
            for _ in range(STARTS):
                run = Run(desktop, self.bare)
                bare.append((run.cpu, run.milliseconds, run.settle()))
                run.end()
                run = Run(desktop, self.kestrel)
                ours.append((run.cpu, run.milliseconds, run.settle()))
                # To look at the whole screen takes time itself, so only the first turn does.
                run.place, is_known = place or run.place, place is not None
                milliseconds = run.open(screen)
                first += [milliseconds] if is_known else []
                place = run.place
                run.close()
                for _ in range(OPENINGS):
                    later.append(run.open(screen))
                    run.close()
                run.end()
        for (figure, goal), measured, base in zip(
                (("start to icon, processor time", 1.3), ("start to icon, time", None),
                 ("start to rest, processor time, preparation included", 2)),
                zip(*ours), zip(*bare)):
            self.table.compare(figure, measured, base, BARE, goal)
        self.table.compare(f"first opening, {ROWS} items, icons painted", first, later,
                           "a later opening", 2)

    def measure_instructions(self):
        starts, openings = {}, {}
        with self.desktop() as desktop:
            for name, command in (("bare", self.bare), ("popup", self.popup),
                                  ("kestrel", self.kestrel)):
                count = Instructions(desktop.folder)
                run = Run(desktop, command, before=count.command, limit=60)
                time.sleep(PREPARING_SECONDS * 5)
                starts[name] = count.take(run.pid)
                if name != "bare":
                    openings[name] = self.instructions_of_openings(desktop, run, count)
                run.end()
        unit = "million instructions"
        self.table.compare("start to rest, the same in instructions", [starts["kestrel"]],
                           [starts["bare"]], BARE, unit=unit)
        self.table.compare("start to rest, against one with a popup", [starts["kestrel"]],
                           [starts["popup"]], POPUP, unit=unit)
        self.table.compare(f"a warm opening, {ROWS} items", openings["kestrel"],
                           openings["popup"], POPUP, 0.4, unit=unit)

    @staticmethod
    def instructions_of_openings(desktop, run, count):
        screen, found = Screen(desktop), []
        for turn in range(4):
            count.take(run.pid)
            run.open(screen)
            if turn > 0:
                found.append(count.take(run.pid))
            run.close()
        return found

    def measure_round_trips(self):
        with self.desktop() as desktop:
            trips = RoundTrips(desktop, self.round_trips)
            run, screen = Run(desktop, self.kestrel, environment=trips.environment), Screen(desktop)
            run.settle()
            counts = []
            for _ in range(4):
                seen = trips.mark()
                run.open(screen)
                counts.append(trips.before_showing(run.window.id, seen))
                run.close()
        most = max(counts[1:])
        self.table.add("questions to the X server before a warm opening shows", str(most),
                       goal="at most 4", met=most <= 4)

    def measure_memory(self):
        """With the popover opened once; before that the bare popup has not loaded its fonts."""
        names = {"kestrel": self.kestrel, "bare": self.bare, "popup": self.popup}
        memory, wakes, sharing = {name: [] for name in names}, {}, 0
        with self.desktop() as desktop:
            screen = Screen(desktop)
            for turn in range(MEMORY_TURNS):
                for name, command in names.items():
                    run = Run(desktop, command)
                    run.settle()
                    if name != "bare":
                        run.open(screen)
                        run.close()
                    time.sleep(SETTLING_SECONDS)
                    memory[name].append(memory_mib(run.pid))
                    sharing = max(sharing, programs_with("libQt6Core") - 1)
                    if turn == 0 and name != "popup":
                        before = wake_ups(run.pid)
                        time.sleep(IDLE_SECONDS)
                        wakes[name] = wake_ups(run.pid) - before
                    run.end()
        if sharing:
            print(f"{sharing} other programs with the same toolkit run and share its pages: "
                  "the memory measured is worth nothing")
        (pss, private), popup, bare = (
            [[max(figures)] for figures in zip(*memory[name])]
            for name in ("kestrel", "popup", "bare"))
        self.table.compare("memory with the popover (PSS)", pss, popup[0], POPUP, 1.1, "MiB")
        self.table.compare("of it written and not shared", private, popup[1], POPUP, unit="MiB")
        self.table.compare("memory with the popover (PSS)", pss, bare[0], BARE, unit="MiB")
        self.table.add(f"wake-ups in {IDLE_SECONDS} idle seconds", str(wakes["kestrel"]),
                       f"{wakes['bare']}, {BARE}", goal="none", met=wakes["kestrel"] == 0)

    def measure_the_list(self):
        output = subprocess.run([self.list_benchmark], check=True, timeout=120,
                                capture_output=True, text=True).stdout
        text = re.sub(r"\x1b\[[0-9;]*m", "", output)

        def cpu(name):
            return [float(time) for time in re.findall(
                rf"^{name}/\S*_median\s+[\d.]+ ms\s+([\d.]+) ms", text, re.M)]
        self.table.compare(f"decoding {MANY:,} items (15 MB)", cpu("decode"), cpu("bareParse"),
                           "simdjson's bare parse of the same bytes", 2)
        self.table.compare("encoding them", cpu("encode"), cpu("decode"), "decoding them", 1)

    def measure_openings(self):
        medians = []
        for count in (10, MANY):
            with self.desktop(lambda _, count=count: plain_items(count)) as desktop:
                run, screen = Run(desktop, self.kestrel), Screen(desktop)
                run.settle()
                times = []
                for _ in range(1 + LATER_OPENINGS):
                    times.append(run.open(screen))
                    run.close()
            medians.append(statistics.median(times[1:]))
        self.table.limit("call to painted popover, 10 items", medians[0], FRAME_MS,
                         "one frame at 60 Hz")
        self.table.compare(f"call to painted popover, {MANY:,} items", medians[1:], medians[:1],
                           "the popover with 10 items", 1.25)


def main():
    build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "build" / "bench").resolve()
    tempfile.tempdir = HOMES
    table = Table()
    bench = Bench(build, table)
    bench.measure_starts()
    bench.measure_instructions()
    bench.measure_round_trips()
    bench.measure_memory()
    bench.measure_openings()
    for count in Load.GOALS_MS:
        Load(bench.kestrel[0], count, table).run()
    bench.measure_the_list()
    return table.finish()


if __name__ == "__main__":
    sys.exit(main())
