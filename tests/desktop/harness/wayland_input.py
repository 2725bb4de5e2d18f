"""A virtual pointer and keyboard for a Wayland compositor of the wlroots family, spoken over its
socket directly: no compiled client, no further package."""
import socket
import struct
import tempfile
import time

from harness.processes import DEFAULT_TIMEOUT

SHM_KEYMAP_FORMAT = 1
SHIFT_BIT = 1
MODIFIERS = {"shift": (42, SHIFT_BIT), "ctrl": (29, 4), "alt": (56, 8)}
BUTTONS = {1: 0x110, 2: 0x112, 3: 0x111}
KEYS = {"Escape": 1, "BackSpace": 14, "Tab": 15, "Return": 28, "space": 57, "F4": 62,
        "Home": 102, "Up": 103, "End": 107, "Down": 108, "Delete": 111, "a": 30, "b": 48, "z": 44}
KEYMAP = (b'xkb_keymap { xkb_keycodes { include "evdev+aliases(qwerty)" }; '
          b'xkb_types { include "complete" }; xkb_compat { include "complete" }; '
          b'xkb_symbols { include "pc+us+inet(evdev)" }; };\0')
WL_DISPLAY, GET_REGISTRY, SYNC = 1, 1, 0
HEADER = struct.Struct("<II")


class WaylandInput:
    """Keep it for as long as the session: the seat has a pointer and a keyboard only while a
    device exists. KeyError where the compositor does not offer the protocols (yet)."""

    def __init__(self, path, width, height):
        self._size, self._next_id, self._globals, self._buffer = (width, height), 2, {}, b""
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.settimeout(DEFAULT_TIMEOUT)
        self._socket.connect(path)
        self._registry = self._new_id()
        self._request(WL_DISPLAY, GET_REGISTRY, struct.pack("<I", self._registry))
        self._sync()
        seat = self._bind("wl_seat")
        pointers = self._bind("zwlr_virtual_pointer_manager_v1")
        keyboards = self._bind("zwp_virtual_keyboard_manager_v1")
        self._pointer, self._keyboard = self._new_id(), self._new_id()
        self._request(pointers, 0, struct.pack("<II", seat, self._pointer))
        self._request(keyboards, 0, struct.pack("<II", seat, self._keyboard))
        with tempfile.TemporaryFile() as file:
            file.write(KEYMAP)
            file.flush()
            self._request(self._keyboard, 0, struct.pack("<II", SHM_KEYMAP_FORMAT, len(KEYMAP)),
                          file.fileno())
        self._sync()

    def close(self):
        self._socket.close()

    def _new_id(self):
        self._next_id += 1
        return self._next_id - 1

    def _request(self, target, operation, body=b"", descriptor=None):
        size = HEADER.size + len(body)
        message = HEADER.pack(target, size << 16 | operation) + body
        if descriptor is None:
            self._socket.sendall(message)
        else:
            socket.send_fds(self._socket, [message], [descriptor])

    def _bind(self, name):
        number, version = self._globals[name]
        new, text = self._new_id(), name.encode() + b"\0"
        body = struct.pack("<II", number, len(text)) + text + b"\0" * (-len(text) % 4)
        self._request(self._registry, 0, body + struct.pack("<II", version, new))
        return new

    def _sync(self):
        """Waits until the compositor has done all that was asked of it."""
        callback, done = self._new_id(), False
        self._request(WL_DISPLAY, SYNC, struct.pack("<I", callback))
        while not done:
            received = self._socket.recv(65536)
            if not received:
                raise ConnectionError("the compositor has gone")
            self._buffer += received
            while len(self._buffer) >= HEADER.size:
                sender, word = HEADER.unpack_from(self._buffer)
                size, operation = word >> 16, word & 0xFFFF
                if len(self._buffer) < size:
                    break
                body, self._buffer = self._buffer[HEADER.size:size], self._buffer[size:]
                if sender == self._registry and operation == 0:
                    number, length = HEADER.unpack_from(body)
                    name = body[8:8 + length - 1].decode()
                    self._globals[name] = (number, struct.unpack("<I", body[-4:])[0])
                elif sender == WL_DISPLAY and operation == 0:
                    raise RuntimeError(f"the compositor reports an error: {body!r}")
                done = done or sender == callback

    @staticmethod
    def _now():
        return int(time.monotonic() * 1000) & 0xFFFFFFFF

    def _pointer_event(self, operation, *values):
        self._request(self._pointer, operation, struct.pack(f"<{len(values)}I", *values))
        self._request(self._pointer, 4)
        self._sync()

    def move(self, x, y):
        # XWayland takes a jump onto a window for a relative movement on top of the position; a
        # small step inside the window it takes as it is.
        for step in (1 if x else -1, 0):
            self._pointer_event(1, self._now(), x - step, y, *self._size)
            time.sleep(0.01)

    def button(self, button, is_down):
        self._pointer_event(2, self._now(), BUTTONS[button], int(is_down))

    def _key(self, code, is_down):
        self._request(self._keyboard, 1, struct.pack("<III", self._now(), code, int(is_down)))

    def _modifiers(self, bits):
        self._request(self._keyboard, 2, struct.pack("<IIII", bits, 0, 0, 0))

    def key(self, combination):
        """Presses one of KEYS, with modifiers before it: "Down", "ctrl+Return"."""
        *held, name = combination.split("+")
        bits = 0
        for modifier in held:
            code, bit = MODIFIERS[modifier]
            self._key(code, True)
            bits |= bit
            self._modifiers(bits)
        self._key(KEYS[name], True)
        self._key(KEYS[name], False)
        for modifier in reversed(held):
            self._key(MODIFIERS[modifier][0], False)
        self._modifiers(0)
        self._sync()

