#!/usr/bin/env python3
"""Checks the order of the folders: a file may include only what stands left of its own folder.

    model < platform < actions < store < views < app        (src/, free of any toolkit)

The folders inside each shell have an order too, SHELL_ORDER; what stands in a shell's own folder may
include all of them.

Also that includes are written from src/ or from the top folder, that no shell includes another,
and that no conditional asks for the operating system.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
ORDER = ("model", "platform", "actions", "store", "views", "app")
SHELL_ORDER = {
    "linux": ("posix", "glib", "threading", "storage", "launching", "desktop", "views/kit", "views"),
    "macos": ("foundation", "storage", "launching", "desktop", "views/kit", "views"),
}
INCLUDE = re.compile(r'^\s*#\s*(?:include|import)\s*([<"])([^>"]+)[>"]')
CONDITION = re.compile(r"^\s*#\s*(?:if|ifdef|ifndef|elif|elifdef)\b(.*)")
SYSTEM = re.compile(r"__linux|__gnu_linux__|__unix|__APPLE__|__MACH__|_WIN32|_WIN64|__FreeBSD__|"
                    r"__OpenBSD__|__NetBSD__|TARGET_OS_|Q_OS_|\blinux\b|\bunix\b")
TOOLKIT = re.compile(r"^(Q[A-Z]|Qt|q[a-z]+\.h$|gio/|glib|gobject/|gtk/|gdk|X11/|xcb/|"
                     r"wayland|dbus/|AppKit/|Foundation/|Cocoa/|objc/|CoreFoundation/)")


def fault_of_core_include(path, bracket, target):
    """What is wrong with an include of a file of src/, or None."""
    if TOOLKIT.match(target):
        return f"the core includes a toolkit's header {target}"
    if bracket == "<":
        return None
    if not (ROOT / "src" / target).is_file():
        return f"{target} is not a file of src/ (includes are written from there)"
    own = path.relative_to(ROOT / "src").parts[0]
    other = target.split("/")[0]
    if ORDER.index(other) > ORDER.index(own):
        return f"{own} includes {target}, which stands to the right of it"
    return None


def place_in_shell(shell, file):
    """Where the folder of a file stands in its shell's order; None for a folder that it lacks."""
    order = SHELL_ORDER[shell]
    if file.count("/") == 0:
        return len(order)
    return next((place for place, folder in enumerate(order) if file.startswith(folder + "/")), None)


def fault_of_shell_include(path, bracket, target):
    """What is wrong with an include of a file of shells/NAME, or None."""
    own, _, file = path.relative_to(ROOT / "shells").as_posix().partition("/")
    if target.startswith("shells/"):
        _, other, included = target.split("/", 2)
        if other != own:
            return f"one shell includes another's {target}"
        places = place_in_shell(own, file), place_in_shell(own, included)
        if None in places:
            return f"the folder of {file if places[0] is None else included} is not in SHELL_ORDER"
        if places[1] > places[0]:
            return f"{file} includes {included}, which stands to the right of it"
    if bracket == '"' and target.startswith("tests/"):
        return f"the program includes {target} of its tests"
    return None


def faults(path):
    """All faults of one file, with their line numbers."""
    area = path.relative_to(ROOT).parts[0]
    check = {"src": fault_of_core_include, "shells": fault_of_shell_include}.get(area)
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        condition = CONDITION.match(line)
        if condition and SYSTEM.search(condition[1]):
            yield number, "a conditional on the operating system"
        include = INCLUDE.match(line)
        if include and check:
            fault = check(path, include[1], include[2])
            if fault:
                yield number, fault


def main():
    files = [path for folder in ("src", "shells", "tests", "fuzz", "benchmarks")
             for path in sorted((ROOT / folder).rglob("*"))
             if path.suffix in (".h", ".cpp", ".mm")]
    found = [(path, *fault) for path in files for fault in faults(path)]
    for path, number, fault in found:
        print(f"{path.relative_to(ROOT)}:{number}: {fault}")
    print(f"{len(files)} files, {len(found)} faults")
    return 0 if files and not found else 1


if __name__ == "__main__":
    sys.exit(main())
