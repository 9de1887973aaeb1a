#!/usr/bin/env python3
"""Draws the toolbar example's icons: New, Open, Save, Cut, Copy and Paste
in 16 pixels, Print, Find and Help in 32. Writes each as NAME16.png or
NAME32.png beside this script, then puts every picture into the form,
../toolbar.json, as the Picture of the button of the same name (a form
file carries its pictures inside it). Run it here after changing a glyph;
the PNGs and the form are committed."""
import base64
import json
import os
import struct
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))
FORM = os.path.join(HERE, "..", "toolbar.json")

CLEAR = 0x00000000
BLACK = 0x000000FF
WHITE = 0xFFFFFFFF
GREY = 0x808080FF
SILVER = 0xC0C0C0FF
NAVY = 0x1F3F8FFF
BLUE = 0x2060C0FF
YELLOW = 0xF0D050FF
OCHRE = 0xA08020FF
BROWN = 0x906030FF
RED = 0xC02020FF
GLASS = 0xB0D8F0FF


class Canvas:
    def __init__(self, size):
        self.size = size
        self.pixels = [[CLEAR] * size for _ in range(size)]

    def dot(self, x, y, colour):
        if 0 <= x < self.size and 0 <= y < self.size:
            self.pixels[y][x] = colour

    def fill(self, left, top, right, bottom, colour):
        """Both corners included."""
        for y in range(top, bottom + 1):
            for x in range(left, right + 1):
                self.dot(x, y, colour)

    def box(self, left, top, right, bottom, outline, inside=None):
        if inside is not None:
            self.fill(left, top, right, bottom, inside)
        self.fill(left, top, right, top, outline)
        self.fill(left, bottom, right, bottom, outline)
        self.fill(left, top, left, bottom, outline)
        self.fill(right, top, right, bottom, outline)

    def line(self, x0, y0, x1, y1, colour, width=1):
        steps = max(abs(x1 - x0), abs(y1 - y0), 1)
        for i in range(steps + 1):
            x = round(x0 + (x1 - x0) * i / steps)
            y = round(y0 + (y1 - y0) * i / steps)
            self.fill(x, y, x + width - 1, y + width - 1, colour)

    def ring(self, cx, cy, outer, inner, colour, inside=None):
        """A disc of radius `outer` with a hole of radius `inner`, filled
        with `inside` when given. Centres may be halves."""
        for y in range(self.size):
            for x in range(self.size):
                d = ((x - cx) ** 2 + (y - cy) ** 2) ** 0.5
                if d <= inner and inside is not None:
                    self.dot(x, y, inside)
                elif inner < d <= outer:
                    self.dot(x, y, colour)

    def page(self, left, top, right, bottom, fold):
        """A sheet with its top right corner folded down."""
        self.box(left, top, right, bottom, BLACK, WHITE)
        for i in range(fold + 1):
            self.fill(right - fold + i, top, right, top + i - 1, CLEAR)
        self.line(right - fold, top, right, top + fold, BLACK)
        self.line(right - fold, top, right - fold, top + fold, BLACK)
        self.line(right - fold, top + fold, right, top + fold, BLACK)

    def png(self):
        rows = b"".join(b"\x00" + b"".join(struct.pack(">I", p) for p in row)
                        for row in self.pixels)

        def chunk(tag, data):
            body = tag + data
            return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

        header = struct.pack(">IIBBBBB", self.size, self.size, 8, 6, 0, 0, 0)
        return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
                chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def new_page():
    c = Canvas(16)
    c.page(3, 1, 12, 14, 3)
    return c


def open_folder():
    c = Canvas(16)
    c.box(1, 3, 6, 5, OCHRE, YELLOW)  # the tab
    c.box(1, 5, 12, 13, OCHRE, YELLOW)  # the back
    for y in range(8, 14):  # the front, tipped open
        shift = (13 - y) // 2
        c.fill(3 + shift, y, 14 + shift - 2, y, YELLOW)
        c.dot(3 + shift, y, OCHRE)
        c.dot(14 + shift - 2, y, OCHRE)
    c.fill(5, 8, 14, 8, OCHRE)
    c.fill(1, 13, 12, 13, OCHRE)
    return c


def floppy():
    c = Canvas(16)
    c.box(1, 1, 14, 14, BLACK, NAVY)
    c.fill(4, 1, 11, 6, SILVER)  # the shutter
    c.fill(9, 2, 10, 5, NAVY)
    c.fill(3, 9, 12, 14, WHITE)  # the label
    c.fill(4, 11, 11, 11, GREY)
    c.dot(14, 1, CLEAR)
    return c


def scissors():
    c = Canvas(16)
    c.line(5, 8, 11, 0, GREY)  # the blades, crossing at the screw
    c.line(10, 8, 4, 0, GREY)
    c.line(6, 8, 11, 1, BLACK)
    c.line(9, 8, 4, 1, BLACK)
    c.ring(4.5, 11.5, 3.0, 1.5, RED)  # the handles
    c.ring(10.5, 11.5, 3.0, 1.5, RED)
    return c


def two_pages():
    c = Canvas(16)
    c.page(1, 1, 9, 11, 2)
    c.page(6, 4, 14, 14, 2)
    for y in (8, 10, 12):
        c.fill(8, y, 12, y, GREY)
    return c


def clipboard():
    c = Canvas(16)
    c.box(2, 2, 13, 15, BLACK, BROWN)
    c.box(4, 4, 11, 14, GREY, WHITE)
    for y in (7, 9, 11):
        c.fill(6, y, 9, y, GREY)
    c.box(5, 1, 10, 3, BLACK, SILVER)  # the clip
    return c


def printer():
    c = Canvas(32)
    c.box(9, 2, 22, 12, BLACK, WHITE)  # the paper going in
    c.box(2, 11, 29, 23, BLACK, SILVER)  # the body
    c.fill(3, 12, 28, 13, WHITE)
    c.fill(3, 21, 28, 22, GREY)
    c.fill(24, 15, 26, 16, 0x20B020FF)  # the power light
    c.box(7, 20, 24, 29, BLACK, WHITE)  # the sheet coming out
    for y in (23, 25, 27):
        c.fill(10, y, 21, y, GREY)
    return c


def magnifier():
    c = Canvas(32)
    c.ring(12.5, 12.5, 10.0, 7.5, BLACK, GLASS)
    c.ring(12.5, 12.5, 9.0, 8.0, GREY)
    c.fill(8, 7, 9, 8, WHITE)  # a glint on the glass
    for i in range(9):  # the handle
        c.fill(19 + i, 20 + i, 21 + i, 22 + i, BROWN)
    c.line(20, 19, 29, 28, BLACK)
    return c


def question_mark():
    c = Canvas(32)
    c.ring(15.5, 15.5, 14.5, -1, BLUE)
    c.ring(15.5, 15.5, 14.5, 13.5, NAVY)
    c.ring(15.5, 11.5, 6.5, 3.5, WHITE)
    c.fill(8, 11, 15, 15, BLUE)  # the hook opens on the lower left
    c.fill(14, 16, 17, 20, WHITE)  # the stem
    c.fill(14, 23, 17, 26, WHITE)  # the dot
    return c


ICONS = {
    "new16": new_page,
    "open16": open_folder,
    "save16": floppy,
    "cut16": scissors,
    "copy16": two_pages,
    "paste16": clipboard,
    "print32": printer,
    "find32": magnifier,
    "help32": question_mark,
}


def write_icons():
    pictures = {}
    for name, draw in ICONS.items():
        data = draw().png()
        with open(os.path.join(HERE, name + ".png"), "wb") as file:
            file.write(data)
        pictures[name[:-2]] = base64.b64encode(data).decode("ascii")
    return pictures


def put_into_form(pictures):
    with open(FORM, encoding="utf-8") as file:
        form = json.load(file)

    def visit(controls):
        for control in controls:
            if control["Type"] == "KestuTBButton" and control["Name"] in pictures:
                properties = control.setdefault("Properties", {})
                properties["Picture"] = {"$type": "Picture", "png": pictures[control["Name"]]}
            visit(control.get("Controls", []))

    visit(form["Controls"])
    with open(FORM, "w", encoding="utf-8") as file:
        json.dump(form, file, indent=2, ensure_ascii=False)
        file.write("\n")


put_into_form(write_icons())
