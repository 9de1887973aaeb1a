#!/usr/bin/env python3
"""Writes the small PNG, BMP, ICO and GIF files the picture tests decode.

Every picture draws one of a few formulas (the same ones the tests use to
check the decoded pixels), so a file can be regenerated and still match.
The JPEG files come from make_jpegs.c, since JPEG needs a real encoder.

Run from anywhere: python3 make_pictures.py
"""
import os
import struct
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))
W, H = 13, 7  # odd sizes, so that every row needs padding somewhere


def rgb(x, y):
    return ((x * 37 + y * 11) & 255, (x * 5 + y * 53) & 255, (x * x + y * 3) & 255)


def alpha(x, y):
    return (x * 29 + y * 71) & 255


def gray(x, y):
    return (x * 19 + y * 41) & 255


def index(x, y, count):
    return (x + 3 * y) % count


def palette(i):
    return ((i * 71 + 13) & 255, (i * 29 + 200) & 255, (i * i * 7) & 255)


def write(name, data):
    with open(os.path.join(HERE, name), "wb") as f:
        f.write(data)


# --- PNG -------------------------------------------------------------------

def png_chunk(tag, data):
    crc = zlib.crc32(tag + data) & 0xFFFFFFFF
    return struct.pack(">I", len(data)) + tag + data + struct.pack(">I", crc)


def pack_samples(samples, depth):
    if depth == 16:
        return b"".join(struct.pack(">H", s) for s in samples)
    if depth == 8:
        return bytes(samples)
    out, acc, used = bytearray(), 0, 0
    for s in samples:
        acc = (acc << depth) | s
        used += depth
        if used == 8:
            out.append(acc)
            acc, used = 0, 0
    if used:
        out.append(acc << (8 - used))
    return bytes(out)


ADAM7 = [(0, 0, 8, 8), (4, 0, 8, 8), (0, 4, 4, 8), (2, 0, 4, 4), (0, 2, 2, 4), (1, 0, 2, 2),
         (0, 1, 1, 2)]


def png_image_data(pixels, depth, interlaced):
    """pixels[y][x] is a tuple of samples; returns the filtered scanlines."""
    height, width = len(pixels), len(pixels[0])
    passes = ADAM7 if interlaced else [(0, 0, 1, 1)]
    raw = bytearray()
    for x0, y0, dx, dy in passes:
        for y in range(y0, height, dy):
            row = [s for x in range(x0, width, dx) for s in pixels[y][x]]
            if row:
                raw += b"\0" + pack_samples(row, depth)
    return bytes(raw)


def png(pixels, depth, color_type, extra=b"", interlaced=False):
    height, width = len(pixels), len(pixels[0])
    ihdr = struct.pack(">IIBBBBB", width, height, depth, color_type, 0, 0, 1 if interlaced else 0)
    idat = zlib.compress(png_image_data(pixels, depth, interlaced), 9)
    return (b"\x89PNG\r\n\x1a\n" + png_chunk(b"IHDR", ihdr) + extra + png_chunk(b"IDAT", idat) +
            png_chunk(b"IEND", b""))


def grid(width, height, f):
    return [[f(x, y) for x in range(width)] for y in range(height)]


def rgba_pixels(width, height):
    return grid(width, height, lambda x, y: rgb(x, y) + (alpha(x, y),))


def make_pngs():
    write("png_rgba8.png", png(rgba_pixels(W, H), 8, 6))
    write("png_rgba8_interlaced.png", png(rgba_pixels(W, H), 8, 6, interlaced=True))
    # The low byte of each 16-bit sample is noise the decoder must drop.
    write("png_rgb16.png", png(grid(W, H, lambda x, y: tuple(
        c << 8 | ((x * y + i * 50) & 255) for i, c in enumerate(rgb(x, y)))), 16, 2))
    write("png_gray1.png", png(grid(W, H, lambda x, y: ((x + y) % 2,)), 1, 0))
    write("png_gray2.png", png(grid(W, H, lambda x, y: ((x + 2 * y) % 4,)), 2, 0))
    write("png_gray_alpha8.png", png(grid(W, H, lambda x, y: (gray(x, y), alpha(x, y))), 8, 4))
    plte = png_chunk(b"PLTE", b"".join(bytes(palette(i)) for i in range(11)))
    trns = png_chunk(b"tRNS", bytes((i * 60) & 255 for i in range(5)))
    write("png_palette4_trns.png",
          png(grid(W, H, lambda x, y: (index(x, y, 11),)), 4, 3, extra=plte + trns))
    key = rgb(2, 1)
    assert sum(rgb(x, y) == key for x in range(W) for y in range(H)) == 1
    key_chunk = png_chunk(b"tRNS", struct.pack(">HHH", *key))
    write("png_rgb8_trns.png", png(grid(W, H, rgb), 8, 2, extra=key_chunk))


# --- BMP -------------------------------------------------------------------

def pad4(row):
    return row + b"\0" * (-len(row) % 4)


def info_header(size, width, height, bits, compression, image_size, colors_used):
    return struct.pack("<IiiHHIIiiII", size, width, height, 1, bits, compression, image_size,
                       2835, 2835, colors_used, 0)


def dib_header(kind, width, height, bits, compression, image_size, colors_used, masks):
    """kind is 'info' (40 bytes), 'v4' (108) or 'v5' (124)."""
    size = {"info": 40, "v4": 108, "v5": 124}[kind]
    header = info_header(size, width, height, bits, compression, image_size, colors_used)
    if kind == "info":
        return header
    header += struct.pack("<IIII", *(masks or (0, 0, 0, 0)))
    header += b"sRGB" + b"\0" * 36 + b"\0" * 12  # colour space, end points, gamma
    if kind == "v5":
        header += struct.pack("<IIII", 4, 0, 0, 0)  # intent, profile, reserved
    return header


def bmp(width, height, bits, rows, colors=(), kind="info", compression=0, masks=None,
        top_down=False):
    """rows are the packed pixel rows, top row first."""
    stored = [pad4(r) for r in (rows if top_down else rows[::-1])]
    image = b"".join(stored)
    header = dib_header(kind, width, -height if top_down else height, bits, compression,
                        len(image), len(colors), masks)
    trailing_masks = struct.pack("<III", *masks[:3]) if kind == "info" and masks else b""
    table = b"".join(bytes((b, g, r, 0)) for r, g, b in colors)
    offset = 14 + len(header) + len(trailing_masks) + len(table)
    file_header = b"BM" + struct.pack("<IHHI", offset + len(image), 0, 0, offset)
    return file_header + header + trailing_masks + table + image


def indexed_rows(width, height, bits, count):
    return [pack_samples([index(x, y, count) for x in range(width)], bits) for y in range(height)]


def bgr_rows(width, height, with_alpha):
    def pixel(x, y):
        r, g, b = rgb(x, y)
        return bytes((b, g, r) + ((alpha(x, y),) if with_alpha == "alpha" else
                                  (0,) if with_alpha == "zero" else ()))
    return [b"".join(pixel(x, y) for x in range(width)) for y in range(height)]


def rgb565_rows(width, height):
    def pixel(x, y):
        r, g, b = rgb(x, y)
        return struct.pack("<H", (r >> 3) << 11 | (g >> 2) << 5 | (b >> 3))
    return [b"".join(pixel(x, y) for x in range(width)) for y in range(height)]


def make_bmps():
    for bits, count in ((1, 2), (4, 11), (8, 200)):
        colors = [palette(i) for i in range(count)]
        write(f"bmp_{bits}bit.bmp", bmp(W, H, bits, indexed_rows(W, H, bits, count), colors))
    write("bmp_24bit.bmp", bmp(W, H, 24, bgr_rows(W, H, None)))
    write("bmp_24bit_topdown.bmp", bmp(W, H, 24, bgr_rows(W, H, None), top_down=True))
    write("bmp_24bit_v4.bmp", bmp(W, H, 24, bgr_rows(W, H, None), kind="v4"))
    write("bmp_32bit_rgb.bmp", bmp(W, H, 32, bgr_rows(W, H, "zero")))
    write("bmp_32bit_v5_alpha.bmp", bmp(W, H, 32, bgr_rows(W, H, "alpha"), kind="v5",
                                        compression=3,
                                        masks=(0xFF0000, 0xFF00, 0xFF, 0xFF000000)))
    write("bmp_16bit_565.bmp", bmp(W, H, 16, rgb565_rows(W, H), compression=3,
                                   masks=(0xF800, 0x07E0, 0x001F)))


# --- ICO -------------------------------------------------------------------

def icon_bitmap(width, height, bits, rows, colors, mask):
    """An icon entry's bitmap: header with doubled height, colours, AND mask."""
    image = b"".join(pad4(r) for r in rows[::-1])
    mask_rows = [pack_samples([mask(x, y) for x in range(width)], 1) for y in range(height)]
    and_mask = b"".join(pad4(r) for r in mask_rows[::-1])
    header = info_header(40, width, 2 * height, bits, 0, len(image) + len(and_mask), 0)
    table = b"".join(bytes((b, g, r, 0)) for r, g, b in colors)
    return header + table + image + and_mask


def ico(entries):
    """entries: (width, height, bits, data)."""
    out = struct.pack("<HHH", 0, 1, len(entries))
    offset = 6 + 16 * len(entries)
    body = b""
    for width, height, bits, data in entries:
        out += struct.pack("<BBBBHHII", width & 255, height & 255, 0, 0, 1, bits, len(data),
                           offset + len(body))
        body += data
    return out + body


def indexed_icon(size, bits):
    count = 1 << bits
    colors = [palette(i) for i in range(count)]
    rows = indexed_rows(size, size, bits, count)
    return (size, size, bits,
            icon_bitmap(size, size, bits, rows, colors, lambda x, y: int((x * y) % 3 == 0)))


def alpha_icon(size):
    # Every mask bit is set: a decoder that let the mask win would show nothing.
    rows = bgr_rows(size, size, "alpha")
    return (size, size, 32, icon_bitmap(size, size, 32, rows, [], lambda x, y: 1))


def make_icos():
    write("ico_mask_4bit.ico", ico([alpha_icon(16), indexed_icon(24, 4)]))
    write("ico_png.ico", ico([indexed_icon(16, 8), (20, 20, 32, png(rgba_pixels(20, 20), 8, 6))]))
    write("ico_32bit_alpha.ico", ico([indexed_icon(16, 8), alpha_icon(16)]))


# --- GIF -------------------------------------------------------------------

def lzw(indices, min_code_size):
    clear, end = 1 << min_code_size, (1 << min_code_size) + 1
    bits, nbits = 0, 0
    out = bytearray()

    def emit(code, size):
        nonlocal bits, nbits
        bits |= code << nbits
        nbits += size
        while nbits >= 8:
            out.append(bits & 255)
            bits >>= 8
            nbits -= 8

    table = {(i,): i for i in range(clear)}
    next_code, size = end + 1, min_code_size + 1
    emit(clear, size)
    w = ()
    for k in indices:
        if w + (k,) in table:
            w += (k,)
            continue
        emit(table[w], size)
        if next_code < 4096:
            table[w + (k,)] = next_code
            next_code += 1
            # The next code may be the one just added: widen when it no
            # longer fits.
            if next_code > (1 << size) and size < 12:
                size += 1
        else:
            emit(clear, size)
            table = {(i,): i for i in range(clear)}
            next_code, size = end + 1, min_code_size + 1
        w = (k,)
    emit(table[w], size)
    emit(end, size)
    if nbits:
        out.append(bits & 255)
    return bytes(out)


def sub_blocks(data):
    return b"".join(bytes((len(data[i:i + 255]),)) + data[i:i + 255]
                    for i in range(0, len(data), 255)) + b"\0"


def color_table(colors, size_bits):
    return b"".join(bytes(c) for c in colors) + b"\0" * 3 * ((1 << size_bits) - len(colors))


def gif_frame(left, top, width, height, rows, table_bits=None, colors=(), interlaced=False,
              global_bits=1):
    order = list(range(height))
    if interlaced:
        order = [y for first, step in ((0, 8), (4, 8), (2, 4), (1, 2))
                 for y in range(first, height, step)]
    flags = (0x80 | (table_bits - 1) if table_bits else 0) | (0x40 if interlaced else 0)
    descriptor = b"," + struct.pack("<HHHHB", left, top, width, height, flags)
    local = color_table(colors, table_bits) if table_bits else b""
    code_size = max(2, table_bits or global_bits)
    data = lzw([i for y in order for i in rows[y]], code_size)
    return descriptor + local + bytes((code_size,)) + sub_blocks(data)


def gif(width, height, table_bits, colors, body):
    screen = struct.pack("<HHBBB", width, height, 0x80 | 0x70 | (table_bits - 1), 0, 0)
    return b"GIF89a" + screen + color_table(colors, table_bits) + body + b";"


def make_gifs():
    rows = [[index(x, y, 16) for x in range(W)] for y in range(H)]
    control = b"!\xf9\x04\x01\x00\x00\x03\x00"  # transparent index 3
    write("gif_transparent.gif",
          gif(W, H, 4, [palette(i) for i in range(16)], control + gif_frame(0, 0, W, H, rows, global_bits=4)))
    # A first frame inside a larger screen, with its own colours; the second
    # frame covers everything and must not show.
    rows8 = [[index(x, y, 8) for x in range(W)] for y in range(H)]
    first = gif_frame(3, 2, W, H, rows8, 3, [palette(i + 20) for i in range(8)], interlaced=True)
    second = gif_frame(0, 0, 20, 12, [[1] * 20 for _ in range(12)])
    write("gif_interlaced_frame.gif",
          gif(20, 12, 1, [(0, 0, 0), (255, 255, 255)], first + second))


if __name__ == "__main__":
    make_pngs()
    make_bmps()
    make_icos()
    make_gifs()
