"""The many ways in which a list may be written into the cloud folder while the program runs."""
import itertools
import os
import threading
import time

from harness.cloud import CloudCase, items
from harness.processes import wait_for
from harness.program import encoded, has_sanitizer, popover_height

# Three lists of one length.
LISTS = [["Alpha", "Bravo"], ["Delta", "Gamma"], ["Omega", "Sigma"]]


class WritersTest(CloudCase):
    """Whole lists are shown and stored, and no others."""

    def start_with_popover(self, *titles):
        os.mkdir(self.cloud)
        self.put(encoded(items(*titles)))
        self.start_kestrel().open_popover()
        self.kestrel.wait_for_rows(list(titles))
        return self.kestrel

    def assert_takes_in(self, data, titles):
        self.kestrel.wait_for_rows(titles)
        self.wait_until(lambda: self.kestrel.stored() == data == self.in_cloud(),
                        "the list in both stores")

    def test_list_written_in_place_in_slow_pieces_shows_when_it_is_whole(self):
        kestrel = self.start_with_popover("Alpha", "Bravo", "Charlie")
        old, new = encoded(items("Alpha", "Bravo", "Charlie")), encoded(items("Delta", "Echo"))
        # Shorter than the time that an unfinished writing may keep to itself, and longer.
        for pause, (data, titles), shown in (
                (0.1, (new, ["Delta", "Echo"]), (old, ["Alpha", "Bravo", "Charlie"])),
                (0.7, (old, ["Alpha", "Bravo", "Charlie"]), (new, ["Delta", "Echo"]))):
            def keeps_the_last(shown=shown):
                return (kestrel.stored(), kestrel.rows()) == shown
            with open(os.path.join(self.cloud, "launcherItems"), "wb", buffering=0) as file:
                self.assert_stays(keeps_the_last, pause)
                for start in range(0, len(data) - 1, len(data) // 4):
                    file.write(data[start:min(start + len(data) // 4, len(data) - 1)])
                    self.assert_stays(keeps_the_last, pause)
                file.write(data[-1:])
            self.assert_takes_in(data, titles)

    def test_list_that_is_removed_before_it_is_replaced_is_not_put_back(self):
        self.start_with_popover(*LISTS[0])
        path = os.path.join(self.cloud, "launcherItems")
        for titles in LISTS[1:] * 5:
            data = encoded(items(*titles))
            os.remove(path)
            self.assert_stays(lambda: not os.path.exists(path), 0.1)
            self.put(data)
            self.assert_takes_in(data, titles)

    def test_list_that_is_removed_for_good_comes_back_from_the_local_store(self):
        self.start_with_popover(*LISTS[0])
        os.remove(os.path.join(self.cloud, "launcherItems"))
        self.assert_takes_in(encoded(items(*LISTS[0])), LISTS[0])
        os.rename(os.path.join(self.cloud, "launcherItems"), self.desktop.path("away"))
        self.assert_takes_in(encoded(items(*LISTS[0])), LISTS[0])

    def test_changes_of_one_size_and_age_are_all_seen(self):
        self.start_with_popover(*LISTS[0])
        path = os.path.join(self.cloud, "launcherItems")
        age = os.stat(path).st_mtime_ns // 10**9 * 10**9
        for titles in LISTS[1:] * 3:
            data = encoded(items(*titles))
            self.put(data, age=age)
            self.assert_takes_in(data, titles)
            data = encoded(items(*LISTS[0]))
            with open(path, "r+b") as file:
                file.write(data)
                file.flush()
                os.utime(file.fileno(), ns=(age, age))
            self.assert_takes_in(data, LISTS[0])
            self.assertEqual((os.stat(path).st_mtime_ns, os.stat(path).st_size), (age, len(data)))

    def test_files_beside_the_list_are_never_taken_for_it(self):
        names = [".syncthing.launcherItems.tmp", "launcherItems.sync-conflict-20260101-120000-ABC",
                 "~syncthing~launcherItems.tmp", "launcherItems~", "launcherItems.part",
                 ".launcherItems.swp", "launcherItems (conflicted copy)", "LauncherItems"]

        def put_all(*titles):
            for name in names:
                with open(os.path.join(self.cloud, name), "wb") as file:
                    file.write(encoded(items(*titles)))
        os.mkdir(self.cloud)
        put_all("Wrong")
        kestrel = self.start_kestrel()
        self.assertEqual(kestrel.open_popover().rect.height, popover_height(0))
        self.put(encoded(items(*LISTS[0])))
        kestrel.wait_for_rows(LISTS[0])
        put_all("Wrong", "Again")
        self.assert_stays(lambda: kestrel.rows() == LISTS[0], 0.8)
        self.assert_takes_in(encoded(items(*LISTS[0])), LISTS[0])
        self.assertEqual(sorted(os.listdir(self.cloud)), sorted([*names, "launcherItems"]))

    def test_popover_answers_through_ten_thousand_changes_and_shows_the_last(self):
        kestrel = self.start_with_popover(*LISTS[0])
        kestrel.activate()
        kestrel.wait_for_no_popover()
        # Of a size that makes up for much if it were kept.
        texts = [encoded([{**one, "command": "x" * 5_000} for one in items(*titles)])
                 for titles in LISTS]
        done, finish = itertools.count(), threading.Event()
        written = [0]

        def write():
            for number in done:
                if number >= 10_000 and finish.is_set():
                    break
                self.put(texts[number % 3])
                written[0] = number + 1
                if number % 50 == 0:
                    time.sleep(0.01)    # or only the writer runs on a machine with one processor
        writer = threading.Thread(target=write)
        writer.start()
        try:
            sizes = []
            for _ in range(8):
                kestrel.open_popover()
                self.assertLessEqual(set(wait_for(kestrel.rows)), set(itertools.chain(*LISTS)))
                self.desktop.key("Escape")
                kestrel.wait_for_no_popover()
                sizes.append((written[0], kestrel.own_memory()))
            wait_for(lambda: written[0] >= 10_000, 40, "ten thousand changes")
        finally:
            finish.set()
            writer.join()
        last = ["Last", "Of all"]
        self.put(encoded(items(*last)))
        kestrel.open_popover()
        self.assert_takes_in(encoded(items(*last)), last)
        # From the third opening on: until then icons and glyphs are loaded.
        if not has_sanitizer():
            self.assertLess(kestrel.own_memory() - sizes[2][1], 2048, sizes)
