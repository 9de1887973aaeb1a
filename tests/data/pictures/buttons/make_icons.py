#!/usr/bin/env python3
"""Writes the small icons the button tests paint: a disk in 16 and 32
pixels, its pressed and disabled variants, and a 16-pixel arrow for the
hover picture. Run it here; the PNGs are committed."""
import struct
import zlib


def png(name, size, pixel):
    rows = b"".join(
        b"\x00" + b"".join(struct.pack(">I", pixel(x, y, size)) for x in range(size))
        for y in range(size))

    def chunk(tag, data):
        body = tag + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    header = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    data = (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
            chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))
    open(name, "wb").write(data)


def disk(body, label, shutter):
    def pixel(x, y, size):
        edge = size // 8
        if x < 1 or y < 1 or x >= size - 1 or y >= size - 1:
            return 0x00000000  # transparent border
        if y < size // 2 and edge * 2 <= x < size - edge * 2:
            return shutter if y > 1 else body
        if y > size // 2 + 1 and edge <= x < size - edge and y < size - 2:
            return label
        return body
    return pixel


def arrow(x, y, size):
    middle = size // 2
    if abs(x - middle) <= y // 2 and 3 <= y < size - 3:
        return 0x2060C0FF
    return 0x00000000


png("disk16.png", 16, disk(0x1F3F8FFF, 0xF0F0F0FF, 0xA0A0A0FF))
png("disk32.png", 32, disk(0x1F3F8FFF, 0xF0F0F0FF, 0xA0A0A0FF))
png("disk16_down.png", 16, disk(0x8F1F1FFF, 0xF0F0F0FF, 0xA0A0A0FF))
png("disk16_gray.png", 16, disk(0x808080FF, 0xC0C0C0FF, 0xA0A0A0FF))
png("arrow16.png", 16, arrow)
