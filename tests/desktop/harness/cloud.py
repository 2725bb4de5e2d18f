"""Base class of the tests of the cloud folder: a data folder and lists to put there."""
import os
import shutil

from harness.case import DesktopTest
from harness.program import encoded, item

COMMAND = "Inline Command"


def identity(number):
    return f"00000000-0000-4000-8000-{number:012X}"


def items(*titles):
    """Items with those titles; the first letter of a title makes its id."""
    return [item(COMMAND, title, "true", identity(ord(title[0]))) for title in titles]


class CloudCase(DesktopTest):
    """A test with a desktop and a data folder that holds nothing but what the test puts there."""

    def setUp(self):
        super().setUp()
        self.start_desktop(panel="fake")
        self.data = self.desktop.path("data", "kestrel")
        self.cloud = os.path.join(self.data, "cloud")
        self.clear()

    def clear(self):
        shutil.rmtree(self.data, ignore_errors=True)
        os.mkdir(self.data, 0o700)

    def put(self, data, folder=None, age=None):
        """Replaces a list as synchronisers do: through a file beside it."""
        path = os.path.join(folder or self.cloud, "launcherItems")
        with open(path + ".new", "wb") as file:
            file.write(data)
        if age is not None:
            os.utime(path + ".new", ns=(age, age))
        os.rename(path + ".new", path)

    def read(self, *name):
        """The bytes of a file in the data folder; None when there is none."""
        try:
            with open(os.path.join(self.data, *name), "rb") as file:
                return file.read()
        except FileNotFoundError:
            return None

    def in_cloud(self):
        return self.read("cloud", "launcherItems")

    def state(self):
        """What is stored: each file's bytes and which file it is, by its path."""
        found = {}
        for folder, _, names in os.walk(self.data):
            for name in names:
                path = os.path.join(folder, name)
                status = os.stat(path)
                found[os.path.relpath(path, self.data)] = (
                    self.read(path), status.st_ino, status.st_mtime_ns)
        return found

    def start_with(self, *titles):
        """Starts the program with a list in the cloud and opens the settings window."""
        os.mkdir(self.cloud)
        self.put(encoded(items(*titles)))
        self.start_kestrel().open_settings()
        self.kestrel.wait_for_rows(list(titles))
        return self.kestrel

    def change(self, *titles):
        """Another machine's list arrives, is shown, and is the local one."""
        data = encoded(items(*titles))
        self.put(data)
        self.kestrel.wait_for_rows(list(titles))
        self.wait_for_local(data)

    def wait_for_local(self, data):
        """A list is the local one, and so is the date, which is written after it."""
        def date_is_newer():
            list_age, date_age = (os.stat(os.path.join(self.data, name)).st_mtime_ns
                                  for name in ("launcherItems", "lastLocalSync"))
            return date_age >= list_age

        self.wait_until(lambda: self.kestrel.stored() == data and date_is_newer(),
                        "the list in the local store")

    def assert_cloud(self, records):
        """Both stores hold exactly those items."""
        self.assertEqual(self.kestrel.wait_for_stored(records),
                         self.kestrel.stored_items())
        self.assertEqual(self.in_cloud(), self.kestrel.stored())
