"""The running program on disks that are full, closed or pulled away under it: it goes on with its
list on the screen, what is stored stays whole, and it saves again as soon as it can."""
import errno
import os
import resource
import shutil
import stat

from harness.mounts import Mounts, can_mount
from harness.program import Kestrel, has_sanitizer
from harness.stored_lists import StoredListsTest, list_of

EMPTY_SIZE = 64 * 1024


def mode_of(path):
    return stat.S_IMODE(os.lstat(path).st_mode)


class DiskTest(StoredListsTest):
    """The program as started by the tests below."""

    def start_program(self, command, titles="ABC"):
        """Starts the program in a special way; its settings window then shows that list."""
        self.kestrel = Kestrel(self.desktop, command)
        self.open_settings()
        if titles:
            self.kestrel.wait_for_rows(list(titles))
        else:
            self.kestrel.accessible.find("push button", "Add First Item")
        return titles

    def start(self, titles="ABC"):
        return self.start_program([os.environ["KESTREL_PROGRAM"]], titles)

    def end(self):
        self.kestrel.process.kill()
        self.wait_for_bus_name(owned=False)

    def assert_saves_again(self, titles):
        """Saves work again, and the next start shows the saved list."""
        titles = self.swap_first(titles)
        self.assert_stored(titles, self.local)
        return titles


class DataFolderTest(DiskTest):
    """The data folder is an ordinary one, and something happens to it."""

    def test_data_folder_taken_away_is_made_anew_by_the_next_save(self):
        self.start_desktop(panel="fake")
        self.store(list_of("ABC"))
        titles = self.start()
        away = self.desktop.path("away")

        shutil.rmtree(self.folder)
        titles = self.assert_saves_again(titles)
        self.assertEqual((mode_of(self.folder), mode_of(self.local)), (0o700, 0o600))

        os.rename(self.folder, away)
        titles = self.assert_saves_again(titles)
        self.assertEqual(sorted(os.listdir(away)), ["lastLocalSync", "launcherItems"])
        shutil.rmtree(away)

        for obstacle in ("file", "dangling link", "folder in the list's place"):
            titles = self.assert_obstacle_costs_one_save(obstacle, titles)

    def assert_obstacle_costs_one_save(self, obstacle, titles):
        place = self.local if "list's place" in obstacle else self.folder
        os.rename(place, place + ".kept")
        {"file": lambda: open(place, "x", encoding="ascii").close(),
         "dangling link": lambda: os.symlink("/nowhere/at/all", place),
         "folder in the list's place": lambda: os.makedirs(place + "/inside")}[obstacle]()
        before = os.lstat(place)
        titles = self.swap_last(titles)
        self.assertEqual(os.lstat(place).st_ino, before.st_ino)
        if stat.S_ISDIR(before.st_mode):
            shutil.rmtree(place)
        else:
            os.unlink(place)
        os.rename(place + ".kept", place)
        return self.assert_saves_again(titles)

    def test_limits_of_the_process_cost_a_save_and_no_more(self):
        self.start_desktop(panel="fake")
        self.store(list_of("ABC"), list_of("ABC"))
        titles = self.start()
        process = self.kestrel.process.pid
        used = {int(name) for name in os.listdir(f"/proc/{process}/fd")}
        unused = next(number for number in range(1000) if number not in used)
        limits = [(resource.RLIMIT_FSIZE, 0), (resource.RLIMIT_FSIZE, 100)]
        # The sanitizer for undefined behaviour takes every object for a wrong one while it cannot
        # open the pipe through which it looks at memory.
        if not has_sanitizer():
            limits.append((resource.RLIMIT_NOFILE, unused))
        for limit, value in limits:
            before = resource.prlimit(process, limit)
            stored = titles
            resource.prlimit(process, limit, (value, before[1]))
            titles = self.swap_last(titles)
            resource.prlimit(process, limit, before)
            self.assert_stored(stored, self.local, self.cloud)
            titles = self.swap_first(titles)
            self.assert_stored(titles, self.local, self.cloud)

    def test_without_the_right_to_the_files_the_screen_keeps_its_list(self):
        self.start_desktop(panel="fake")
        self.store(list_of("ABC"))
        program = [os.environ["KESTREL_PROGRAM"]]
        if os.geteuid() == 0:
            # What makes root pass by all permissions.
            program = ["setpriv", "--bounding-set=-dac_override,-dac_read_search", *program]
        self.start_program(program)
        titles = "ABC"
        for mode in (0o000, 0o500, 0o300):
            os.chmod(self.folder, mode)
            stored, titles = titles, self.swap_last(titles)
            os.chmod(self.folder, 0o700)
            self.assert_stored(stored, self.local)
            titles = self.assert_saves_again(titles)
        os.chmod(self.local, 0)
        titles = self.assert_saves_again(titles)
        self.assertEqual(mode_of(self.local), 0o600)

        os.chmod(self.local, 0)
        self.end()
        self.start_program(program, "")
        self.assertEqual(mode_of(self.local), 0)
        os.chmod(self.local, 0o600)
        self.assert_stored(titles, self.local)


class MountedDataTest(DiskTest):
    """The data folder is a file system of its own."""

    def start_mounted(self, *folders):
        """A desktop with the data folder mounted, and these."""
        if not can_mount():
            self.skipTest("this machine lets nobody make a mount namespace")
        self.start_desktop(panel="fake")
        self.mounts = Mounts(self.desktop.environment)
        for folder in ("data", *folders):
            self.mounts.mount(self.desktop.path(folder), EMPTY_SIZE)
        self.data = self.mounts.path(self.data)
        os.mkdir(self.folder, 0o700)
        with open(self.local, "wb") as file:
            file.write(list_of("ABC"))

    def start(self, titles="ABC"):
        return self.start_program(self.mounts.command(os.environ["KESTREL_PROGRAM"]), titles)

    def fill(self):
        with open(os.path.join(self.data, "filler"), "wb", 0) as file:
            try:
                while True:
                    file.write(b"x" * 4096)
            except OSError as full:
                self.assertEqual(full.errno, errno.ENOSPC)

    def free(self):
        os.unlink(os.path.join(self.data, "filler"))

    def test_full_disk_costs_saves_only_while_it_is_full(self):
        self.start_mounted()
        self.fill()
        titles = self.start()
        for _ in range(3):
            titles = self.swap_first(self.swap_last(titles))
            self.assertEqual(self.read(self.local), list_of("ABC"))
        self.end()
        self.start("ABC")
        titles = self.swap_last("ABC")
        self.free()
        titles = self.assert_saves_again(titles)
        self.fill()
        self.swap_last(titles)
        self.free()
        self.assert_stored(titles, self.local)
        self.end()
        self.start(titles)

    def test_read_only_disk_costs_saves_only_while_it_is_one(self):
        folders = ("home", "config", "cache", "state")
        self.start_mounted(*folders)
        mounted = self.desktop.path("data")
        for folder in ("data", *folders):
            self.mounts.remount(self.desktop.path(folder), "ro")
        titles = self.swap_last(self.start())
        self.assert_stored("ABC", self.local)
        self.mounts.remount(mounted, "rw")
        titles = self.assert_saves_again(titles)
        self.mounts.remount(mounted, "ro")
        self.swap_last(titles)
        self.end()
        self.start(titles)
