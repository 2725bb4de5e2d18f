"""The running program killed at every system call of its saves, and each of them failing."""
import errno
import os
import shutil
from typing import NamedTuple

from harness.stored_lists import StoredListsTest, list_of
from harness.system_calls import Fail, Kill

# They take turns, so that each call fails in three or four ways: every other one's are the rest.
ERRORS = (errno.EIO, errno.ENOSPC, errno.EACCES, errno.EROFS, errno.EMFILE, errno.EDQUOT,
          errno.EINTR)


def count_to_last_close(calls):
    """How many calls there were until the last file was closed: the watch of the cloud folder looks
    around at a time of its own, and opens none."""
    names = [call.name for call in calls]
    return len(names) - names[::-1].index("close")


class Scene(NamedTuple):
    """What is stored when the program starts, and what it is to take in."""

    name: str
    local: bytes
    cloud: bytes
    # A list that replaces the cloud's while the program runs.
    arriving: bytes = b""
    through_links: bool = False
    write_limit: int = 0
    # The only calls to be killed at, where the others are as in another scene.
    calls: tuple = ()

    @property
    def wanted(self):
        """The list that both stores hold in the end."""
        return self.arriving or self.cloud or self.local


class KilledTest(StoredListsTest):
    """Whenever the program is killed, each file holds the old list or the new one, the next start
    shows what is stored, and the next save works and clears up."""

    limit = 500

    def setUp(self):
        super().setUp()
        self.points = set()

    def assert_killed_at(self, scene, number):
        """The program was killed at this call, one more of the points."""
        self.assertEqual(self.kestrel.process.wait(), -9)
        self.assertEqual(len(self.calls.made), number + 1)
        self.points.add((scene, number, self.calls.made[-1].name))

    def start_listened(self, fault=None, at=-1):
        self.wait_for_bus_name(owned=False)
        self.listen().arm(fault, at)
        return self.start_kestrel(prepare=self.calls.prepare)

    def kill(self, kestrel):
        kestrel.process.kill()
        self.wait_for_bus_name(owned=False)

    def test_program_killed_at_any_system_call_of_a_save(self):
        self.start_desktop(panel="fake")
        for scene, paths in (("with a cloud", (self.cloud, self.local)),
                             ("that makes the folders", (self.local,))):
            makes_folders = len(paths) == 1
            self.store(list_of("ABC"), None if makes_folders else list_of("ABC"))
            titles = self.save_twice("ABC", paths, makes_folders)
            for number in range(count_to_last_close(self.calls.made)):
                titles = self.save_twice(titles, paths, makes_folders, Kill(), number)
                self.assert_killed_at(scene, number)
        self.assertGreaterEqual(len(self.points), 100)

    def save_twice(self, titles, paths, makes_folders, fault=None, at=-1):
        """One run of the program: it shows what the run before left, saves, and meets the fault in
        a second save. The titles that are stored then."""
        kestrel = self.start_listened()
        self.open_settings()
        kestrel.wait_for_rows(list(titles))
        old = self.swap_last(titles)
        self.assert_stored(old, *paths)
        new = old[1] + old[0] + old[2]
        if makes_folders:
            shutil.rmtree(self.data)
            kestrel.wait_for_rows(list(old))
            old = None
        self.calls.arm(fault, at)
        if fault:
            self.desktop.key("Home", "alt+Down")
            kestrel.process.wait()
        else:
            self.swap_first(titles[0] + titles[2] + titles[1])
            self.kill(kestrel)
        stored = [self.read(path) for path in paths]
        wanted = {list_of(titles): titles for titles in (old, new)}
        self.assertLessEqual(set(stored), set(wanted))
        if stored[0] is None:
            self.store(list_of("ABC"))
            return "ABC"
        return wanted[stored[0]]

    def test_program_killed_at_any_system_call_while_it_takes_a_list_in(self):
        self.start_desktop(panel="fake")
        small, other = list_of("ABC"), list_of("BA")
        for scene in (Scene("the cloud's list is copied", small, other),
                      Scene("through links", small, other, through_links=True),
                      Scene("a new one arrives", small, small, arriving=other),
                      Scene("the cloud is seeded", small, b""),
                      Scene("a large list is copied", small, list_of("ABC" * 30_000),
                            write_limit=1 << 20, calls=("write", "fsync", "renameat"))):
            calls = self.calls_of(scene)
            for number, name in enumerate(calls):
                if scene.calls and name not in scene.calls:
                    continue
                self.play(scene, Kill(), number)
                self.assert_killed_at(scene.name, number)
                self.assertIn(self.read(self.local), (scene.local, scene.wanted))
                self.assertIn(self.read(self.cloud), (scene.cloud or None, scene.wanted))
                self.assert_next_start_copies(scene.wanted)
        self.assertGreaterEqual(len(self.points), 200)

    def play(self, scene, fault=None, at=-1):
        """The program starts, and the list of the scene comes to it."""
        self.store(scene.local, scene.cloud)
        if scene.through_links:
            self.move_behind_links()
        self.listen().write_limit = scene.write_limit
        if not scene.arriving:
            self.calls.arm(fault, at)
        self.wait_for_bus_name(owned=False)
        self.start_kestrel(prepare=self.calls.prepare)
        if scene.arriving:
            self.activate()
            self.calls.arm(fault, at)
            self.desktop.write(os.path.relpath(self.cloud, self.desktop.folder), scene.arriving)

    def calls_of(self, scene):
        """The names of the calls without a fault."""
        self.play(scene)
        self.wait_until(lambda: self.read(self.local) == self.read(self.cloud) == scene.wanted,
                        "the list in both stores")
        self.activate()
        names = [call.name for call in self.calls.made]
        self.kill(self.kestrel)
        return names[:count_to_last_close(self.calls.made)]

    def move_behind_links(self):
        """The list and the cloud folder are links to places elsewhere."""
        os.mkdir(os.path.join(self.data, "elsewhere"))
        for path, name in ((self.local, "launcherItems"), (os.path.dirname(self.cloud), "cloud")):
            target = os.path.join(self.data, "elsewhere", name)
            os.rename(path, target)
            os.symlink(target, path)

    def assert_next_start_copies(self, wanted):
        """A start without faults has the same list in both stores, and clears up."""
        again = self.start_kestrel()
        self.activate()
        for path in (self.local, self.cloud):
            self.assertTrue(self.read(path) == wanted, path)
        self.assertEqual(self.leftovers(), [])
        self.kill(again)


class FailingCallsTest(StoredListsTest):
    """A call that fails costs at most what it is part of: one save, or one list from outside."""

    limit = 300

    def start_with_cloud(self):
        self.start_desktop(panel="fake")
        self.store(list_of("ABC"), list_of("ABC"))
        self.start_kestrel(prepare=self.listen().prepare)
        self.open_settings()
        self.kestrel.wait_for_rows(list("ABC"))

    def faults(self, calls, first=0):
        """Has each of the calls from `first` on fail in turn; gives its number and a text for the
        fault."""
        count = 0
        for number, call in list(enumerate(calls))[first:]:
            for error in ERRORS[number % 2::2]:
                self.calls.arm(Fail(error), number)
                yield number, f"{errno.errorcode[error]} from call {number}, {call}"
                count += 1
        self.assertGreater(count, 100)
        self.assertTrue(self.kestrel.process.is_running)

    def test_every_system_call_of_a_save_fails_and_the_program_goes_on(self):
        self.start_with_cloud()
        self.calls.arm()
        titles = self.swap_first("ABC")
        calls = self.calls.made[:count_to_last_close(self.calls.made)]
        for number, fault in self.faults(calls):
            old, titles = titles, self.swap_first(titles)
            self.assertGreater(len(self.calls.made), number)
            for path in (self.local, self.cloud):
                self.assertIn(self.read(path), (list_of(old), list_of(titles)), fault)
            self.calls.arm()
            titles = self.swap_last(titles)
            self.assert_stored(titles, self.local, self.cloud)

    def arrive(self, titles):
        """The cloud gets another machine's list: with the first item moved to the end."""
        titles = titles[1:] + titles[0]
        self.desktop.write(os.path.relpath(self.cloud, self.desktop.folder), list_of(titles))
        return titles

    def test_every_system_call_fails_while_a_list_is_taken_in_and_the_next_one_is(self):
        self.start_with_cloud()
        self.calls.arm()
        titles = self.arrive("ABC")
        self.kestrel.wait_for_rows(list(titles))
        calls = self.calls.made[:count_to_last_close(self.calls.made)]
        # Before the list is opened the program looks twice whether there is a cloud folder, and
        # before that at the way to it, for the watch.
        first = [call.name for call in calls].index("openat") - 2
        for number, fault in self.faults(calls, first):
            old, titles = titles, self.arrive(titles)
            self.wait_until(lambda n=number: len(self.calls.made) > n, fault)
            self.assertIn(self.kestrel.rows(), (list(old), list(titles)), fault)
            self.assertIn(self.read(self.local), (list_of(old), list_of(titles)), fault)
            self.calls.arm()
            titles = self.arrive(titles)
            self.kestrel.wait_for_rows(list(titles))
            self.assert_stored(titles, self.local, self.cloud)
