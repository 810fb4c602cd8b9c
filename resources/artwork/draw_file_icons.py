#!/usr/bin/python3
"""Draws the icons of the data files and of report documents: the toolbar's image of each on a page.
Needs python3-cairo and the Liberation fonts.

Usage: draw_file_icons.py [folder for pictures of every size]

Written to ../file_*.ico; the outcome is kept in the repository, and the build does not draw it. The
two smallest sizes have no room for a page: the image stands alone.
"""

import pathlib
import sys

import cairo

from draw_icon import write_icon
from draw_toolbars import (Sheet, attenuation, damage, daily_level, document, group_level,
                           noise_spectrum, protector_choice, uncertainty, weekly_level)
from pixels import AMBER, INK, PALE_TEAL, PAPER, TEAL

# Of an icon: size, width of the page (0: none), width of the outline; of the image on it: width,
# width of its straight lines, weight of its curved ones, distance from the icon's top. In pixels.
SIZES = (
    (16, 0, 0, 16, 1, 1, 0),
    (20, 0, 0, 20, 1, 1.15, 0),
    (24, 20, 1, 16, 1, 1, 7),
    (32, 26, 1, 20, 1, 1.15, 10),
    (40, 32, 1, 24, 1, 1.35, 13),
    (48, 40, 1, 32, 2, 2, 14),
    (64, 52, 2, 40, 2, 2.4, 20),
    (256, 208, 6, 160, 8, 9, 80),
)
FOLD = 0.27  # of the page's width


def report(sheet):
    """What a report's page shows."""
    sheet.row(1, 9, 0, AMBER)
    for y in (3, 5, 7):
        sheet.row(1, 14, y, TEAL)
    sheet.row(1, 6, 10, TEAL)
    sheet.row(1, 6, 12, TEAL)
    for x, top in ((9, 11), (11, 9), (13, 10)):
        sheet.fill(x, top, x, 13, INK)


# Extension of the files, image without and with a page.
KINDS = (
    ("lep", daily_level, daily_level),
    ("lew", weekly_level, weekly_level),
    ("leg", group_level, group_level),
    ("ilg", damage, damage),
    ("spr", noise_spectrum, noise_spectrum),
    ("spi", attenuation, attenuation),
    ("dpi", protector_choice, protector_choice),
    ("err", uncertainty, uncertainty),
    ("tnv", document, report),
)


def page(context, size, width, line):
    """A page with its corner folded, as high as the icon."""
    left, top = (size - width) / 2 + line / 2, line / 2
    right, bottom = left + width - line, size - line / 2
    fold = round(width * FOLD)
    context.set_line_width(line)
    context.set_line_join(cairo.LINE_JOIN_MITER)
    outline = ((left, top), (right - fold, top), (right, top + fold), (right, bottom),
               (left, bottom), (left, top))
    corner = ((right - fold, top), (right - fold, top + fold), (right, top + fold))
    for points, inside, drawn in ((outline, PAPER, False), (corner, PALE_TEAL, True),
                                  (outline, None, True)):
        for point in points:
            context.line_to(*point)
        if points is outline:
            context.close_path()
        if inside:
            context.set_source_rgb(*inside)
            context.fill_preserve()
        if drawn:
            context.set_source_rgb(*INK)
            context.stroke_preserve()
        context.new_path()


def draw(image, paged_image, size, page_width, line, image_width, rule, weight, top):
    surface = cairo.ImageSurface(cairo.FORMAT_ARGB32, size, size)
    context = cairo.Context(surface)
    if page_width:
        page(context, size, page_width, line)
    sheet = Sheet(image_width, image_width, rule, weight)
    (paged_image if page_width else image)(sheet)
    context.set_source_surface(sheet.surface, (size - image_width) // 2, top)
    context.paint()
    return surface


def main():
    resources = pathlib.Path(__file__).resolve().parent.parent
    for extension, image, paged_image in KINDS:
        surfaces = [draw(image, paged_image, *row) for row in SIZES]
        write_icon(resources / f"file_{extension}.ico", surfaces)
        if len(sys.argv) > 1:
            for surface in surfaces:
                name = f"file-{extension}-{surface.get_width()}.png"
                surface.write_to_png(str(pathlib.Path(sys.argv[1]) / name))


if __name__ == "__main__":
    main()
