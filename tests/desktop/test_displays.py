"""Which display the program takes, and how it ends without one."""
import os
import unittest

from harness.case import DesktopTest
from harness.desktop import Session
from harness.processes import wait_for
from harness.program import BUS_NAME, has_sanitizer
from harness.wayland import SwayDesktop

PROGRAM = os.environ["KESTREL_PROGRAM"]
# What a session manager may add, and words that the toolkit would take for its own.
WORDS = ["--session", "1234", "-platform", "nonsense", "-display", ":4711", "--help", "/etc/passwd"]
X11, WAYLAND = {"DISPLAY": ":4711"}, {"WAYLAND_DISPLAY": "nobody"}
NO_X11 = 'the X server ":4711" (DISPLAY) cannot be reached'
NO_WAYLAND = 'the compositor "nobody" (WAYLAND_DISPLAY) cannot be reached'
MISSING = (
    ({}, "neither DISPLAY nor WAYLAND_DISPLAY is set"),
    (X11, NO_X11),
    (WAYLAND, NO_WAYLAND),
    ({**X11, **WAYLAND}, f"{NO_X11}, and {NO_WAYLAND}"),
    ({**WAYLAND, "QT_QPA_PLATFORM": "xcb"}, "DISPLAY is not set"),
    ({**X11, "QT_QPA_PLATFORM": "wayland;xcb"}, f"WAYLAND_DISPLAY is not set, and {NO_X11}"),
    ({"QT_QPA_PLATFORM": "nonsense"}, 'the platform "nonsense" (QT_QPA_PLATFORM) does not start'),
)


class BareSession(Session):
    """A session bus, and no display."""

    def __init__(self):
        super().__init__()
        self._start_bus()


class DisplayTest(DesktopTest):
    def test_says_in_one_line_which_display_is_missing(self):
        with BareSession() as session:
            for environment, reason in MISSING:
                with self.subTest(**environment):
                    process = session.start([PROGRAM], environment)
                    self.assertEqual(process.wait(), 1)
                    process.stop()
                    self.assertEqual(process.lines, [f"kestrel: there is no display: {reason}."])

    def test_runs_without_a_display_where_its_user_wants_that(self):
        with BareSession() as session:
            for platform in ("offscreen", "minimal"):
                process = session.start([PROGRAM], {"QT_QPA_PLATFORM": platform})
                wait_for(lambda: session.has_bus_name(BUS_NAME), what=f"its name under {platform}")
                self.assertTrue(process.is_running)
                process.stop()
                wait_for(lambda: not session.has_bus_name(BUS_NAME), what="its name to go")

    def test_takes_the_x_server_where_no_compositor_is_and_passes_words_over(self):
        self.start_desktop(panel="fake")
        self.start_kestrel(WAYLAND, command=[PROGRAM, *WORDS])
        self.assert_opens_and_quits()

    @unittest.skipIf(has_sanitizer(), "the toolkit's part for Wayland frees little at its end")
    def test_takes_the_compositor_where_no_x_server_is(self):
        self.desktop = self.enterContext(SwayDesktop())
        self.start_kestrel(X11)
        self.assert_opens_and_quits()

    def assert_opens_and_quits(self):
        self.kestrel.open_popover()
        self.kestrel.accessible.press("push button", "Quit")
        self.assertEqual(self.kestrel.process.wait(), 0)
