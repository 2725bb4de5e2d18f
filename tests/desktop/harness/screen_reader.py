"""Debian's screen reader on a test's desktop, and all that it says.

Orca hands its speech to a speech server over a socket. The one here has no voice but
writes all down in its order, so a test reads what a blind user would hear.
"""
import html
import json
import re
import shutil
import socket
import threading

from harness.processes import Timeout, wait_for

PROGRAM = "/usr/bin/orca"
# It does not repeat what is typed.
PROFILE = {"profile": ["Default", "default"], "enableKeyEcho": False, "pronunciations": {},
           "keybindings": {}}
SETTINGS = {"general": PROFILE, "pronunciations": {}, "keybindings": {},
            "profiles": {"default": PROFILE}}


def is_installed():
    return shutil.which(PROGRAM) is not None


class SpeechServer:
    """Takes what is to be spoken in the protocol of Speech Dispatcher (SSIP)."""

    def __init__(self, path):
        self.spoken = []
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.bind(path)
        self._socket.listen()
        threading.Thread(target=self._accept, daemon=True).start()

    def close(self):
        self._socket.close()

    def _accept(self):
        while True:
            try:
                client, _ = self._socket.accept()
            except OSError:
                return  # closed
            threading.Thread(target=self._serve, args=(client,), daemon=True).start()

    def _serve(self, client):
        with client, client.makefile("rwb") as stream:
            for line in stream:
                command = line.decode().strip().upper()
                if command == "SPEAK":
                    self._answer(stream, "230 OK RECEIVING DATA")
                    self.spoken.append(self._text(stream))
                    self._answer(stream, "225-1", "225 OK MESSAGE QUEUED")
                elif command.startswith("CHAR ") or command.startswith("KEY "):
                    self._answer(stream, "225-1", "225 OK MESSAGE QUEUED")
                elif command == "HISTORY GET CLIENT_ID":
                    self._answer(stream, "245-1", "245 OK CLIENT ID SENT")
                elif command == "QUIT":
                    self._answer(stream, "231 HAPPY HACKING")
                    return
                else:
                    self._answer(stream, "200 OK")

    @staticmethod
    def _answer(stream, *lines):
        stream.write("".join(line + "\r\n" for line in lines).encode())
        stream.flush()

    @staticmethod
    def _text(stream):
        """The text up to the line with a single point, without its markup and the point that marks
        a pause."""
        lines = iter(stream.readline, b".\r\n")
        text = re.sub(r"<[^>]*>", "", b"".join(lines).decode())
        return html.unescape(text).strip().rstrip(".")


class ScreenReader:
    """One run of Orca, which speaks from when this is made."""

    def __init__(self, desktop):
        desktop.write("data/orca/user-settings.conf", json.dumps(SETTINGS))
        path = desktop.path("speech")
        self._server = SpeechServer(path)
        self._heard = 0     # of what was spoken, by the test
        desktop.start_service([PROGRAM], {"SPEECHD_ADDRESS": "unix_socket:" + path})
        self.hear_until("Screen reader on")

    def close(self):
        self._server.close()

    def hear(self, count):
        """The next texts that are spoken, waited for."""
        end = self._heard + count
        try:
            wait_for(lambda: len(self._server.spoken) >= end)
        except Timeout:
            pass    # what is missing shows in the comparison
        self._heard, begin = min(end, len(self._server.spoken)), self._heard
        return self._server.spoken[begin:self._heard]

    def hear_until(self, text):
        """All that is spoken up to that text, waited for."""
        begin = self._heard
        wait_for(lambda: text in self._server.spoken[begin:],
                 what=f"{text!r} after {self._server.spoken}")
        self._heard = self._server.spoken.index(text, begin) + 1
        return self._server.spoken[begin:self._heard]
