"""Two machines, each with the program and a home of its own, whose cloud folders a real file
synchroniser keeps in step."""
import json
import os
import re
import time

from harness import synchroniser
from harness.case import DesktopTest
from harness.processes import wait_for
from harness.program import encoded, item, store_before_start
from harness.synchronised_machine import SynchronisedMachine

COMMAND = "Inline Command"
LIMIT = 30     # seconds for a change to be on the other machine, generous on a busy one


def identity(number):
    return f"00000000-0000-4000-8000-{number:012X}"


def some_items(*titles):
    return [item(COMMAND, title, "true", identity(i)) for i, title in enumerate(titles, 1)]


class MachinesTest(DesktopTest):
    """Each test has two machines, connected unless it says otherwise."""

    limit = 240

    def start_machines(self, set_up, connected=True):
        if not synchroniser.is_installed():
            self.skipTest("syncthing is not installed")
        self.first, self.second = self.machines = [
            SynchronisedMachine(self.start_desktop(panel="fake"), set_up) for _ in range(2)]
        if connected:
            self.connect()

    def connect(self):
        one, other = (machine.synchroniser for machine in self.machines)
        one.start(other)
        other.start(one)
        synchroniser.wait_for_connection(one, other)

    def keep_evidence(self):
        paths = []
        for name, machine in zip(("first", "second"), getattr(self, "machines", ())):
            self.desktop, self.kestrel = machine.desktop, machine.kestrel
            path = super().keep_evidence()
            paths += [os.path.splitext(path)[0] + f"-{name}{end}" for end in (".png", ".txt")]
            for end, kept in zip((".png", ".txt"), paths[-2:]):
                os.replace(os.path.splitext(path)[0] + end, kept)
            with open(paths[-1], "a", encoding="utf-8") as file:
                print(*machine.synchroniser.lines, machine.in_cloud(), sep="\n", file=file)
        return paths

    def assert_alike(self, titles):
        """Both machines hold one list with those titles, in all four places, and show it."""
        def stored():
            return [bytes_ for m in self.machines for bytes_ in (m.kestrel.stored(), m.in_cloud())]

        def are_alike():
            found = stored()
            return (None not in found and len(set(found)) == 1
                    and [record["title"] for record in json.loads(found[0])] == titles)
        try:
            wait_for(are_alike, LIMIT)
        except AssertionError:
            raise AssertionError(f"not {titles} everywhere but {stored()}") from None
        for machine in self.machines:
            machine.kestrel.wait_for_rows(titles)

    def change_everything(self, here, prefix, titles):
        """Adds, edits, reorders and deletes in the settings window of one machine, and finds each
        change on both. Returns the titles that are left."""
        kestrel, desktop = here.kestrel, here.desktop
        kestrel.add(COMMAND, prefix + " one", "echo 'a/b' \"c\"",
                    "Add" if titles else "Add First Item")
        titles = [*titles, prefix + " one"]
        self.assert_alike(titles)
        kestrel.add("App", prefix + " two", "/usr/bin/two")
        titles.append(prefix + " two")
        self.assert_alike(titles)
        kestrel.click_row(titles[-1])
        kestrel.click_on("push button", "Edit")
        kestrel.set_field("Title", prefix + " edited")
        kestrel.finish_form("Save")
        titles[-1] = prefix + " edited"
        self.assert_alike(titles)
        desktop.key("alt+Up")
        titles[-2:] = reversed(titles[-2:])
        self.assert_alike(titles)
        desktop.key("Delete")
        del titles[-2]
        self.assert_alike(titles)
        return titles

    def start_with_changes_on_the_first(self, set_up):
        """Changes everything on the first machine while the second shows its popover."""
        self.start_machines(set_up)
        for machine in self.machines:
            machine.start_kestrel()
        self.first.kestrel.open_settings()
        self.second.kestrel.open_popover()
        return self.change_everything(self.first, "First", [])

    def assert_nothing_else_was_left(self):
        """Neither side has seen a conflict, and nothing but the list is in the folders."""
        for machine in self.machines:
            wait_for(lambda m=machine: set(os.listdir(m.cloud)) <= {"launcherItems", ".stfolder"},
                     LIMIT, "the folder to hold the list alone")
            self.assertTrue(machine.kestrel.process.is_running)

    def test_changes_reach_the_other_machine_through_linked_folders(self):
        titles = self.start_with_changes_on_the_first("link")
        self.second.kestrel.open_settings()
        self.change_everything(self.second, "Second", titles)
        self.assert_nothing_else_was_left()

    def test_changes_reach_the_other_machine_through_real_folders(self):
        titles = self.start_with_changes_on_the_first("folder")
        self.second.kestrel.open_settings()
        self.second.kestrel.add(COMMAND, "Back", "true")
        self.assert_alike([*titles, "Back"])
        self.assert_nothing_else_was_left()

    def test_first_machine_seeds_the_folder_and_the_second_takes_the_list(self):
        self.start_machines("link")
        items = some_items("Alpha", "Bravo")
        store_before_start(self.first.desktop, items)
        self.first.start_kestrel().open_popover()
        wait_for(lambda: self.second.in_cloud() == encoded(items), LIMIT, "the list in the folder")
        # Copying the list is not saving it.
        self.assertFalse(os.path.exists(self.first.store("lastLocalSync")))
        self.assertEqual(os.listdir(self.second.store("")), ["cloud"])
        self.second.start_kestrel().open_popover()
        self.assert_alike(["Alpha", "Bravo"])
        self.assertTrue(os.path.exists(self.second.store("lastLocalSync")))

    def test_machine_that_joins_with_a_list_of_its_own_takes_the_shared_one(self):
        self.start_machines("link", connected=False)
        for machine, titles in zip(self.machines, (["Alpha", "Bravo"], ["Old"])):
            store_before_start(machine.desktop, some_items(*titles))
        os.rmdir(self.second.cloud)
        for machine in self.machines:
            machine.start_kestrel().open_popover()
        self.second.kestrel.wait_for_rows(["Old"])
        self.connect()
        self.assert_alike(["Alpha", "Bravo"])
        for machine in self.machines:
            self.assertEqual(machine.conflicts(), {})

    def test_machines_edited_at_the_same_time_come_to_rest_on_one_list(self):
        self.start_machines("folder")
        titles = ["Alpha", "Bravo", "Charlie"]
        store_before_start(self.first.desktop, some_items(*titles))
        for machine in self.machines:
            machine.start_kestrel().open_settings()
        self.assert_alike(titles)
        for machine, title in zip(self.machines, ("Alpha", "Charlie")):
            machine.kestrel.click_row(title)
        for _ in range(20):
            for keys in (("alt+Down", "alt+Up"), ("alt+Up", "alt+Down")):
                for machine, key in zip(self.machines, keys):
                    machine.desktop.key(key)

        def stored():
            return {data for m in self.machines for data in (m.kestrel.stored(), m.in_cloud())}
        # The synchroniser takes a minute's rest when a file changes too often while it reads it.
        wait_for(lambda: len(stored()) == 1, 60 + LIMIT, "one list everywhere")
        # Nothing goes to and fro: longer than a change takes to the other machine and back.
        self.assert_stays(lambda: len(stored()) == 1, 4)
        shown = [record["title"] for record in json.loads(stored().pop())]
        self.assertEqual(sorted(shown), titles)
        self.assert_alike(shown)

    def test_machines_edited_while_apart_end_on_one_of_the_two_lists(self):
        self.start_machines("link")
        store_before_start(self.first.desktop, some_items("Alpha", "Bravo", "Charlie"))
        for machine in self.machines:
            machine.start_kestrel()
            machine.kestrel.open_settings()
        self.assert_alike(["Alpha", "Bravo", "Charlie"])
        titles = ["Alpha", "Bravo", "Charlie"]
        for number, (early, late) in enumerate((self.machines, self.machines[::-1]), 1):
            for machine in self.machines:
                machine.synchroniser.pause()
            early.kestrel.add(COMMAND, f"Early {number}", "true")
            early.kestrel.click_row(titles[0])
            early.desktop.key("alt+Down")
            late.kestrel.click_row(titles[-1])
            late.desktop.key("Delete")
            late.kestrel.add(COMMAND, f"Late {number}", "false")
            of_early = [titles[1], titles[0], *titles[2:], f"Early {number}"]
            of_late = [*titles[:-1], f"Late {number}"]
            for machine, expected in ((early, of_early), (late, of_late)):
                wait_for(lambda m=machine, e=expected: [
                    record["title"] for record in m.kestrel.stored_items()] == e, LIMIT)
            lists = {early.kestrel.stored(): of_early, late.kestrel.stored(): of_late}
            self.reconnect(number)
            titles = lists.pop(self.first.in_cloud())
            self.assert_alike(titles)
            for machine in self.machines:
                self.assertIn(next(iter(lists)), machine.conflicts().values())
        self.first.kestrel.add(COMMAND, "After", "true")
        self.assert_alike([*titles, "After"])
        for machine in self.machines:
            self.assertTrue(machine.kestrel.process.is_running)

    def reconnect(self, conflicts):
        """Lets the synchronisers meet again, each knowing of its own machine's changes, and waits
        until they are in step: with one list, and what lost kept beside it."""
        pair = [machine.synchroniser for machine in self.machines]
        for one in pair:
            one.scan()
        for one in pair:
            one.resume()
        synchroniser.wait_for_connection(*pair)
        first, second = self.machines
        wait_for(lambda: len(first.conflicts()) == conflicts
                 and first.conflicts() == second.conflicts()
                 and first.in_cloud() == second.in_cloud() is not None,
                 LIMIT, "the synchronisers to settle the conflict")

    def test_files_that_the_synchroniser_puts_beside_the_list_are_never_opened(self):
        self.start_machines("link")
        trace = self.second.desktop.path("opened")
        self.second.start_kestrel(["strace", "-f", "--seccomp-bpf", "-qq", "-e",
                                   "trace=open,openat,openat2", "-s", "4096", "-o", trace])
        self.second.kestrel.open_popover()
        for round_ in range(4):
            # Of a size that the temporary file takes several writes.
            items = [item(COMMAND, f"Item {round_} {i}", "x" * 1000, identity(i))
                     for i in range(1, 3001)]
            self.first.put_into_cloud(items)
            wait_for(lambda i=items: self.second.kestrel.stored() == encoded(i), LIMIT,
                     "the list on the other machine")
        for machine in self.machines:
            machine.synchroniser.pause()
        for machine in self.machines:
            machine.put_into_cloud(some_items(f"Of {machine.cloud}"))
            time.sleep(0.02)    # two files of one age would not tell which is the later
        self.reconnect(conflicts=1)
        wait_for(lambda: self.second.kestrel.stored() == self.first.in_cloud(), LIMIT)
        with open(trace, encoding="utf-8") as file:
            opened = {os.path.basename(path) for path in re.findall(r'"([^"]*)"', file.read())}
        self.assertIn("launcherItems", opened)
        for name in opened:
            self.assertNotRegex(name, r"^\.syncthing\.|sync-conflict|\.stfolder")
