#!/usr/bin/python3
"""Draws the splash picture. Needs python3-cairo and the Liberation fonts.

Usage: draw_splash.py [folder for pictures of every size]

Written to ../splash.bmp (24 bits) and ../splash_2x.bmp (8 bits); the outcome is kept in the
repository, and the build does not draw it.
"""

import math
import pathlib
import sys

import cairo

from draw_icon import BOTTOM, FOLD, FOLD_START, RIM, RIM_START, TOP, WAVE, WAVE_CENTRE, curve
from pixels import write_colour_bitmap, write_palette_bitmap

WIDTH, HEIGHT = 480, 280
NAME = "Tonvale"
SUBTITLE = "Rumore, udito e danno:"
SUBTITLE_END = "i calcoli dell’igienista industriale"
DEEP = (0x07 / 255, 0x2A / 255, 0x43 / 255)
SANS = "Liberation Sans"

# The audiogram under the name: frequencies go right in octaves, loss downwards.
PLOT = (36, 168, 216, 84)
LOSS = (10, 12, 15, 24, 46, 62, 44)
LOSS_OTHER_EAR = (6, 8, 9, 14, 28, 42, 33)
DEEPEST_LOSS = 80


def background(context):
    shade = cairo.LinearGradient(0, 0, WIDTH * 0.35, HEIGHT)
    shade.add_color_stop_rgb(0, *TOP)
    shade.add_color_stop_rgb(0.6, *BOTTOM)
    shade.add_color_stop_rgb(1, *DEEP)
    context.set_source(shade)
    context.paint()


def sound(context, x, y, radii, opacity):
    """Waves that come to the ear from the left, fainter the farther they are."""
    context.set_line_cap(cairo.LINE_CAP_ROUND)
    for place, radius in enumerate(radii):
        context.set_source_rgba(*WAVE, opacity * (1 - place / len(radii)) ** 1.2)
        context.set_line_width(5 - 3.4 * place / len(radii))
        context.new_sub_path()
        context.arc(x, y, radius, math.pi * 0.84, math.pi * 1.16)
        context.stroke()


def ear(context, left, top, size):
    context.save()
    context.translate(left, top)
    context.scale(size / 100, size / 100)
    context.set_line_cap(cairo.LINE_CAP_ROUND)
    context.set_source_rgb(1, 1, 1)
    context.set_line_width(5)
    curve(context, RIM_START, RIM)
    context.stroke()
    context.set_line_width(4)
    curve(context, FOLD_START, FOLD)
    context.stroke()
    context.restore()


def smooth(context, points):
    """A smooth line through points at equal distances along x."""
    context.move_to(*points[0])
    for i in range(len(points) - 1):
        (x0, y0), (x1, y1) = points[i], points[i + 1]
        before = points[max(i - 1, 0)][1]
        after = points[min(i + 2, len(points) - 1)][1]
        third = (x1 - x0) / 3
        context.curve_to(x0 + third, y0 + (y1 - before) / 6, x1 - third, y1 - (after - y0) / 6,
                         x1, y1)


def audiogram(context):
    left, top, width, height = PLOT
    step = width / (len(LOSS) - 1)
    context.set_line_width(1)
    context.set_source_rgba(1, 1, 1, 0.16)
    for i in range(len(LOSS)):
        x = round(left + i * step) + 0.5
        context.move_to(x, top)
        context.line_to(x, top + height)
    for i in range(5):
        y = round(top + i * height / 4) + 0.5
        context.move_to(left, y)
        context.line_to(left + width, y)
    context.stroke()
    for losses, shade, cross in ((LOSS_OTHER_EAR, (1, 1, 1), True), (LOSS, WAVE, False)):
        points = [(left + i * step + 0.5, top + loss * height / DEEPEST_LOSS + 0.5)
                  for i, loss in enumerate(losses)]
        context.set_source_rgba(*shade, 0.75)
        context.set_line_width(1.6)
        smooth(context, points)
        context.stroke()
        context.set_source_rgb(*shade)
        for x, y in points:
            mark(context, x, y, cross)


def mark(context, x, y, cross):
    """A cross for the left ear, a ring for the right one, as audiograms have them."""
    context.set_line_width(1.8)
    if cross:
        for turn in (-1, 1):
            context.move_to(x - 3.5, y - 3.5 * turn)
            context.line_to(x + 3.5, y + 3.5 * turn)
    else:
        context.new_sub_path()
        context.arc(x, y, 4, 0, 2 * math.pi)
    context.stroke()


def lettering(context):
    options = cairo.FontOptions()
    options.set_antialias(cairo.ANTIALIAS_GRAY)
    options.set_hint_style(cairo.HINT_STYLE_SLIGHT)
    options.set_hint_metrics(cairo.HINT_METRICS_OFF)
    context.set_font_options(options)
    for text, y, size, weight, opacity in (
            (NAME, 84, 64, cairo.FONT_WEIGHT_BOLD, 1),
            (SUBTITLE, 116, 16, cairo.FONT_WEIGHT_NORMAL, 0.92),
            (SUBTITLE_END, 138, 16, cairo.FONT_WEIGHT_NORMAL, 0.92)):
        context.select_font_face(SANS, cairo.FONT_SLANT_NORMAL, weight)
        context.set_font_size(size)
        context.set_source_rgba(1, 1, 1, opacity)
        context.move_to(36 - context.text_extents(text).x_bearing, y)
        context.show_text(text)


def draw(scale):
    surface = cairo.ImageSurface(cairo.FORMAT_RGB24, WIDTH * scale, HEIGHT * scale)
    context = cairo.Context(surface)
    context.scale(scale, scale)
    background(context)
    size, left, top = 236, 232, 18
    x, y = (left + WAVE_CENTRE[0] * size / 100, top + WAVE_CENTRE[1] * size / 100)
    sound(context, x, y, (26, 44, 62, 80), 0.95)
    ear(context, left, top, size)
    audiogram(context)
    lettering(context)
    context.set_source_rgb(*WAVE)
    context.rectangle(0, HEIGHT - 5, WIDTH, 5)
    context.fill()
    return surface


def main():
    resources = pathlib.Path(__file__).resolve().parent.parent
    for name, scale, write in (("splash", 1, write_colour_bitmap),
                               ("splash_2x", 2, write_palette_bitmap)):
        surface = draw(scale)
        write(resources / f"{name}.bmp", surface)
        if len(sys.argv) > 1:
            surface.write_to_png(str(pathlib.Path(sys.argv[1]) / f"{name}.png"))


if __name__ == "__main__":
    main()
