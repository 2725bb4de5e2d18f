"""Debian's screen reader on a test's desktop, and all that it says.

Orca hands its speech to a speech server over a socket. The one here has no voice: it writes down
each text with the moment's order, so what a blind user would hear is what a test reads.
"""
import html
import os
import re
import shutil
import socket
import threading

from harness.processes import wait_for

PROGRAM = "/usr/bin/orca"


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
        """The text up to the line with a single point, without its markup."""
        lines = iter(stream.readline, b".\r\n")
        text = b"".join(lines).decode().strip()
        return html.unescape(re.sub(r"<[^>]*>", "", text)).strip()


class ScreenReader:
    """One run of Orca, which speaks from when this is made."""

    def __init__(self, desktop):
        path = desktop.path("speech")
        self._server = SpeechServer(path)
        self._process = desktop.start_service(
            [PROGRAM, "--replace", "--debug-file=" + desktop.path("orca.log")],
            {"SPEECHD_ADDRESS": "unix_socket:" + path})
        self._heard = 0
        wait_for(lambda: self._server.spoken, what="the screen reader to greet")

    def close(self):
        self._server.close()
