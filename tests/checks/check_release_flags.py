#!/usr/bin/env python3
"""Checks that the build that is installed is compiled and linked hardened, and that a warning does
not stop it.

    tests/checks/check_release_flags.py CMAKE

Configures the preset "release" in a folder of its own and reads what it would run.
"""
import json
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
COMPILED = ("-fstack-protector-strong", "-O3")
POSITION_INDEPENDENT = {"-fPIE", "-fPIC"}
FORTIFIED = re.compile(r"^#define _FORTIFY_SOURCE [23]$", re.MULTILINE)
LINKED = ("-pie", "-Wl,-z,relro,-z,now", "-Wl,-z,noexecstack")


def compiled(build):
    """(source, flags) of everything that is ours."""
    for entry in json.loads((build / "compile_commands.json").read_text()):
        source = pathlib.Path(entry["directory"], entry["file"]).resolve()
        if build not in source.parents:
            yield source.relative_to(ROOT), shlex.split(entry["command"])


def is_fortified(flags):
    """Whether the checking functions are used, by our choice or by that of compiler or flags."""
    command = [*flags[:flags.index("-o")], "-E", "-dM", "-x", "c++", "/dev/null"]
    done = subprocess.run(command, capture_output=True, text=True, check=True, timeout=20)
    return bool(FORTIFIED.search(done.stdout))


def link_flags(build):
    """The flags that the program is linked with."""
    ninja = (build / "build.ninja").read_text()
    statement = re.search(r"^build shells/linux/kestrel: (?:.|\n)*?\n\n", ninja, re.M)[0]
    return shlex.split(re.search(r"LINK_FLAGS = (.*)", statement)[1])


def main():
    faults, count = [], 0
    with tempfile.TemporaryDirectory() as folder:
        build = pathlib.Path(folder).resolve()
        subprocess.run([sys.argv[1], "--preset", "release", "-B", str(build)], cwd=ROOT,
                       stdout=subprocess.DEVNULL, check=True, timeout=100)
        for source, flags in compiled(build):
            count += 1
            missing = [flag for flag in COMPILED if flag not in flags]
            if not POSITION_INDEPENDENT & set(flags):
                missing.append("-fPIE")
            if not is_fortified(flags):
                missing.append("-D_FORTIFY_SOURCE")
            faults += [f"{source}: compiled without {flag}" for flag in missing]
            if "-Werror" in flags:
                faults.append(f"{source}: compiled with -Werror")
        flags = link_flags(build)
        faults += [f"linked without {flag}" for flag in LINKED if flag not in flags]
        faults += [f"linked with {flag}" for flag in flags if "rpath" in flag]
    if count == 0:
        faults.append("no source of ours")
    print(*faults, f"{count} sources, {len(faults)} faults", sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
