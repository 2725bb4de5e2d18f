"""A real file synchroniser, Debian's syncthing, between folders of two desktops.

Each desktop runs a daemon of its own. The daemons talk over loopback and to nobody else, and are
asked and told over a socket in the desktop's folder.
"""
import copy
import http.client
import json
import os
import shutil
import socket
import urllib.parse
from xml.etree import ElementTree

from harness.processes import wait_for

FOLDER = "list"
API_KEY = "kestrel"

# What differs from the daemon's own defaults: nothing on the network but the partner, no browser,
# and no waiting for more changes to come.
OPTIONS = {
    "globalAnnounceEnabled": "false", "localAnnounceEnabled": "false",
    "announceLANAddresses": "false", "relaysEnabled": "false", "natEnabled": "false",
    "stunKeepaliveStartS": "0", "startBrowser": "false", "urAccepted": "-1",
    "crashReportingEnabled": "false", "autoUpgradeIntervalH": "0", "reconnectionIntervalS": "1"}
WATCHER_DELAY = "1"     # seconds; the least that it takes


def is_installed():
    return shutil.which("syncthing") is not None


def _free_address():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return "tcp://127.0.0.1:%d" % probe.getsockname()[1]


class _Connection(http.client.HTTPConnection):
    """HTTP over a socket of the file system."""

    def __init__(self, path):
        super().__init__("localhost", timeout=20)
        self._path = path

    def connect(self):
        self.sock = socket.socket(socket.AF_UNIX)
        self.sock.settimeout(self.timeout)
        self.sock.connect(self._path)


class Synchroniser:
    """The daemon of one desktop, which shares one folder."""

    def __init__(self, desktop, folder):
        self.folder = folder
        self._desktop = desktop
        self._home = desktop.path("syncthing")
        self._api = os.path.join(self._home, "api")
        self.address = _free_address()
        desktop.run("syncthing", "generate", "--no-default-folder", "--skip-port-probing",
                    "--home", self._home)
        self._configuration = ElementTree.parse(os.path.join(self._home, "config.xml"))
        self.identity = self._configuration.find("device").get("id")
        self.process = self._other = None

    def start(self, other):
        """Starts it as the partner of another, which is yet to be started or is started."""
        self._other = other
        os.makedirs(self.folder, exist_ok=True)
        self._configure(other)
        self.process = self._desktop.start_service(
            ["syncthing", "serve", "--no-browser", "--no-restart", "--no-upgrade",
             "--home", self._home])

    @property
    def lines(self):
        """What it has said."""
        return self.process.lines if self.process else []

    def _configure(self, other):
        root = self._configuration.getroot()
        for name, value in {**OPTIONS, "listenAddress": self.address}.items():
            root.find("options").find(name).text = value
        root.find("gui/address").text = self._api
        root.find("gui/apikey").text = API_KEY
        device = copy.deepcopy(root.find("defaults/device"))
        device.set("id", other.identity)
        device.find("address").text = other.address
        root.append(device)
        folder = copy.deepcopy(root.find("defaults/folder"))
        for name, value in (("id", FOLDER), ("path", self.folder),
                            ("fsWatcherDelayS", WATCHER_DELAY)):
            folder.set(name, value)
        ElementTree.SubElement(folder, "device", id=other.identity)
        root.append(folder)
        self._configuration.write(os.path.join(self._home, "config.xml"))

    def _ask(self, method, path, **query):
        connection = _Connection(self._api)
        try:
            connection.request(method, f"/rest/{path}?{urllib.parse.urlencode(query)}",
                               headers={"X-API-Key": API_KEY})
            answer = connection.getresponse()
            text = answer.read()
            if answer.status != 200:
                raise AssertionError(f"{method} {path}: {answer.status} {text}")
            return json.loads(text) if text.strip() else None
        finally:
            connection.close()

    def is_connected(self):
        try:
            partners = self._ask("GET", "system/connections")["connections"]
        except OSError:
            if not self.process.is_running:
                raise AssertionError("\n".join(self.lines)) from None
            return False    # it is only starting
        return partners[self._other.identity]["connected"]

    def pause(self):
        """Parts it from its partner."""
        self._ask("POST", "system/pause", device=self._other.identity)
        wait_for(lambda: not self.is_connected(), what="the end of the connection")

    def resume(self):
        self._ask("POST", "system/resume", device=self._other.identity)

    def scan(self):
        """Lets it know of its own desktop's changes now."""
        self._ask("POST", "db/scan", folder=FOLDER)


def wait_for_connection(first, second):
    for one in (first, second):
        wait_for(one.is_connected, 40, "the connection of the synchronisers")
