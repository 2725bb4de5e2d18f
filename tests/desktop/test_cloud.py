"""The running program and its cloud folder: which list wins, and a folder that comes and goes."""
import json
import os
import shutil
import time

from harness.cloud import COMMAND, CloudCase, items
from harness.program import encoded, item, popover_height

BROKEN = b'[{"id":"00000000-0000-4000-8000-0000'
NO_FOLDER, NOTHING = "no folder", None


def indented(*titles):
    """The bytes of a list, laid out in another way than the program does."""
    return json.dumps(items(*titles), indent=1).encode()


LOCAL, CLOUD = indented("Local"), indented("Cloud")


class LoadTest(CloudCase):
    """What each outcome of a load shows and writes, to the byte."""

    def assert_load(self, cloud, local, shown, cloud_after, local_after, date=False):
        """A start with those bytes in the two stores shows a list, leaves those bytes, writes or
        does not write the date, and does not touch a file whose bytes stay the same."""
        self.clear()
        if cloud != NO_FOLDER:
            os.mkdir(self.cloud)
        if cloud not in (NO_FOLDER, NOTHING):
            self.put(cloud)
        if local is not NOTHING:
            self.put(local, self.data)
        before = self.state()
        kestrel = self.start_kestrel()
        self.assertEqual(kestrel.open_popover().rect.height, popover_height(len(shown)))
        if shown:
            kestrel.wait_for_rows(shown)
        self.assertEqual(kestrel.quit(), 0)
        after = self.state()
        self.assertEqual((self.in_cloud(), self.read("launcherItems")), (cloud_after, local_after))
        self.assertEqual("lastLocalSync" in after, date)
        for name, found in before.items():
            if after[name][0] == found[0]:
                self.assertEqual(after[name], found)
        self.assertEqual(os.path.isdir(self.cloud), cloud != NO_FOLDER)

    def test_without_a_cloud_folder_the_local_list_is_shown_and_nothing_is_written(self):
        self.assert_load(NO_FOLDER, LOCAL, ["Local"], None, LOCAL)
        self.assert_load(NO_FOLDER, BROKEN, [], None, BROKEN)
        self.assert_load(NO_FOLDER, NOTHING, [], None, None)

    def test_list_in_the_cloud_wins_over_whatever_is_local(self):
        for local in (LOCAL, BROKEN, NOTHING):
            self.assert_load(CLOUD, local, ["Cloud"], CLOUD, CLOUD, date=True)
        self.assert_load(b"[]", LOCAL, [], b"[]", b"[]", date=True)

    def test_local_list_seeds_a_cloud_without_one(self):
        self.assert_load(NOTHING, LOCAL, ["Local"], LOCAL, LOCAL)

    def test_broken_list_in_the_cloud_is_passed_over_and_left(self):
        self.assert_load(BROKEN, LOCAL, ["Local"], BROKEN, LOCAL)

    def test_without_any_list_that_decodes_nothing_is_shown_or_written(self):
        for cloud in (NOTHING, BROKEN):
            for local in (NOTHING, BROKEN):
                self.assert_load(cloud, local, [], cloud, local)


class ComingAndGoingTest(CloudCase):
    """The folder vanishes and comes back while the program runs."""

    def assert_goes_and_comes_back(self, remove, bring_back):
        """Without the folder the list is kept and saved here; the folder's list wins when it is
        back."""
        kestrel = self.kestrel
        before = kestrel.stored()
        remove()
        self.assertFalse(os.path.exists(self.cloud))
        kestrel.add(COMMAND, "Alone", "true")
        kestrel.wait_for_stored([*items("Alpha", "Bravo"), item(COMMAND, "Alone", "true")])
        kestrel.wait_for_rows(["Alpha", "Bravo", "Alone"])
        self.assertFalse(os.path.exists(self.cloud))
        bring_back()
        kestrel.wait_for_rows(["Alpha", "Bravo"])
        self.wait_until(lambda: kestrel.stored() == before, "the cloud's list in the local store")
        self.assertEqual(self.in_cloud(), before)
        self.change("Alpha")

    def test_folder_renamed_away_and_back_wins_over_what_was_saved_meanwhile(self):
        self.start_with("Alpha", "Bravo")
        away = self.cloud + "-away"
        self.assert_goes_and_comes_back(lambda: os.rename(self.cloud, away),
                                        lambda: os.rename(away, self.cloud))

    def test_folder_removed_and_made_anew_with_its_list(self):
        self.start_with("Alpha", "Bravo")

        def bring_back():
            os.mkdir(self.cloud)
            self.put(encoded(items("Alpha", "Bravo")))
        self.assert_goes_and_comes_back(lambda: shutil.rmtree(self.cloud), bring_back)

    def test_end_of_the_link_renamed_away_and_back_as_an_unmounted_disk_is(self):
        disk = self.desktop.path("disk")
        os.makedirs(os.path.join(disk, "Sync"))
        os.symlink(os.path.join(disk, "Sync"), self.cloud)
        self.put(encoded(items("Alpha", "Bravo")))
        self.start_kestrel().open_settings()
        self.kestrel.wait_for_rows(["Alpha", "Bravo"])
        self.assert_goes_and_comes_back(lambda: os.rename(disk, disk + "-away"),
                                        lambda: os.rename(disk + "-away", disk))
        self.assertTrue(os.path.islink(self.cloud))

    def test_folder_made_anew_without_a_list_is_seeded(self):
        self.start_with("Alpha")
        shutil.rmtree(self.cloud)
        self.kestrel.add(COMMAND, "Bravo", "true")
        kept = self.kestrel.wait_for_stored([*items("Alpha"), item(COMMAND, "Bravo", "true")])
        os.mkdir(self.cloud)
        self.wait_until(lambda: self.in_cloud() == encoded(kept), "the seed")
        self.kestrel.wait_for_rows(["Alpha", "Bravo"])

    def test_list_that_arrives_after_its_folder_is_not_written_over(self):
        self.put(encoded(items("Local")), self.data)
        self.start_kestrel().open_popover()
        self.kestrel.wait_for_rows(["Local"])
        os.mkdir(self.cloud)
        self.assert_stays(lambda: os.listdir(self.cloud) == [], 0.5)
        self.change("Alpha", "Bravo")
        self.assertEqual(self.in_cloud(), encoded(items("Alpha", "Bravo")))

    def test_files_made_in_the_home_folder_do_not_wake_the_program(self):
        self.desktop.write("home/.local/share/kestrel/cloud/launcherItems", b"[]")
        kestrel = self.start_kestrel({"XDG_DATA_HOME": None})
        kestrel.open_popover()
        kestrel.activate()
        kestrel.wait_for_no_popover()

        def times_woken():
            path = f"/proc/{kestrel.process.pid}/task/{kestrel.process.pid}/status"
            with open(path, encoding="ascii") as file:
                lines = dict(line.split(":", 1) for line in file)
            return int(lines["voluntary_ctxt_switches"])

        def is_asleep():
            before = times_woken()
            time.sleep(0.3)
            return before == times_woken()
        self.wait_until(is_asleep, "the program to rest")
        before = times_woken()
        for folder in ("", ".local/", ".local/share/"):
            for number in range(100):
                self.desktop.write(f"home/{folder}file-{number}", b"x")
                time.sleep(0.002)   # so that it is not woken for several at once
        self.assertLess(times_woken() - before, 30)
        self.desktop.write("home/.local/share/kestrel/cloud/launcherItems", encoded(items("New")))
        kestrel.open_popover()
        kestrel.wait_for_rows(["New"])
