"""What the running program shows and stores for each content of the two stores."""
import os

from harness.case import DesktopTest
from harness.input_driver import APP, COMMAND
from harness.pointer_driver import PointerDriver
from harness.program import encoded, item, popover_height, store_before_start

LOCAL, CLOUD = "data/kestrel/launcherItems", "data/kestrel/cloud/launcherItems"
FIRST = item(APP, "First", "/opt/first", "00000000-0000-4000-8000-00000000000A")
SECOND = item(COMMAND, "Second", "true", "00000000-0000-4000-8000-00000000000B")
# One list as some other program may write it: spaces, another order, plain slashes, escapes,
# lower-case digits, null, keys that nobody knows, no path, and ids that are there twice.
LOOSE = r"""
[ {"type": "App", "icon": {"x": [1, null]}, "path": "/opt/first", "command": null,
   "title": "F\u0069rst", "id": "00000000-0000-4000-8000-00000000000a"},
  {"id": "00000000-0000-4000-8000-00000000000a", "title": "", "type": "Command File"},
  {"id": "00000000-0000-4000-8000-00000000000b", "title": "Both", "type": "Inline Command",
   "command": "echo \/\u00e9\ud83d\ude00", "path": ""} ]
""".encode()
STRICT = [FIRST, {"id": FIRST["id"], "title": "", "type": "Command File"},
          {"id": SECOND["id"], "title": "Both", "type": "Inline Command", "path": "",
           "command": "echo /é😀"}]


class StoreTest(DesktopTest):
    """Each start of the program finds its stores as the test has left them."""

    def setUp(self):
        super().setUp()
        self.start_desktop(panel="fake")

    def read(self, store):
        with open(self.desktop.path(store), "rb") as file:
            return file.read()

    def put(self, local=None, cloud=None):
        """Fills the stores; None leaves one without a list."""
        os.makedirs(self.desktop.path("data", "kestrel", "cloud"), exist_ok=True)
        for store, data in ((LOCAL, local), (CLOUD, cloud)):
            if data is not None:
                self.desktop.write(store, data)
            elif os.path.exists(self.desktop.path(store)):
                os.unlink(self.desktop.path(store))
        date = self.desktop.path("data", "kestrel", "lastLocalSync")
        if os.path.exists(date):
            os.unlink(date)

    def assert_after_start(self, titles, local, cloud, dated):
        """What a start of the program shows, and what the stores hold after it."""
        kestrel = self.start_kestrel()
        self.assertEqual(kestrel.open_popover().rect.height, popover_height(len(titles)))
        if titles:
            kestrel.wait_for_rows(titles)
        self.assertEqual(kestrel.quit(), 0)
        for store, data in ((LOCAL, local), (CLOUD, cloud)):
            if data is None:
                self.assertFalse(os.path.exists(self.desktop.path(store)), store)
            else:
                self.assertEqual(self.read(store), data, store)
        date = self.desktop.path("data", "kestrel", "lastLocalSync")
        self.assertEqual(os.path.exists(date), dated)

    def test_start_with_every_pair_of_local_and_cloud_list(self):
        first, second, broken = encoded([FIRST]), encoded([SECOND]), b"[{]"
        spaced = b" " + second + b"\n"
        for local, cloud, titles, local_after, cloud_after, dated in (
                (None, None, [], None, None, False),
                (broken, None, [], broken, None, False),
                (None, broken, [], None, broken, False),
                (broken, broken, [], broken, broken, False),
                # A cloud list that decodes wins, and its very bytes become the local ones.
                (first, spaced, ["Second"], spaced, spaced, True),
                (broken, second, ["Second"], second, second, True),
                (None, second, ["Second"], second, second, True),
                (first, b"[]", [], b"[]", b"[]", True),
                # Without one the local list counts, and seeds a folder that holds nothing.
                (first, None, ["First"], first, first, False),
                (first, broken, ["First"], first, broken, False),
                (first, b"", ["First"], first, b"", False)):
            with self.subTest(local=local, cloud=cloud):
                self.put(local, cloud)
                self.assert_after_start(titles, local_after, cloud_after, dated)

    def test_broken_cloud_list_is_replaced_by_the_next_save_only(self):
        self.put(encoded([FIRST]), b"broken")
        kestrel = self.start_kestrel()
        kestrel.open_settings()
        kestrel.wait_for_rows(["First"])
        self.assertEqual(self.read(CLOUD), b"broken")
        kestrel.click_row_actions("First", "Edit")
        kestrel.finish_form("Save")
        kestrel.wait_for_stored([FIRST])

    def test_edits_without_the_cloud_folder_give_way_to_the_list_in_it(self):
        self.put(encoded([FIRST]), encoded([FIRST]))
        cloud = self.desktop.path("data", "kestrel", "cloud")
        kestrel = self.start_kestrel()
        kestrel.open_settings()
        os.rename(cloud, cloud + "-away")
        kestrel.add(COMMAND, "Offline", "true")
        kestrel.wait_for_stored([FIRST, item(COMMAND, "Offline", "true")])
        self.assertFalse(os.path.exists(cloud))
        os.rename(cloud + "-away", cloud)
        kestrel.wait_for_rows(["First"])
        kestrel.wait_for_stored([FIRST])

    def test_loosely_written_list_is_shown_and_kept_until_it_is_saved_strictly(self):
        self.desktop.write(LOCAL, LOOSE)
        kestrel = self.start_kestrel()
        kestrel.open_settings()
        kestrel.wait_for_rows(["First", "", "Both"])
        self.assertEqual(self.read(LOCAL), LOOSE)
        # Of two items with one id it is the first that is found.
        self.desktop.click(*kestrel.accessible.find("list", "Items").children[1].rect.center)
        driver = PointerDriver(kestrel)
        driver.press_button("Edit")
        driver.wait_for_text("Title", "First")
        kestrel.finish_form("Save")
        self.wait_until(lambda: kestrel.is_stored(encoded(STRICT)), "the strict list")

    def test_deleting_the_last_item_is_remembered(self):
        store_before_start(self.desktop, [FIRST])
        kestrel = self.start_kestrel()
        kestrel.open_settings()
        kestrel.click_row_actions("First", "Delete")
        kestrel.wait_for_stored([])
        self.assertEqual(kestrel.quit(), 0)
        self.assertEqual(self.read(LOCAL), b"[]")
        self.assertEqual(self.start_kestrel().open_popover().rect.height, popover_height(0))
