#!/usr/bin/env python3
"""Tests of which packages tools/setup.sh installs, on a system of the test's own: its dpkg-query,
apt-cache and apt-get are scripts that read and write files.

    tests/checks/setup_test.py
"""
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

TOOLS = pathlib.Path(__file__).resolve().parents[2] / "tools"
PACKAGES = "one: plain\ntwo: new-name|old-name other\none: second\n"
DPKG_QUERY = """
for package in "$@"; do
    grep -qxF "$package" "$SYSTEM/installed" && echo "installed $package"
done
exit 1
"""
# As the real one, it says of a name that others only provide that there is none to install.
APT_CACHE = """
echo "apt-cache $*" >>"$SYSTEM/log"
for package in "$@"; do
    if grep -qxF "$package" "$SYSTEM/index"; then
        printf '%s:\\n  Installed: (none)\\n  Candidate: 1\\n  Version table:\\n     1 500\\n' $package
    elif [ "$package" = provided-name ]; then
        printf '%s:\\n  Installed: (none)\\n  Candidate: (none)\\n  Version table:\\n' $package
    fi
done
"""
APT_GET = """
echo "apt-get $*" >>"$SYSTEM/log"
case "$1" in
    update) cp "$SYSTEM/archive" "$SYSTEM/index" ;;
    install)
        for word in "$@"; do
            case "$word" in -* | install) continue ;; esac
            grep -qxF "$word" "$SYSTEM/index" || exit 100
        done ;;
esac
"""


class SetupTest(unittest.TestCase):
    """`folder` has the script, its list of packages and the system's state, each in a file."""

    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        shutil.copy(TOOLS / "setup.sh", self.folder)
        commands = self.folder / "bin"
        commands.mkdir()
        for name, text in (("dpkg-query", DPKG_QUERY), ("apt-cache", APT_CACHE),
                           ("apt-get", APT_GET), ("sudo", '\nexec "$@"\n')):
            (commands / name).write_text("#!/bin/sh" + text, encoding="utf-8")
            (commands / name).chmod(0o755)
        self.write("debian-packages", PACKAGES)
        self.have(installed=[], index=[], archive=[])

    def write(self, name, text):
        (self.folder / name).write_text(text, encoding="utf-8")

    def have(self, **state):
        """What is installed, what the index of packages has, and what a new one would have."""
        for name, packages in state.items():
            self.write(name, "".join(f"{package}\n" for package in packages))

    def setup(self, *groups):
        """(exit status, what apt was asked for)"""
        self.write("log", "")
        environment = {name: value for name, value in os.environ.items()
                       if name != "KESTREL_SKIP_SETUP"}
        environment.update(PATH=f"{self.folder / 'bin'}:{os.environ['PATH']}",
                           SYSTEM=str(self.folder))
        done = subprocess.run([self.folder / "setup.sh", *groups], env=environment,
                              capture_output=True, text=True, check=False, timeout=30)
        log = (self.folder / "log").read_text(encoding="utf-8").splitlines()
        return done.returncode, [line for line in log if line.startswith("apt-get")]

    def installing(self, *packages):
        return f"apt-get install -y -q --no-install-recommends {' '.join(packages)}"

    def test_nothing_is_asked_of_apt_when_nothing_is_missing(self):
        self.have(installed=["plain", "second", "new-name", "other"])
        self.assertEqual(self.setup("one", "two"), (0, []))
        self.assertEqual((self.folder / "log").read_text(encoding="utf-8"), "")

    def test_only_what_is_missing_is_installed(self):
        self.have(installed=["plain"], index=["plain", "second"])
        self.assertEqual(self.setup("one"), (0, [self.installing("second")]))

    def test_first_alternative_that_the_system_has_is_taken(self):
        for index, chosen in ((["new-name", "old-name", "other"], "new-name"),
                              (["old-name", "other"], "old-name")):
            with self.subTest(index):
                self.have(index=index)
                self.assertEqual(self.setup("two"), (0, [self.installing(chosen, "other")]))

    def test_alternative_that_is_only_provided_is_passed_over(self):
        self.write("debian-packages", "two: provided-name|old-name\n")
        self.have(index=["old-name"])
        self.assertEqual(self.setup("two"), (0, [self.installing("old-name")]))

    def test_later_alternative_counts_only_where_there_is_no_earlier(self):
        self.have(installed=["old-name", "other"], index=["old-name", "other"])
        self.assertEqual(self.setup("two"), (0, []))
        self.have(index=["new-name", "old-name", "other"])
        self.assertEqual(self.setup("two"), (0, [self.installing("new-name")]))

    def test_without_an_index_it_is_fetched_before_the_choice(self):
        self.have(archive=["old-name", "other"])
        self.assertEqual(self.setup("two"),
                         (0, [self.installing("new-name", "other"), "apt-get update -q",
                              self.installing("old-name", "other")]))

    def test_what_no_system_has_is_a_failure(self):
        self.have(archive=["other"])
        status, _ = self.setup("two")
        self.assertEqual(status, 1)

    def test_every_line_of_the_real_list_is_a_group_and_its_packages(self):
        name = r"[a-z0-9][a-z0-9+.-]+"
        line = re.compile(rf"[a-z]+:( +{name}(\|{name})*)+")
        for text in (TOOLS / "debian-packages").read_text(encoding="utf-8").splitlines():
            if text and not text.startswith("#"):
                self.assertRegex(text, rf"\A{line.pattern}\Z")


if __name__ == "__main__":
    unittest.main()
