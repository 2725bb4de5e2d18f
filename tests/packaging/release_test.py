#!/usr/bin/env python3
"""Tests of packaging/make_release.sh: what it makes of a commit, and of which it makes nothing."""
import pathlib
import shutil
import subprocess
import sys
import tarfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
import versions_test  # noqa: E402

ROOT = pathlib.Path(__file__).resolve().parents[2]
SCRIPTS = ("packaging/make_release.sh", "tools/check_versions.py", "tools/release_notes.sh")
SKIPPED = 77


class ReleaseTest(versions_test.Tree):
    """Of a repository of its own, whose files say little more than the version."""

    def setUp(self):
        super().setUp()
        for script in SCRIPTS:
            (self.root / script).parent.mkdir(exist_ok=True)
            shutil.copy(ROOT / script, self.root / script)
        self.commit()

    def commit(self):
        self.git("init", "-q")
        self.git("add", "-A")
        self.git("commit", "-q", "-m", "a")

    def make(self, root, folder):
        return subprocess.run([root / SCRIPTS[0], folder], check=False, capture_output=True,
                              text=True, timeout=60)

    def release(self, root=None):
        """The folder of the release that is made of a clone, or else of the repository itself."""
        root = root or self.root
        folder = root / "release"
        result = self.make(root, folder)
        self.assertEqual(result.returncode, 0, result.stderr)
        return folder

    def test_archive_is_whole_below_one_folder(self):
        with tarfile.open(self.release() / "kestrel-1.2.3.tar.gz") as archive:
            files = {member.name for member in archive if member.isfile()}
        self.assertEqual(files, {f"kestrel-1.2.3/{path}"
                                 for path in (*versions_test.TREE, *SCRIPTS)})

    def test_checksums_hold(self):
        folder = self.release()
        self.assertEqual((folder / "SHA256SUMS").read_text(encoding="ascii").split()[1:],
                         ["kestrel-1.2.3.tar.gz"])
        subprocess.run(["sha256sum", "--check", "--strict", "SHA256SUMS"], cwd=folder, check=True,
                       capture_output=True, timeout=30)

    def test_changes_are_those_of_the_version(self):
        self.assertEqual((self.release() / "CHANGES.md").read_text(encoding="utf-8"), "- New.\n")

    def test_clone_elsewhere_makes_the_same_bytes(self):
        clone = self.root / "a/clone"
        self.git("clone", "-q", str(self.root), str(clone))
        (clone / "CHANGELOG.md").touch()
        releases = [self.release(root) for root in (self.root, clone)]
        for name in ("SHA256SUMS", "kestrel-1.2.3.tar.gz", "CHANGES.md"):
            self.assertEqual(*((release / name).read_bytes() for release in releases), name)

    def assert_nothing_is_made(self, reason):
        result = self.make(self.root, self.root / "release")
        self.assertEqual(result.returncode, 1)
        self.assertIn(reason, result.stderr)
        self.assertFalse((self.root / "release").exists())

    def test_nothing_is_made_of_versions_that_differ(self):
        self.write("debian/changelog", "kestrel (1.2.2) unstable;\n")
        self.commit()
        self.assert_nothing_is_made("the version is not told alike")

    def test_nothing_is_made_of_changes_that_are_not_committed(self):
        self.write("docs/macos.md", versions_test.TREE["docs/macos.md"] + "More.\n")
        self.assert_nothing_is_made("there are changes not committed")


if __name__ == "__main__":
    if not shutil.which("git"):
        print("git is not installed", file=sys.stderr)
        sys.exit(SKIPPED)
    unittest.main()
