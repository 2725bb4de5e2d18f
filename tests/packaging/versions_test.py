#!/usr/bin/env python3
"""Tests of tools/check_versions.py: it finds each place that tells another version."""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
import check_versions  # noqa: E402

TREE = {
    "CMakeLists.txt": "cmake_minimum_required(VERSION 3.25)\nproject(kestrel\n  VERSION 1.2.3\n",
    "packaging/app.kestrel.Kestrel.metainfo.xml":
        '<releases>\n<release version="1.2.3" date="2026-01-02"/>\n<release version="1.2.2"/>\n',
    "CHANGELOG.md": "# Changelog\n\n## 1.2.3 - 2026-01-02\n\n- New.\n\n## 1.2.2\n",
    "debian/changelog": "kestrel (1.2.3) unstable; urgency=medium\n\nkestrel (1.2.2) unstable;\n",
    "packaging/rpm/kestrel.spec":
        "Version:        1.2.3\n%changelog\n* Fri Jan 02 2026 Somebody <a@b.example> - 1.2.3-1\n",
    "packaging/arch/PKGBUILD": "pkgver=1.2.3\n",
    "docs/macos.md": "packaging/macos/notarize.sh build/macos/Kestrel-1.2.3.dmg\n",
}


class Tree(unittest.TestCase):
    """A tree of the test's own with nothing but the files that tell a version."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        for path, text in TREE.items():
            self.write(path, text)

    def write(self, path, text):
        (self.root / path).parent.mkdir(parents=True, exist_ok=True)
        (self.root / path).write_text(text, encoding="utf-8")

    def git(self, *words):
        subprocess.run(["git", "-C", self.root, "-c", "user.name=a", "-c", "user.email=a@b.example",
                        *words], check=True, capture_output=True, timeout=30)


class VersionsTest(Tree):
    """Each place by itself."""

    def faults(self):
        return check_versions.faults(self.root)[1]

    def tag(self, name):
        if not (self.root / ".git").exists():
            self.git("init", "-q")
            self.git("commit", "-q", "--allow-empty", "-m", "a")
        self.git("tag", name)

    def test_files_that_agree_have_no_fault(self):
        self.assertEqual(self.faults(), [])

    def test_each_file_with_another_version_is_a_fault(self):
        for path, text in TREE.items():
            with self.subTest(path):
                self.write(path, text.replace("1.2.3", "1.2.4"))
                self.assertTrue(self.faults())
                self.write(path, text)

    def test_each_file_that_tells_none_is_a_fault(self):
        for path, text in TREE.items():
            with self.subTest(path):
                self.write(path, re.sub(r"\d\.\d\.\d", "soon", text))
                self.assertTrue(self.faults())
                self.write(path, text)

    def test_later_unreleased_changes_are_no_fault(self):
        self.write("CHANGELOG.md", "## Unreleased\n\n- Newer.\n\n" + TREE["CHANGELOG.md"])
        self.assertEqual(self.faults(), [])

    @unittest.skipUnless(shutil.which("git"), "git is not installed")
    def test_tag_has_to_name_the_version(self):
        self.tag("v1.2.3")
        self.tag("good")
        self.assertEqual(self.faults(), [])
        self.tag("v1.3.0")
        self.assertEqual(self.faults(), ["the tag v1.3.0 stands at 1.2.3"])

    @unittest.skipUnless(shutil.which("git"), "git is not installed")
    def test_tagged_commit_has_no_unreleased_changes(self):
        self.tag("v1.2.3")
        self.write("CHANGELOG.md", "## Unreleased\n\n- Newer.\n\n" + TREE["CHANGELOG.md"])
        self.assertEqual(self.faults(), ["CHANGELOG.md: unreleased changes in a tagged commit"])


if __name__ == "__main__":
    unittest.main()
