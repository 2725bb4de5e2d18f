#!/usr/bin/python3
"""Measures Kestrel beside what people would use instead, and prints one table.

    benchmarks/compare.py [PROGRAM]        (build/bench/shells/linux/kestrel, by default)

A list of 20 entries with icons, on one virtual desktop: from the key, the command or the call until
the list is painted, in processor time of the program, and in memory. Every program has its turn in
each round. Some run all the time and show what they have, others begin anew at each use: the table
says which. A program that is not installed is left out. Takes a minute, in which the machine should
do nothing else. With KESTREL_COMPARE_PICTURES=FOLDER each list is kept there as a screenshot. Needs
/usr/bin/python3 and, of Debian's packages,

    compare: rofi jgmenu yad openbox xvfb libxtst6 libxres1 adwaita-icon-theme

besides those that the virtual desktop needs (tools/setup.sh run desktop).
"""
import contextlib
import os
import pathlib
import shutil
import signal
import statistics
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "desktop"))

from harness.desktop import ITEM, Desktop  # noqa: E402
from harness.images import Rect  # noqa: E402
from harness.processes import wait_for  # noqa: E402
from harness.program import encoded, item  # noqa: E402
from harness.x11_client import X11Client  # noqa: E402
from probes import Screen, cpu_ms, is_idle, memory_mib, programs_with  # noqa: E402

TURNS = 15
ENTRIES = 20
ICONS = ("utilities-terminal", "system-file-manager", "web-browser", "accessories-text-editor",
         "help-browser", "accessories-calculator", "preferences-system")
THEME = "/usr/share/icons/Adwaita"
TITLES = [f"Item {number}" for number in range(ENTRIES)]
NAMES = [ICONS[number % len(ICONS)] for number in range(ENTRIES)]
FILES = [f"{THEME}/24x24/legacy/{name}.png" for name in NAMES]
MENU_KEY = "F12"
OPENBOX = f"""<openbox_config xmlns="http://openbox.org/3.4/rc">
<keyboard><keybind key="{MENU_KEY}"><action name="ShowMenu"><menu>list</menu></action></keybind>
</keyboard><menu><file>{{menu}}</file><showIcons>yes</showIcons></menu></openbox_config>
"""
RESIDENT, PER_USE = "runs all the time", "a process for each use"


class Candidate:
    """A program that shows the list: one that runs all the time and is told to, unless a subclass
    begins anew at each use."""

    kind = RESIDENT
    tool = None

    def __init__(self, bench):
        self.bench, self.desktop = bench, bench.desktop
        self.process = self.place = None
        self.times, self.work, self.memory, self.rest = [], [], [], []

    def prepare(self):
        """Writes its list and starts what runs all the time."""

    def show(self):
        raise NotImplementedError

    def cpu_before(self):
        return cpu_ms(self.process.pid)

    def ended(self):
        """Once the list has gone: the milliseconds of processor time that are not yet counted."""
        return 0


class PerUse(Candidate):
    """Its process is started, shows the list and ends with it."""

    kind = PER_USE

    command = ()

    def show(self):
        self.process = self.bench.spawn(self.command)

    def cpu_before(self):
        return 0

    def ended(self):
        self.process.wait(10)
        return 0


class KestrelByCall(Candidate):
    name = "Kestrel, a click on its icon"

    def prepare(self):
        items = [item("App", title, self.desktop.write(
            f"data/applications/program-{number}.desktop",
            f"[Desktop Entry]\nType=Application\nName={title}\nExec=true\nIcon={name}\n"),
            f"00000000-0000-4000-8000-{number:012X}")
            for number, (title, name) in enumerate(zip(TITLES, NAMES))]
        self.desktop.write("data/kestrel/launcherItems", encoded(items))
        self.desktop.start_panel("fake")
        self.process = self.desktop.start([self.bench.program],
                                          {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": None})
        self.call = self.desktop.status_item().get_dbus_method("Activate", ITEM)

    def show(self):
        self.call(0, 0, signature="ii", ignore_reply=True)
        self.desktop.bus.flush()


class KestrelByCommand(Candidate):
    """A second start, which asks the one that runs; its processor time counts too."""

    name = "Kestrel, the command `kestrel` on a key"

    def prepare(self):
        self.process, self.second = self.bench.kestrel.process, None

    def show(self):
        self.second = self.bench.spawn([self.bench.program])

    def ended(self):
        usage = os.wait4(self.second.pid, 0)[2]
        self.second.returncode = 0
        return (usage.ru_utime + usage.ru_stime) * 1000


class OpenboxMenu(Candidate):
    name, tool = "openbox, its own menu", "openbox"

    def prepare(self):
        self.process = self.bench.window_manager

    def show(self):
        self.bench.keys.key(MENU_KEY)


def jgmenu(desktop, name, options):
    """The command that shows the list."""
    entries = desktop.write("jgmenu.csv", "".join(
        f"{title},true,{icon}\n" for title, icon in zip(TITLES, NAMES)))
    configuration = desktop.write(name, "\n".join((
        *options, "icon_theme = Adwaita", "menu_width = 240", "position_mode = fixed",
        "menu_valign = top", "")))
    return ["jgmenu", "--csv-file=" + entries, "--config-file=" + configuration]


class Jgmenu(Candidate):
    name, tool = "jgmenu, kept running", "jgmenu"

    def prepare(self):
        self.process = self.desktop.start_service(
            jgmenu(self.desktop, "kept.jgmenurc", ("stay_alive = 1", "hide_on_startup = 1")))
        wait_for(lambda: is_idle(self.process.pid), 20, "jgmenu to rest")

    def show(self):
        os.kill(self.process.pid, signal.SIGUSR1)


class JgmenuPerUse(PerUse):
    name, tool = "jgmenu", "jgmenu"

    def prepare(self):
        self.command = jgmenu(self.desktop, "once.jgmenurc", ("stay_alive = 0",))


class Rofi(PerUse):
    name, tool = "rofi -dmenu", "rofi"

    def prepare(self):
        entries = self.desktop.write("rofi.list", "".join(
            f"{title}\0icon\x1f{name}\n" for title, name in zip(TITLES, NAMES)))
        self.command = ["rofi", "-dmenu", "-no-config", "-show-icons", "-icon-theme", "Adwaita",
                        "-l", str(ENTRIES), "-input", entries]


class Yad(PerUse):
    name, tool = "yad --list", "yad"

    def prepare(self):
        rows = [word for pair in zip(FILES, TITLES) for word in pair]
        self.command = ["yad", "--list", "--no-headers", "--column=:IMG", "--column=",
                        "--width=240", "--height=520", "--no-buttons", *rows]


class Bench:
    """The desktop and its rounds."""

    candidates = (KestrelByCall, KestrelByCommand, OpenboxMenu, Jgmenu, JgmenuPerUse, Rofi, Yad)

    def __init__(self, program):
        self.program = str(program)
        self.desktop = self.keys = self.screen = self.window_manager = self.kestrel = None
        self.spawned = []

    def spawn(self, command):
        """Starts a program as a shell would, without the work of the tests' own start."""
        process = subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                   close_fds=False)
        self.spawned.append(process)
        return process

    @property
    def environment(self):
        return self.desktop.environment

    @contextlib.contextmanager
    def started(self):
        with Desktop(window_manager=None, width=800, height=700) as self.desktop:
            self.start_window_manager()
            self.keys = X11Client(self.environment["DISPLAY"])
            self.screen = Screen(self.desktop)
            try:
                yield
            finally:
                for process in self.spawned:
                    if process.poll() is None:
                        process.kill()
                        process.wait(5)
                self.keys.close()

    def start_window_manager(self):
        menu = "".join(f'<item label="{title}" icon="{file}"><action name="Execute"><command>true'
                       f"</command></action></item>" for title, file in zip(TITLES, FILES))
        path = self.desktop.write("openbox/menu.xml", (
            '<openbox_menu xmlns="http://openbox.org/3.4/menu">'
            f'<menu id="list" label="List">{menu}</menu></openbox_menu>'))
        configuration = self.desktop.write("openbox/rc.xml", OPENBOX.format(menu=path))
        self.window_manager = self.desktop.start_service(
            ["openbox", "--sm-disable", "--config-file", configuration])
        wait_for(lambda: "window id #" in self.desktop.run(
            "xprop", "-root", "_NET_SUPPORTING_WM_CHECK"), what="openbox")

    def run(self):
        with self.started():
            candidates = [kind(self) for kind in self.candidates
                          if kind.tool is None or shutil.which(kind.tool)]
            self.kestrel = candidates[0]
            for candidate in candidates:
                candidate.prepare()
            for candidate in candidates:
                self.find_place(candidate)
            for _ in range(TURNS):
                for candidate in candidates:
                    self.measure(candidate)
            if programs_with("libQt6Core") > 1:
                print("Other programs with Kestrel's toolkit run and share its memory: what is "
                      "told of its memory is worth nothing.")
        return candidates

    def find_place(self, candidate):
        """Where its list is, by a first use that is not measured: to look at the whole screen takes
        time itself."""
        self.settle()
        before = self.desktop.screenshot()
        self.screen.milliseconds_of(candidate.show, self.desktop.bounds)
        place = self.desktop.screenshot().difference(before)
        if place.height < 200:
            raise AssertionError(f"{candidate.name} shows no list but {place}")
        candidate.place = Rect(*place)
        self.save(candidate)
        self.close(candidate, before)

    def save(self, candidate):
        folder = os.environ.get("KESTREL_COMPARE_PICTURES")
        if folder:
            name = candidate.name.replace(" ", "-").replace("`", "")
            self.desktop.screenshot().save(pathlib.Path(folder, f"{name}.png"))

    def close(self, candidate, before):
        self.keys.key("Escape")
        wait_for(lambda: self.desktop.screenshot() == before, 10, f"{candidate.name} to close")
        return candidate.ended()

    def settle(self):
        # The toolkits refuse what looks like the close of an earlier popup for a moment.
        time.sleep(0.3)

    def measure(self, candidate):
        self.settle()
        before = self.desktop.screenshot()
        if candidate.kind == RESIDENT:
            candidate.rest.append(memory_mib(candidate.process.pid)[0])
        start = candidate.cpu_before()
        candidate.times.append(self.screen.milliseconds_of(candidate.show, candidate.place))
        work = cpu_ms(candidate.process.pid) - start
        candidate.memory.append(memory_mib(candidate.process.pid)[0])
        candidate.work.append(work + self.close(candidate, before))


def quartiles(figures):
    low, middle, high = statistics.quantiles(figures, n=4)
    return f"{middle:.1f} ({low:.1f} to {high:.1f})"


def main():
    program = pathlib.Path(sys.argv[1] if len(sys.argv) > 1
                           else ROOT / "build/bench/shells/linux/kestrel").resolve()
    candidates = Bench(program).run()
    print(f"Medians of {TURNS} uses with the middle half of them; of memory the most.\n\n"
          "| the list by | how | painted after, ms | processor time, ms "
          "| memory while shown, MiB (PSS) | while not |\n|---|---|---|---|---|---|")
    for candidate in candidates:
        # What another program shares comes and goes with that; the most is what it needs alone.
        rest = f"{max(candidate.rest):.1f}" if candidate.rest else "0"
        print(f"| {candidate.name} | {candidate.kind} | {quartiles(candidate.times)} "
              f"| {quartiles(candidate.work)} | {max(candidate.memory):.1f} "
              f"| {rest} |")
    return 0


if __name__ == "__main__":
    sys.exit(main())
