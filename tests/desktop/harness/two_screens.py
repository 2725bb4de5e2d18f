"""A desktop with two monitors side by side, the second smaller and set lower: Xorg without a
graphics card, since the virtual server has one monitor only.

Its packages are xserver-xorg-video-dummy and x11-xserver-utils.
"""
import ctypes
import os
import unittest

from harness.desktop import Desktop
from harness.images import Image, Rect

XORG = "/usr/lib/xorg/Xorg"
FIRST = Rect(0, 0, 1024, 768)
SECOND = Rect(1024, 100, 800, 600)

CONFIGURATION = """Section "ServerFlags"
  Option "AutoAddDevices" "false"
  Option "AutoEnableDevices" "false"
EndSection
Section "Device"
  Identifier "card"
  Driver "dummy"
  VideoRam 65536
EndSection
Section "Screen"
  Identifier "screen"
  Device "card"
  DefaultDepth 24
  SubSection "Display"
    Depth 24
    Modes "1024x768" "800x600"
  EndSubSection
EndSection
"""


class _XImage(ctypes.Structure):
    """The beginning of Xlib's structure."""

    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int),
                ("format", ctypes.c_int), ("data", ctypes.c_void_p), ("byte_order", ctypes.c_int),
                ("bitmap_unit", ctypes.c_int), ("bitmap_bit_order", ctypes.c_int),
                ("bitmap_pad", ctypes.c_int), ("depth", ctypes.c_int),
                ("bytes_per_line", ctypes.c_int), ("bits_per_pixel", ctypes.c_int)]


class TwoScreenDesktop(Desktop):
    """Its monitors are `FIRST` and `SECOND`, which panels know by the numbers 0 and 1."""

    def __init__(self, **options):
        if not os.path.exists(XORG):
            raise unittest.SkipTest("no Xorg for a second monitor")
        super().__init__(width=SECOND.x + SECOND.width, height=FIRST.height, **options)
        self.monitors = [FIRST, SECOND]

    def _start_server(self):
        configuration = self.write("xorg.conf", CONFIGURATION)
        self._await_server(lambda number: [
            XORG, "-displayfd", str(number), "-config", configuration, "-logfile",
            self.path("xorg.log"), "-nolisten", "tcp", "-noreset", "-ac"])
        for output, screen in zip(("DUMMY0", "DUMMY1"), (FIRST, SECOND)):
            mode = f"{screen.width}x{screen.height}"
            self.run("xrandr", "--addmode", output, mode)
            self.run("xrandr", "--output", output, "--mode", mode,
                     "--pos", f"{screen.x}x{screen.y}")
        monitors = self.run("xrandr", "--listmonitors")
        if "Monitors: 2" not in monitors:
            raise RuntimeError(f"no second monitor: {monitors}")

    def screenshot(self):
        """The whole screen; between the monitors' edges there is nothing to see."""
        xlib, all_planes, z_pixmap = self._xlib.library, (1 << 64) - 1, 2
        width, height = self.bounds[2:]
        with self._xlib.connection() as connection:
            root = xlib.XDefaultRootWindow(connection)
            pointer = xlib.XGetImage(connection, root, 0, 0, width, height, all_planes,
                                     z_pixmap)
            image = _XImage.from_address(pointer)
            rows = ctypes.string_at(image.data, image.bytes_per_line * height)
            stride = image.bytes_per_line
            xlib.XDestroyImage(pointer)
        return Image.from_server(rows, width, height, stride)
