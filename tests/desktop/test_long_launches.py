"""Many launches, and launches with faults: the program and the popover keep working."""
import os
import time

from harness.launching import LaunchingTest, children, descriptors, program_of
from harness.processes import wait_for
from harness.program import popover_content

# How often test_launches_in_quick_succession_are_all_done clicks.
COUNT = int(os.environ.get("KESTREL_LAUNCHES", "100"))
# How much memory may vary, in KiB: much less than a leak in each launch would make.
MEMORY_MARGIN = 512
# How long, in seconds, a file system does not answer.
STALL = 8
ROW_HEIGHT, FIRST_ROW = 34, 6 + 17


class LongLaunchesTest(LaunchingTest):
    """What is started here writes one line into a log: its number and its process."""

    limit = 240

    def logging(self, name):
        """A script that does so; the log's lines are written in one piece each."""
        return self.desktop.write(f"home/{name}", f"#!/bin/sh\necho {name} $$ >> "
                                  f"'{self.desktop.path('log')}'\n", 0o755)

    def log(self):
        """The lines of the log as (name, process)."""
        try:
            with open(self.desktop.path("log"), encoding="utf-8") as file:
                return [(name, int(process)) for name, process in map(str.split, file)]
        except FileNotFoundError:
            return []

    def click_rows(self, count, rows):
        """Clicks on one of the first rows after the other, as soon as the popover is there."""
        for i in range(count):
            content = popover_content(self.kestrel.open_popover())
            row = content.y + FIRST_ROW + i % rows * ROW_HEIGHT
            self.desktop.run("xdotool", "mousemove", str(content.center[0]), str(row), "click", "1")
            self.kestrel.wait_for_no_popover()

    def test_launches_in_quick_succession_are_all_done(self):
        self.start_desktop()
        names = [f"entry-{i}" for i in range(4)] + [f"program-{i}" for i in range(4)]
        paths = [self.logging(name) for name in names]
        paths[:4] = [self.entry(f"{name}.desktop", f"Exec={path}")
                     for name, path in zip(names[:4], paths[:4])]
        self.start_with([("App", name, path) for name, path in zip(names, paths)])
        warm = len(names)
        self.click_rows(warm, len(names))
        self.wait_until(lambda: len(self.log()) == warm, "the first launches")
        before = len(descriptors(self.kestrel.process.pid)), self.kestrel.own_memory()

        self.click_rows(COUNT, len(names))
        wait_for(lambda: len(self.log()) >= warm + COUNT, 30, "all launches")
        self.wait_for_no_children()
        log = self.log()[warm:]
        # The numbers of processes rise, and begin anew at most once: they tell the order.
        started = [name for name, _ in sorted(log, key=lambda line: line[1])]
        clicked = [names[i % len(names)] for i in range(COUNT)]
        self.assertIn(started, [clicked[i:] + clicked[:i] for i in range(COUNT)])
        self.wait_until(lambda: len(descriptors(self.kestrel.process.pid)) <= before[0],
                        "no more descriptors than before")
        self.assertLess(self.kestrel.own_memory(), before[1] + MEMORY_MARGIN)

    def start_with_stalls(self, items, paths, calls, delay):
        """Starts the program so that each of the system's `calls` about one of the paths, or any,
        takes `delay` seconds, as on a network mount that is gone."""
        command = ["strace", "-f", "--seccomp-bpf", "-o", self.desktop.path("strace.log"),
                   "-e", f"trace={calls}", "-e", f"inject={calls}:delay_enter={delay}s"]
        for path in paths:
            command += ["-P", path]
        self.start_with(items, tracer=command)

    def test_stalled_file_system_stops_neither_the_popover_nor_other_launches(self):
        self.start_desktop()
        program = self.logging("stalled.sh")
        entry = self.entry("stalled.desktop", f"Icon=folder\nExec={self.logging('entry')}")
        self.start_with_stalls([("Command File", "File", program), ("App", "Entry", entry),
                                ("App", "Sound", self.logging("sound"))],
                               [program, entry], "%file", STALL)
        for title in ("File", "Entry", "Sound"):
            start = time.monotonic()
            self.launch(title)
            self.assertLess(time.monotonic() - start, STALL / 2)
        wait_for(lambda: [name for name, _ in self.log()] == ["sound"], STALL,
                 "the launch that nothing holds up")
        self.assertEqual(self.kestrel.quit(), 0)

    @staticmethod
    def is_starting_something():
        """Whether a copy of the program, which belongs to us as an orphan, is about to become
        another program."""
        program = os.path.realpath(os.environ["KESTREL_PROGRAM"])
        return any(program_of(pid) == program for pid, _ in children(os.getpid()))

    def test_bus_that_dies_takes_the_program_with_it_neither_after_nor_during_a_launch(self):
        self.start_desktop()
        slow = self.logging("slow")
        entry = self.entry("slow.desktop", f"Exec={slow}")
        self.start_with_stalls([("App", "Slow", entry)], [], "execve", 1)
        self.launch("Slow")
        wait_for(lambda: len(self.log()) == 1, what="the first launch")
        self.launch("Slow")
        self.wait_until(self.is_starting_something, "the program to wait for the start of a child")
        self.desktop.bus_process.kill()
        wait_for(lambda: len(self.log()) == 2, what="the launch during which the bus died")
        self.assert_stays(lambda: self.kestrel.process.is_running, 1)
        # Nobody knows of the first one any longer: a further one comes up, and shows itself.
        second = self.start_kestrel()
        second.wait_for_popover()
        self.assertTrue(self.kestrel.process.is_running)
