"""One of several machines, each with the program and a home of its own, that share the list through
a file synchroniser."""
import os

from harness.program import Kestrel, encoded
from harness.synchroniser import Synchroniser


class SynchronisedMachine:
    """A desktop with a synchroniser, yet to be started, and the program, likewise.

    set_up: "folder" for a cloud folder that is itself synchronised, "link" for one that is a link
    to a folder in the synchronised one.
    """

    def __init__(self, desktop, set_up):
        self.desktop, self.kestrel = desktop, None
        data = self.desktop.path("data", "kestrel")
        os.mkdir(data, 0o700)
        if set_up == "folder":
            shared = self.cloud = os.path.join(data, "cloud")
            os.mkdir(shared)
        else:
            shared = self.desktop.path("home", "Sync")
            self.cloud = os.path.join(shared, "kestrel")
            os.makedirs(self.cloud)
            os.symlink(self.cloud, os.path.join(data, "cloud"))
        self.synchroniser = Synchroniser(self.desktop, shared)

    def start_kestrel(self, tracer=()):
        self.kestrel = Kestrel(self.desktop, [*tracer, os.environ["KESTREL_PROGRAM"]])
        self.desktop.status_item()
        return self.kestrel

    def store(self, name):
        return self.desktop.path("data", "kestrel", name)

    def in_cloud(self):
        try:
            with open(os.path.join(self.cloud, "launcherItems"), "rb") as file:
                return file.read()
        except FileNotFoundError:
            return None

    def put_into_cloud(self, items):
        """Replaces the list as the program would."""
        os.rename(self.desktop.write("outgoing", encoded(items)),
                  os.path.join(self.cloud, "launcherItems"))

    def conflicts(self):
        """The lists that the synchroniser has put aside, by the name of their files."""
        found = {}
        for name in os.listdir(self.cloud):
            if ".sync-conflict-" in name and not name.startswith("."):
                with open(os.path.join(self.cloud, name), "rb") as file:
                    found[name] = file.read()
        return found
