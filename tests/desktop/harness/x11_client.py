"""A pointer, a keyboard (XTest) and queries about windows, over one connection to the X server.

For loops of thousands of events: the tools that Desktop runs take some 10 ms for each.
"""
import ctypes
import time

from harness.processes import wait_for

VIEWABLE = 2
XA_WINDOW = 33
_number, _small, _pointer = ctypes.c_ulong, ctypes.c_int, ctypes.c_void_p


class _Attributes(ctypes.Structure):
    """XWindowAttributes."""

    _fields_ = [("place", _small * 5), ("depth", _small), ("visual", _pointer),
                ("root", _number), ("kind", _small), ("gravity", _small * 3),
                ("backing", _number * 2), ("save_under", _small), ("colormap", _number),
                ("map_installed", _small), ("map_state", _small), ("masks", ctypes.c_long * 3),
                ("override_redirect", _small), ("screen", _pointer)]


class _Resource(ctypes.Structure):
    """XResType."""

    _fields_ = [("type", _number), ("count", ctypes.c_uint)]


class X11Client:
    """A client of one display until it is closed."""

    def __init__(self, display):
        self._x, self._test, self._res = (ctypes.CDLL(name) for name in (
            "libX11.so.6", "libXtst.so.6", "libXRes.so.1"))
        self._x.XOpenDisplay.restype = _pointer
        self._x.XDefaultRootWindow.restype = self._x.XInternAtom.restype = _number
        self._x.XStringToKeysym.restype = _number
        self._x.XGetAtomName.restype = _pointer
        # A window that goes between two questions is no error.
        self._handler = ctypes.CFUNCTYPE(_small, _pointer, _pointer)(lambda *_: 0)
        self._x.XSetErrorHandler(self._handler)
        self._display = _pointer(self._x.XOpenDisplay(display.encode()))
        if not self._display:
            raise RuntimeError("the display cannot be opened")
        self._root = _number(self._x.XDefaultRootWindow(self._display))

    def close(self):
        self._x.XCloseDisplay(self._display)

    def _sync(self):
        self._x.XSync(self._display, 0)

    def move(self, x, y):
        self._test.XTestFakeMotionEvent(self._display, -1, int(x), int(y), _number(0))
        self._sync()

    def _button(self, down):
        self._test.XTestFakeButtonEvent(self._display, 1, down, _number(0))
        self._sync()

    def click(self, x, y):
        self.move(x, y)
        self._button(1)
        self._button(0)

    def drag(self, start, end, steps):
        self.move(*start)
        self._button(1)
        for step in range(1, steps + 1):
            self.move(*(a + (b - a) * step / steps for a, b in zip(start, end)))
            time.sleep(0.01)
        self._button(0)

    def key(self, *names):
        """Presses keys together: key("Alt_L", "F4")."""
        codes = [self._x.XKeysymToKeycode(self._display,
                                          _number(self._x.XStringToKeysym(name.encode())))
                 for name in names]
        for code, down in [(c, 1) for c in codes] + [(c, 0) for c in reversed(codes)]:
            self._test.XTestFakeKeyEvent(self._display, code, down, _number(0))
            self._sync()

    def is_shown(self, window):
        attributes = _Attributes()
        known = self._x.XGetWindowAttributes(self._display, _number(int(window, 16)),
                                             ctypes.byref(attributes))
        return bool(known) and attributes.map_state == VIEWABLE

    def managed_windows(self):
        """The ids of the windows that the window manager manages."""
        atom = self._x.XInternAtom(self._display, b"_NET_CLIENT_LIST", 0)
        kind, form, count, rest = _number(), _small(), _number(), _number()
        data = ctypes.POINTER(_number)()
        self._x.XGetWindowProperty(
            self._display, self._root, _number(atom), _number(0), _number(1024), 0,
            _number(XA_WINDOW), ctypes.byref(kind), ctypes.byref(form), ctypes.byref(count),
            ctypes.byref(rest), ctypes.byref(data))
        result = [hex(data[i]) for i in range(count.value)] if data else []
        if data:
            self._x.XFree(data)
        return result

    def place(self, window):
        """Where a window's content is on the screen: x, y."""
        x, y, child = _small(), _small(), _number()
        self._x.XTranslateCoordinates(self._display, _number(int(window, 16)), self._root, 0, 0,
                                      ctypes.byref(x), ctypes.byref(y), ctypes.byref(child))
        return x.value, y.value

    def wait_until_shown(self, window, shown=True):
        wait_for(lambda: self.is_shown(window) == shown, what="the window to show or hide",
                 pause=0.001)

    def resources(self, window):
        """How many windows, pixmaps, pictures and so on the server keeps for a window's owner, a
        number for each kind by the server's name for it, and the bytes of the pixmaps."""
        count, types = _small(), ctypes.POINTER(_Resource)()
        identity, size = _number(int(window, 16)), _number()
        self._res.XResQueryClientResources(self._display, identity, ctypes.byref(count),
                                           ctypes.byref(types))
        kinds = {self._atom_name(types[i].type): types[i].count for i in range(count.value)}
        self._x.XFree(types)
        self._res.XResQueryClientPixmapBytes(self._display, identity, ctypes.byref(size))
        return kinds, size.value

    def _atom_name(self, atom):
        name = self._x.XGetAtomName(self._display, _number(atom))
        result = ctypes.string_at(name).decode()
        self._x.XFree(_pointer(name))
        return result
