#!/usr/bin/python3
"""Draws the picture at the side of the installer's first and last page. Needs python3-cairo and the
Liberation fonts.

Usage: draw_setup.py [folder for a picture]

Written to ../../packaging/side.bmp; the outcome is kept in the repository, and the build does not
draw it.
"""

import pathlib
import sys

import cairo

from draw_icon import BOTTOM, TOP
from draw_splash import DEEP, NAME, SANS, ear, sound
from pixels import write_palette_bitmap

WIDTH, HEIGHT = 164, 314


def main():
    surface = cairo.ImageSurface(cairo.FORMAT_RGB24, WIDTH, HEIGHT)
    context = cairo.Context(surface)
    shade = cairo.LinearGradient(0, 0, WIDTH * 0.5, HEIGHT)
    for place, colour in ((0, TOP), (0.6, BOTTOM), (1, DEEP)):
        shade.add_color_stop_rgb(place, *colour)
    context.set_source(shade)
    context.paint()
    sound(context, 84, 208, range(16, 96, 13), 0.9)
    ear(context, 22, 148, 120)
    context.select_font_face(SANS, cairo.FONT_SLANT_NORMAL, cairo.FONT_WEIGHT_BOLD)
    context.set_font_size(32)
    context.set_source_rgb(1, 1, 1)
    extents = context.text_extents(NAME)
    context.move_to(round((WIDTH - extents.width) / 2 - extents.x_bearing), 62)
    context.show_text(NAME)
    packaging = pathlib.Path(__file__).resolve().parent.parent.parent / "packaging"
    write_palette_bitmap(packaging / "side.bmp", surface)
    if len(sys.argv) > 1:
        surface.write_to_png(str(pathlib.Path(sys.argv[1]) / "side.png"))


if __name__ == "__main__":
    main()
