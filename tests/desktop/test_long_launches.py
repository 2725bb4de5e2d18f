"""Launches in numbers and among faults: the program stays as it is, and the popover at hand."""
import os

from launching import LaunchingTest, descriptors
from processes import wait_for
from program import popover_content

# How often test_launches_in_quick_succession_are_all_done clicks.
COUNT = int(os.environ.get("KESTREL_LAUNCHES", "100"))
# What memory may come and go, in KiB: much less than a leak in each launch would make.
MEMORY_MARGIN = 512
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

    def memory(self):
        """What the program keeps of its own, in KiB."""
        with open(f"/proc/{self.kestrel.process.pid}/smaps_rollup", encoding="utf-8") as file:
            fields = dict(line.split()[:2] for line in file if line.startswith("Private_"))
        return sum(map(int, fields.values()))

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
        before = len(descriptors(self.kestrel.process.pid)), self.memory()

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
        self.assertLess(self.memory(), before[1] + MEMORY_MARGIN)
