"""What the program stores is its user's alone, and nothing that lies in its way makes it write,
read or delete anything else."""
import os
import socket
import stat
import time

from harness.case import DesktopTest
from harness.program import encoded, item, store_before_start

FIRST = item("App", "First", "/opt/first", "00000000-0000-4000-8000-000000000001")
NEW = ("Inline Command", "New", "true")


def mode(path):
    return stat.S_IMODE(os.lstat(path).st_mode)


def machine_tag():
    """What marks this machine's unfinished files; see nextTemporaryName()."""
    try:
        with open("/etc/machine-id", encoding="ascii") as file:
            identity = file.readline().strip()
    except OSError:
        identity = ""
    text = "kestrel " + (identity or socket.gethostname())
    value = 2166136261
    for byte in text.encode():
        value = (value ^ byte) * 16777619 % 2 ** 32
    return f"{value:08x}"


class FilesTest(DesktopTest):
    """A save is made through the settings window, as the user makes one."""

    def setUp(self):
        super().setUp()
        self.start_desktop(panel="fake")

    def path(self, *parts):
        return self.desktop.path("data", "kestrel", *parts)

    def save(self, before=(), umask=None):
        """One run of the program that adds an item to the list `before`."""
        command = [os.environ["KESTREL_PROGRAM"]]
        if umask is not None:
            command = ["/bin/sh", "-c", f"umask {umask:03o}; exec \"$0\"", *command]
        kestrel = self.start_kestrel(command=command)
        kestrel.open_settings()
        kestrel.add(*NEW, opener="Add" if before else "Add First Item")
        kestrel.wait_for_rows([record["title"] for record in before] + ["New"])
        self.assertEqual(kestrel.quit(), 0)

    def assert_private(self, *names):
        for name in names:
            self.assertEqual((name, oct(mode(self.path(name)))), (name, oct(0o600)))

    def test_stored_files_are_the_users_alone_whatever_the_umask(self):
        os.rename(self.desktop.path("data"), self.desktop.path("unused"))
        for umask in (0o000, 0o022, 0o077, 0o777):
            with self.subTest(oct(umask)):
                self.save(umask=umask)
                self.assertEqual(oct(mode(self.desktop.path("data"))), oct(0o700))
                self.assertEqual(oct(mode(self.path())), oct(0o700))
                self.assert_private("launcherItems", "lastLocalSync")
                os.rename(self.desktop.path("data"), self.desktop.path(f"data-{umask}"))

    def test_copies_in_the_cloud_folder_are_the_users_alone_whatever_the_umask(self):
        for umask in (0o000, 0o022, 0o777):
            with self.subTest(oct(umask)):
                os.makedirs(self.path("cloud"), 0o755)
                self.save(umask=umask)
                self.assert_private("launcherItems", "lastLocalSync", "cloud/launcherItems")
                # The folder is not the program's.
                self.assertEqual(oct(mode(self.path("cloud"))), oct(0o755))
                os.rename(self.path(), self.desktop.path(f"kestrel-{umask}"))

    def test_files_that_others_could_read_are_closed_by_the_next_save(self):
        store_before_start(self.desktop, [FIRST])
        self.desktop.write("data/kestrel/cloud/launcherItems", encoded([FIRST]), 0o666)
        self.desktop.write("data/kestrel/lastLocalSync", "2001-01-01T00:00:00Z", 0o666)
        os.chmod(self.path("launcherItems"), 0o666)
        os.chmod(self.path(), 0o755)
        self.save(before=[FIRST])
        self.assert_private("launcherItems", "lastLocalSync", "cloud/launcherItems")
        # Whoever opened the folder meant it; the program closes only what it makes.
        self.assertEqual(oct(mode(self.path())), oct(0o755))

    def test_list_that_is_a_link_stays_one_and_its_target_is_replaced(self):
        target = self.desktop.write("home/dotfiles/list", encoded([FIRST]), 0o644)
        os.makedirs(self.path("cloud"), 0o700)
        os.symlink(target, self.path("launcherItems"))
        self.save(before=[FIRST])
        self.assertEqual(os.readlink(self.path("launcherItems")), target)
        self.assertEqual(oct(mode(target)), oct(0o600))
        self.assertEqual(len(self.kestrel.stored_items()), 2)
        self.assertTrue(self.kestrel.is_stored(self.kestrel.stored()))
        self.assertEqual(os.listdir(os.path.dirname(target)), ["list"])

    def test_what_is_no_file_in_the_place_of_the_list_is_left_alone(self):
        """Nor is it waited for: a pipe without a writer would hold the program for ever."""
        outside = self.desktop.path("home", "outside")
        os.mkdir(outside)
        os.makedirs(self.path())
        place = self.path("launcherItems")
        for make in (os.mkfifo, os.mkdir, lambda path: os.symlink(outside, path),
                     lambda path: os.symlink("/dev/null", path),
                     lambda path: os.symlink("launcherItems", path)):
            make(place)
            before = os.lstat(place)
            self.save()
            after = os.lstat(place)
            self.assertEqual((after.st_ino, after.st_mode), (before.st_ino, before.st_mode))
            self.assertEqual(os.listdir(outside), [])
            self.assertTrue(stat.S_ISCHR(os.stat("/dev/null").st_mode))
            (os.rmdir if stat.S_ISDIR(after.st_mode) else os.unlink)(place)

    def test_planted_unfinished_files_redirect_no_save(self):
        victim = self.desktop.write("home/victim", "untouched", 0o644)
        store_before_start(self.desktop, [FIRST])
        os.mkdir(self.path("cloud"))
        for folder in ("", "cloud"):
            for number in range(1, 5):
                os.symlink(victim, self.path(
                    folder, f".launcherItems.kestrel-{machine_tag()}-00000000-{number}.tmp"))
            os.symlink(victim, self.path(folder, ".launcherItems.tmp"))
            os.mkdir(self.path(folder, f".launcherItems.kestrel-{machine_tag()}-12345678-1.tmp"))
        self.save(before=[FIRST])
        with open(victim, encoding="ascii") as file:
            self.assertEqual(file.read(), "untouched")
        self.assertEqual(oct(mode(victim)), oct(0o644))
        self.assert_private("launcherItems", "lastLocalSync", "cloud/launcherItems")
        # Links of the program's own naming went as leftovers; what is not of that kind stays.
        self.assertEqual(sorted(os.listdir(self.path("cloud"))), [
            f".launcherItems.kestrel-{machine_tag()}-12345678-1.tmp", ".launcherItems.tmp",
            "launcherItems"])

    def leftover(self, name, permissions=0o700, age=7200):
        """A folder as an earlier launch leaves it, with a link in it."""
        folder = self.desktop.path("run", f"kestrel-launch-{name}")
        os.mkdir(folder)
        os.symlink(self.victim, os.path.join(folder, "cmd"))
        os.chmod(folder, permissions)
        then = time.time() - age
        os.utime(folder, (then, then))
        return folder

    def test_sweeping_old_launches_deletes_nothing_else(self):
        self.victim = self.desktop.write("home/victim", "untouched", 0o644)
        folder = self.desktop.path("home", "victims")
        self.desktop.write("home/victims/cmd", "untouched")
        os.chmod(folder, 0o700)
        link = self.desktop.path("run", "kestrel-launch-link")
        os.symlink(folder, link)
        os.mkfifo(self.desktop.path("run", "kestrel-launch-pipe"))
        for path in (folder, link):
            os.utime(path, (1, 1), follow_symlinks=False)
        old = self.leftover("old")
        kept = [self.leftover("young", age=60), self.leftover("open", 0o755),
                self.desktop.path("run", "kestrel-launch-pipe"), link]
        if os.geteuid() == 0:
            kept.append(self.leftover("others"))
            os.chown(kept[-1], 65534, 65534)
        kestrel = self.start_kestrel()
        kestrel.open_popover()
        self.wait_until(lambda: not os.path.lexists(old), "the old launch to go")
        for path in kept:
            self.assertTrue(os.path.lexists(path), path)
        self.assertEqual(os.listdir(folder), ["cmd"])
        self.assertTrue(os.path.exists(self.victim))
