#!/usr/bin/env python3
"""Checks that the warning flags and the stack protector really reach every source of ours.

    tools/check_flags.py BUILD_FOLDER

Reads BUILD_FOLDER/compile_commands.json; what a generator wrote into the build folder is not ours.
Warnings are errors exactly where KESTREL_WERROR of BUILD_FOLDER/CMakeCache.txt says so.
"""
import json
import pathlib
import re
import shlex
import sys

REQUIRED = ("-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Wshadow",
            "-fstack-protector-strong")
FOLDERS = ("src", "shells", "tests", "fuzz", "benchmarks")
WERROR = re.compile(r"^KESTREL_WERROR:BOOL=(ON|TRUE|YES|Y|1)$", re.MULTILINE | re.IGNORECASE)


def warnings_are_errors(build):
    """What the build was configured with."""
    return bool(WERROR.search((build / "CMakeCache.txt").read_text(encoding="utf-8")))


def main():
    root = pathlib.Path(__file__).resolve().parent.parent
    build = pathlib.Path(sys.argv[1]).resolve()
    ours = faults = 0
    werror = warnings_are_errors(build)
    for entry in json.loads((build / "compile_commands.json").read_text()):
        source = pathlib.Path(entry["directory"], entry["file"]).resolve()
        if build in source.parents or not any(root / f in source.parents for f in FOLDERS):
            continue
        ours += 1
        flags = shlex.split(entry["command"])
        missing = [flag for flag in REQUIRED if flag not in flags]
        if werror != ("-Werror" in flags):
            missing.append("-Werror" if werror else "no -Werror")
        if "-w" in flags:
            missing.append("no -w")
        if missing:
            faults += 1
            print(f"{source.relative_to(root)}: compiled without {' '.join(missing)}")
    if ours == 0:
        print("no source of ours in compile_commands.json")
    print(f"{ours} sources, {faults} without the flags")
    return 0 if ours and not faults else 1


if __name__ == "__main__":
    sys.exit(main())
