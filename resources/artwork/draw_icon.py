#!/usr/bin/env python3
"""Draws tonvale.ico: an ear that sound waves reach. Needs python3-cairo.

Usage: draw_icon.py [folder for pictures of every size]

Written to ../tonvale.ico; the outcome is kept in the repository, and the build does not draw it.
"""

import io
import math
import pathlib
import struct
import sys

import cairo

SIZES = (16, 20, 24, 32, 48, 64, 256)

TOP = (0x1F / 255, 0x7A / 255, 0x8C / 255)
BOTTOM = (0x0B / 255, 0x3C / 255, 0x5D / 255)
EAR = (1, 1, 1)
WAVE = (1, 0xC1 / 255, 0x45 / 255)

# The ear, in a square of 100 by 100: its rim from the lobe up and round to the lobe again, and the
# fold inside it. Each row is one Bezier piece: two control points and an end.
RIM_START = (47, 52)
RIM = (
    (42, 36, 50, 16, 68, 16),
    (86, 16, 92, 32, 90, 46),
    (88, 58, 78, 62, 75, 72),
    (72, 84, 64, 90, 55, 86),
    (50, 84, 48, 79, 48, 75),
)
FOLD_START = (58, 47)
FOLD = (
    (57, 38, 61, 30, 68, 31),
    (77, 32, 77, 43, 72, 49),
    (68, 54, 62, 56, 62, 64),
)
# Waves: radius around the ear's opening, first and last angle.
WAVE_CENTRE = (50, 50)
FINE_WAVES = (14, 26, 38)
COARSE_WAVES = (18, 36)


def rounded_square(context, radius):
    for corner, (x, y) in enumerate(((98, 2), (98, 98), (2, 98), (2, 2))):
        cx = x - radius if x > 50 else x + radius
        cy = y - radius if y > 50 else y + radius
        start = -math.pi / 2 + corner * math.pi / 2
        context.arc(cx, cy, radius, start, start + math.pi / 2)
    context.close_path()


def curve(context, start, pieces):
    context.move_to(*start)
    for piece in pieces:
        context.curve_to(*piece)


def draw(size):
    surface = cairo.ImageSurface(cairo.FORMAT_ARGB32, size, size)
    context = cairo.Context(surface)
    context.scale(size / 100, size / 100)
    context.set_line_cap(cairo.LINE_CAP_ROUND)
    context.set_line_join(cairo.LINE_JOIN_ROUND)

    shade = cairo.LinearGradient(0, 0, 0, 100)
    shade.add_color_stop_rgb(0, *TOP)
    shade.add_color_stop_rgb(1, *BOTTOM)
    rounded_square(context, 18)
    context.set_source(shade)
    context.fill()

    coarse = size < 32
    context.set_source_rgb(*EAR)
    context.set_line_width(9 if coarse else 7.5)
    curve(context, RIM_START, RIM)
    context.stroke()
    context.set_line_width(6.5)
    curve(context, FOLD_START, FOLD)
    context.stroke()

    context.set_source_rgb(*WAVE)
    context.set_line_width(9 if coarse else 6)
    for radius in COARSE_WAVES if coarse else FINE_WAVES:
        context.arc(*WAVE_CENTRE, radius, math.pi * 0.84, math.pi * 1.16)
        context.stroke()
    return surface


def bitmap_entry(surface):
    """A 32-bit device-independent bitmap with its mask: read by every version of Windows."""
    size, stride = surface.get_width(), surface.get_stride()
    pixels = bytes(surface.get_data())
    rows = bytearray()
    for y in reversed(range(size)):
        for x in range(size):
            blue, green, red, alpha = pixels[y * stride + 4 * x:y * stride + 4 * x + 4]
            if alpha:
                blue, green, red = (min(255, c * 255 // alpha) for c in (blue, green, red))
            rows += bytes((blue, green, red, alpha))
    mask = bytes((size + 31) // 32 * 4 * size)
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, len(rows) + len(mask),
                         0, 0, 0, 0)
    return header + rows + mask


def png_entry(surface):
    out = io.BytesIO()
    surface.write_to_png(out)
    return out.getvalue()


def write_icon(path, surfaces):
    """Writes an icon file of square surfaces, the smallest first."""
    entries = [(surface.get_width(),
                png_entry(surface) if surface.get_width() > 48 else bitmap_entry(surface))
               for surface in surfaces]
    directory = struct.pack("<HHH", 0, 1, len(entries))
    offset = len(directory) + 16 * len(entries)
    for size, data in entries:
        directory += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(data),
                                 offset)
        offset += len(data)
    path.write_bytes(directory + b"".join(data for _, data in entries))


def main():
    surfaces = [draw(size) for size in SIZES]
    if len(sys.argv) > 1:
        for size, surface in zip(SIZES, surfaces):
            surface.write_to_png(str(pathlib.Path(sys.argv[1]) / f"icon-{size}.png"))
    write_icon(pathlib.Path(__file__).resolve().parent.parent / "tonvale.ico", surfaces)


if __name__ == "__main__":
    main()
