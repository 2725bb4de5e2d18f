"""A real file synchroniser, Debian's syncthing, between folders of two desktops.

Each desktop runs a daemon of its own. The daemons talk over loopback and to nobody else, and are
asked and told over a socket in the desktop's folder.
"""
import http.client
import json
import os
import re
import shutil
import socket
import urllib.parse

from processes import wait_for

FOLDER = "list"
API_KEY = "kestrel"

CONFIGURATION = """<configuration version="36">
  <folder id="{folder}" path="{path}" type="sendreceive" rescanIntervalS="3600"
          fsWatcherEnabled="true" fsWatcherDelayS="1">
    <device id="{own}"/>
    <device id="{other}"/>
    <minDiskFree unit="%">0</minDiskFree>
  </folder>
  <device id="{own}" name="own"/>
  <device id="{other}" name="other"><address>{other_address}</address></device>
  <gui enabled="true" tls="false"><address>{api}</address><apikey>{key}</apikey></gui>
  <options>
    <listenAddress>{address}</listenAddress>
    <reconnectionIntervalS>1</reconnectionIntervalS>
    <minHomeDiskFree unit="%">0</minHomeDiskFree>
    <globalAnnounceEnabled>false</globalAnnounceEnabled>
    <localAnnounceEnabled>false</localAnnounceEnabled>
    <announceLANAddresses>false</announceLANAddresses>
    <relaysEnabled>false</relaysEnabled>
    <natEnabled>false</natEnabled>
    <stunKeepaliveStartS>0</stunKeepaliveStartS>
    <startBrowser>false</startBrowser>
    <urAccepted>-1</urAccepted>
    <crashReportingEnabled>false</crashReportingEnabled>
    <autoUpgradeIntervalH>0</autoUpgradeIntervalH>
  </options>
</configuration>
"""


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
        with open(os.path.join(self._home, "config.xml"), encoding="utf-8") as file:
            self.identity = re.search(r'<device id="([A-Z0-9-]+)"', file.read())[1]
        self.process = self._other = None

    def start(self, other):
        """Starts it as the partner of another, which is yet to be started or is started."""
        self._other = other
        os.makedirs(self.folder, exist_ok=True)
        self._desktop.write("syncthing/config.xml", CONFIGURATION.format(
            folder=FOLDER, path=self.folder, own=self.identity, other=other.identity,
            address=self.address, other_address=other.address, api=self._api, key=API_KEY))
        self.process = self._desktop.start_service(
            ["syncthing", "serve", "--no-browser", "--no-restart", "--no-upgrade",
             "--home", self._home])

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
                raise AssertionError("\n".join(self.process.lines)) from None
            return False    # it is only starting
        return partners[self._other.identity]["connected"]

    def pause(self):
        """Parts it from its partner."""
        self._ask("POST", "system/pause", device=self._other.identity)
        wait_for(lambda: not self.is_connected(), 20, "the end of the connection")

    def resume(self):
        self._ask("POST", "system/resume", device=self._other.identity)

    def scan(self):
        self._ask("POST", "db/scan", folder=FOLDER)

    def is_in_step(self):
        state = self._ask("GET", "db/status", folder=FOLDER)
        partner = self._ask("GET", "db/completion", folder=FOLDER, device=self._other.identity)
        return (state["state"] == "idle" and state["needTotalItems"] == 0
                and partner["needItems"] == partner["needDeletes"] == 0)

    def conflicts(self):
        """The names of the files in which it has put aside what lost against its partner's."""
        return [name for name in os.listdir(self.folder) if ".sync-conflict-" in name]


def wait_for_connection(first, second):
    for one in (first, second):
        wait_for(one.is_connected, 40, "the connection of the synchronisers")


def wait_until_in_step(first, second):
    """Waits until each has the other's changes."""
    for one in (first, second):
        one.scan()
    for one in (first, second, first):
        wait_for(one.is_in_step, 40, "the synchronisers to be in step")
