#!/usr/bin/env python3
"""Puts the PNG images of a folder, named by their size in pixels, into an .icns file.

    make_icns.py FOLDER OUTPUT

The images are our own drawing, rendered once with
    for n in 32 64 128 256 512 1024; do
        rsvg-convert -w $n -h $n app.kestrel.Kestrel.svg -o $n.png
    done
"""

import struct
import sys
from pathlib import Path

# Every element holds a whole PNG file. The elements for 16 and 32 points on a screen of ordinary
# resolution are left out: those take no PNG, and the system scales the next one down.
ELEMENTS = {
    b"ic11": 32,  # 16 points, twice as fine
    b"ic12": 64,  # 32 points, twice as fine
    b"ic07": 128,
    b"ic13": 256,  # 128 points, twice as fine
    b"ic08": 256,
    b"ic14": 512,  # 256 points, twice as fine
    b"ic09": 512,
    b"ic10": 1024,  # 512 points, twice as fine
}
PNG_SIGNATURE = b"\x89PNG\r\n\x1a\n"


def size_of_png(data: bytes) -> tuple[int, int]:
    """Width and height in pixels; fails for anything but a PNG file."""
    if data[:8] != PNG_SIGNATURE or data[12:16] != b"IHDR":
        raise ValueError("not a PNG file")
    width, height = struct.unpack(">II", data[16:24])
    return width, height


def element(kind: bytes, data: bytes) -> bytes:
    return kind + struct.pack(">I", 8 + len(data)) + data


def container(images: dict[int, bytes]) -> bytes:
    body = b"".join(element(kind, images[size]) for kind, size in ELEMENTS.items())
    return element(b"icns", body)


def read_images(folder: Path) -> dict[int, bytes]:
    images = {}
    for size in sorted(set(ELEMENTS.values())):
        data = (folder / f"{size}.png").read_bytes()
        if size_of_png(data) != (size, size):
            raise ValueError(f"{size}.png has another size than its name says")
        images[size] = data
    return images


def main() -> None:
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    try:
        images = read_images(Path(sys.argv[1]))
    except (OSError, ValueError) as error:
        sys.exit(f"make_icns.py: {error}")
    Path(sys.argv[2]).write_bytes(container(images))


if __name__ == "__main__":
    main()
