"""Screenshots and parts of them, without any imaging library."""
import struct
import zlib
from typing import NamedTuple


class Rect(NamedTuple):
    """In pixels of the screen, the origin at its top left."""

    x: int
    y: int
    width: int
    height: int

    @property
    def center(self):
        return self.x + self.width // 2, self.y + self.height // 2

    def contains(self, other):
        return (self.x <= other.x and self.y <= other.y
                and other.x + other.width <= self.x + self.width
                and other.y + other.height <= self.y + self.height)


class Image(NamedTuple):
    """`data` holds three bytes a pixel (red, green, blue), row after row."""

    width: int
    height: int
    data: bytes

    @staticmethod
    def from_server(data, width, height, stride):
        """From an X server's pixels of four bytes (blue, green, red, unused), in rows that are
        `stride` bytes apart."""
        rows = b"".join(data[y * stride:y * stride + width * 4] for y in range(height))
        pixels = bytearray(width * height * 3)
        pixels[0::3], pixels[1::3], pixels[2::3] = rows[2::4], rows[1::4], rows[0::4]
        return Image(width, height, bytes(pixels))

    @property
    def bounds(self):
        return Rect(0, 0, self.width, self.height)

    def pixel(self, x, y):
        at = (y * self.width + x) * 3
        return tuple(self.data[at:at + 3])

    def cut(self, rect):
        """The part of the image that lies in `rect`."""
        left, top = max(rect.x, 0), max(rect.y, 0)
        right = min(rect.x + rect.width, self.width)
        bottom = min(rect.y + rect.height, self.height)
        rows = (self.data[(y * self.width + left) * 3:(y * self.width + right) * 3]
                for y in range(top, bottom))
        return Image(right - left, bottom - top, b"".join(rows))

    def difference(self, other):
        """The smallest rectangle that holds all that differs from `other`, which is of the same
        size; None when nothing does."""
        stride = self.width * 3
        left, right, top, bottom = self.width, -1, None, None
        for y in range(self.height):
            mine = self.data[y * stride:(y + 1) * stride]
            others = other.data[y * stride:(y + 1) * stride]
            if mine == others:
                continue
            top, bottom = y if top is None else top, y
            columns = [i // 3 for i in range(stride) if mine[i] != others[i]]
            left, right = min(left, columns[0]), max(right, columns[-1])
        if top is None:
            return None
        return Rect(left, top, right - left + 1, bottom - top + 1)

    def save(self, path):
        """Writes the image as a PNG file."""
        stride = self.width * 3
        rows = b"".join(b"\0" + self.data[y * stride:(y + 1) * stride]
                        for y in range(self.height))
        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        chunks = ((b"IHDR", header), (b"IDAT", zlib.compress(rows, 3)), (b"IEND", b""))
        with open(path, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n")
            for kind, data in chunks:
                file.write(struct.pack(">I", len(data)) + kind + data
                           + struct.pack(">I", zlib.crc32(kind + data)))
