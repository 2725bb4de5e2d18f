#!/usr/bin/env python3
"""Checks that the core and its tests compile with a compiler and a standard library as a Mac has.

    tools/check_libcxx.py VERSION

Configures the core alone with clang++-VERSION and libc++-VERSION, warnings being errors, and checks
every source of that build. The sources of a test program are checked as one, which halves the time.
16 is what Xcode 15 brings, 19 what Xcode 16.3 does, more or less. Only one libc++ can be installed
at a time: the headers of the other are unpacked from Debian's package into the cache folder.

Exit status: 0 nothing found, 1 findings, 77 the compiler or the library cannot be had.
"""
import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
CACHE = pathlib.Path(os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache", "kestrel")
SKIPPED = 77
TARGET = re.compile(r"CMakeFiles/([^/]+)\.dir/")
RIGHT_LIBRARY = "#include <version>\nstatic_assert(_LIBCPP_VERSION / 10000 == {version});\n"


def configure(folder, compiler, headers):
    """The core alone and its tests."""
    subprocess.run(
        ["cmake", "-S", ROOT, "-B", folder, "-G", "Ninja", "-DKESTREL_SHELL=OFF",
         "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", f"-DCMAKE_CXX_COMPILER={compiler}",
         f"-DCMAKE_CXX_FLAGS=-nostdinc++ -isystem {headers}"],
        check=True, stdout=subprocess.DEVNULL, timeout=120)


def library_headers(version):
    """The folder of libc++'s headers, fetched where they are not installed; None without them."""
    inside = f"usr/lib/llvm-{version}/include/c++/v1"
    unpacked = CACHE / f"libc++-{version}"
    for root in (pathlib.Path("/"), unpacked):
        if (root / inside / "version").is_file():
            return root / inside
    CACHE.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(dir=CACHE) as folder:
        try:
            subprocess.run(["apt-get", "download", "-qq", f"libc++-{version}-dev"], cwd=folder,
                           check=True, capture_output=True, timeout=60)
            package, = pathlib.Path(folder).glob("*.deb")
            subprocess.run(["dpkg-deb", "-x", package, f"{folder}/files"], check=True, timeout=60)
        except (OSError, subprocess.SubprocessError):
            return None
        shutil.rmtree(unpacked, ignore_errors=True)
        pathlib.Path(folder, "files").rename(unpacked)
    return unpacked / inside


def checks(build):
    """(name, source, command) of each compilation: a source of the core or a test program."""
    joined = {}
    for entry in json.loads((build / "compile_commands.json").read_text(encoding="utf-8")):
        command = shlex.split(entry["command"])
        output = command.index("-o")
        target = TARGET.search(command[output + 1])[1]
        command = command[:output] + ["-fsyntax-only"]
        source = pathlib.Path(entry["file"])
        if ROOT / "src" in source.parents:
            yield source.relative_to(ROOT), source, command
        else:
            joined.setdefault(target, ([], command))[0].append(source)
    for target, (sources, command) in joined.items():
        source = build / f"{target}.cpp"
        source.write_text("".join(f'#include "{s}"\n' for s in sources), encoding="utf-8")
        yield target, source, command


def findings(check):
    """What the compiler says about one of them."""
    name, source, command = check
    done = subprocess.run([*command, source], capture_output=True, text=True, timeout=300,
                          check=False)
    return f"{name}: {done.stderr}" if done.returncode else None


def main():
    version = sys.argv[1]
    compiler = shutil.which(f"clang++-{version}")
    headers = library_headers(version) if compiler else None
    if not headers:
        print(f"SKIPPED: no clang-{version} or libc++-{version} (tools/debian-packages, libcxx)")
        return SKIPPED
    with tempfile.TemporaryDirectory() as folder:
        build = pathlib.Path(folder)
        configure(build, compiler, headers)
        todo = list(checks(build))
        library = build / "library.cpp"
        library.write_text(RIGHT_LIBRARY.format(version=version), encoding="ascii")
        todo.append(("the library", library, todo[0][2]))
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            found = [text for text in pool.map(findings, todo) if text]
    print("\n".join([*found, f"{len(todo)} compilations, {len(found)} with findings"]))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
