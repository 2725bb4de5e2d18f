"""Counts how often a running program waits for the X server's answer.

    trips = RoundTrips(desktop, library)
    kestrel = start(environment=trips.environment)
    seen = trips.mark()
    ... the popover opens ...
    trips.before_showing(window.id, seen)

`library` is round_trips/round_trips.cpp as built. A wait counts unless it is for the answer to a
question that was already sent when an earlier one ended: those travel together.
"""
import os
import time

from harness.processes import DEFAULT_TIMEOUT, Timeout


class RoundTrips:
    """The waits of one program, which is started with `environment` added to its own."""

    def __init__(self, desktop, library):
        self._path = desktop.path("round-trips")
        self.environment = {"LD_PRELOAD": os.path.abspath(library),
                            "KESTREL_ROUND_TRIPS_FILE": self._path}

    def _lines(self):
        with open(self._path, encoding="ascii") as file:
            return file.read().splitlines()

    def mark(self, still=0.3):
        """Where the count stands, once the program has asked nothing for `still` seconds."""
        end = time.monotonic() + DEFAULT_TIMEOUT
        count, since = len(self._lines()), time.monotonic()
        while time.monotonic() - since < still:
            if time.monotonic() > end:
                raise Timeout("the program does not stop asking the X server")
            time.sleep(0.02)
            if len(self._lines()) != count:
                count, since = len(self._lines()), time.monotonic()
        return count

    def since(self, mark):
        """All round trips since the mark."""
        return self._lines()[mark:].count("trip")

    def before_showing(self, window, mark):
        """The round trips from the mark until the program showed a window (an X11Window.id)."""
        lines = self._lines()[mark:]
        return lines[:lines.index("show " + window)].count("trip")
