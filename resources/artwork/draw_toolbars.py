#!/usr/bin/python3
"""Draws the images of the two toolbars. Needs python3-cairo and the Liberation fonts.

Usage: draw_toolbars.py [folder for pictures of every strip]

Written to ../toolbar_*.bmp and ../format_*.bmp; the outcome is kept in the repository, and the
build does not draw it. An image is laid out on a sheet of 16 by 15 cells. Every size is drawn anew
with its lines on whole pixels, rather than scaled.
"""

import contextlib
import math
import pathlib
import sys

import cairo

from pixels import AMBER, INK, PALE_AMBER, PALE_TEAL, PAPER, TEAL, write_alpha_bitmap

# Width and height of an image, width of its straight lines (whole pixels) and weight of its curved
# ones, in pixels, for 100, 125, 150 and 200 %.
SIZES = ((16, 15, 1, 1), (20, 19, 1, 1.15), (24, 23, 1, 1.35), (32, 30, 2, 2))
SANS = "Liberation Sans"


class Sheet:
    """One image. A cell is named by its column and row, from 0; a line runs through cells."""

    def __init__(self, width, height, rule, weight):
        self.surface = cairo.ImageSurface(cairo.FORMAT_ARGB32, width, height)
        self.scale = width / 16
        self.rule = rule
        self.weight = weight
        self.context = cairo.Context(self.surface)
        self.context.set_line_cap(cairo.LINE_CAP_ROUND)
        self.context.set_line_join(cairo.LINE_JOIN_MITER)

    def edge(self, cell):
        """The pixel at which a cell begins."""
        return math.floor(cell * self.scale + 0.5)

    def middle(self, cell):
        """The middle of a line that runs through a cell."""
        return self.edge(cell) + self.rule / 2

    def fill(self, left, top, right, bottom, shade):
        """Fills the cells from (left, top) to (right, bottom), these included."""
        self.context.set_source_rgb(*shade)
        x, y = self.edge(left), self.edge(top)
        self.context.rectangle(x, y, self.edge(right + 1) - x, self.edge(bottom + 1) - y)
        self.context.fill()

    def square(self, left, top, cells, shade):
        """Of the same size wherever it lies."""
        self.context.set_source_rgb(*shade)
        side = self.edge(cells)
        self.context.rectangle(self.edge(left), self.edge(top), side, side)
        self.context.fill()

    def bars(self, tops, shade, cap):
        """Equal bars at equal distances, each from its row down to the last, under a cap."""
        width, step = math.floor(2 * self.scale), math.floor(3 * self.scale + 0.4)
        left = (self.surface.get_width() - step * len(tops) + step - width) // 2
        for place, top in enumerate(tops):
            y = self.edge(top)
            x = left + place * step
            self.context.set_source_rgb(*shade)
            self.context.rectangle(x, y, width, self.edge(15) - y)
            self.context.fill()
            self.context.set_source_rgb(*cap)
            self.context.rectangle(x, y - self.rule, width, self.rule)
            self.context.fill()

    def row(self, left, right, y, shade=INK):
        self.context.set_source_rgb(*shade)
        x = self.edge(left)
        self.context.rectangle(x, self.edge(y), self.edge(right) + self.rule - x, self.rule)
        self.context.fill()

    def column(self, x, top, bottom, shade=INK):
        self.context.set_source_rgb(*shade)
        y = self.edge(top)
        self.context.rectangle(self.edge(x), y, self.rule, self.edge(bottom) + self.rule - y)
        self.context.fill()

    def finish(self, line, inside, heavier=1.0, straight=False):
        if inside:
            self.context.set_source_rgb(*inside)
            self.context.fill_preserve()
        if line:
            self.context.set_source_rgb(*line)
            self.context.set_line_width(self.rule if straight else self.weight * heavier)
            self.context.stroke()
        self.context.new_path()

    def box(self, left, top, right, bottom, line=INK, inside=None):
        x, y = self.middle(left), self.middle(top)
        self.context.rectangle(x, y, self.middle(right) - x, self.middle(bottom) - y)
        self.finish(line, inside, straight=True)

    def path(self, points, line=INK, inside=None, closed=False, heavier=1.0):
        for x, y in points:
            self.context.line_to(self.middle(x), self.middle(y))
        if closed:
            self.context.close_path()
        self.finish(line, inside, heavier, straight=heavier == 1.0)

    def round(self, left, top, right, bottom, line=INK, inside=None, heavier=1.0):
        """An ellipse whose line runs through these outermost cells."""
        x0, y0, x1, y1 = map(self.middle, (left, top, right, bottom))
        if right - left == bottom - top:
            y1 = y0 + x1 - x0
        with self.turned((x0 + x1) / 2, (y0 + y1) / 2, (x1 - x0) / 2, (y1 - y0) / 2):
            self.context.new_sub_path()
            self.context.arc(0, 0, 1, 0, 2 * math.pi)
        self.finish(line, inside, heavier)

    def arc(self, x, y, radius, first, last, line=INK, heavier=1.0):
        """Part of a circle, angles in degrees clockwise from the right."""
        self.context.new_sub_path()
        self.context.arc(self.middle(x), self.middle(y), radius * self.scale,
                         math.radians(first), math.radians(last))
        self.finish(line, None, heavier)

    def bend(self, start, *pieces, line=INK, inside=None, heavier=1.0):
        """A smooth line of Bezier pieces: two control points and an end each, in cells."""
        def place(values):
            return [(v + 0.5) * self.scale for v in values]
        self.context.move_to(*place(start))
        for piece in pieces:
            self.context.curve_to(*place(piece))
        self.finish(line, inside, heavier)

    def text(self, letters, x, baseline, size, shade=INK, slant=False):
        """Letters centred on the middle of the sheet's column x; size in cells."""
        self.context.select_font_face(
            SANS, cairo.FONT_SLANT_ITALIC if slant else cairo.FONT_SLANT_NORMAL,
            cairo.FONT_WEIGHT_BOLD)
        options = cairo.FontOptions()
        options.set_antialias(cairo.ANTIALIAS_GRAY)
        options.set_hint_style(
            cairo.HINT_STYLE_FULL if self.scale == 1 else cairo.HINT_STYLE_SLIGHT)
        self.context.set_font_options(options)
        self.context.set_font_size(round(size * self.scale))
        extents = self.context.text_extents(letters)
        left = (x + 0.5) * self.scale - extents.width / 2 - extents.x_bearing
        self.context.move_to(round(left), self.edge(baseline + 1))
        self.context.set_source_rgb(*shade)
        self.context.show_text(letters)
        self.context.new_path()

    @contextlib.contextmanager
    def cleared(self):
        """What is drawn inside becomes transparent: a gap around what comes in front."""
        self.context.set_operator(cairo.OPERATOR_CLEAR)
        yield
        self.context.set_operator(cairo.OPERATOR_OVER)

    @contextlib.contextmanager
    def turned(self, x, y, wide, high):
        self.context.save()
        self.context.translate(x, y)
        self.context.scale(wide, high)
        yield
        self.context.restore()


# --- Pieces that several images share ---


def page(sheet, left, top, right, bottom, fold=3):
    corner = right - fold
    sheet.path(((left, top), (corner, top), (right, top + fold), (right, bottom), (left, bottom)),
               inside=PAPER, closed=True)
    sheet.path(((corner, top), (corner, top + fold), (right, top + fold)), inside=PALE_TEAL)


def calendar(sheet, head, letter, baseline):
    sheet.box(1, 2, 14, 14, inside=PAPER)
    sheet.fill(2, 3, 13, 4, head)
    sheet.column(4, 0, 3)
    sheet.column(11, 0, 3)
    sheet.text(letter, 7.5, baseline, 10)


def ear(sheet):
    sheet.bend((2, 11), (3.5, 15, 6.5, 13.5, 7, 11), (7.5, 8.5, 8.5, 8.5, 9.5, 6),
               (10.5, 3.5, 9.5, 0, 6, 0), (3, 0, 1, 2, 1.5, 5.5), (1.7, 7.5, 1.5, 9, 2, 11),
               inside=PALE_AMBER)
    sheet.bend((4, 5), (4, 2, 7.2, 2, 7.2, 4.5), (7, 6.5, 5, 6.5, 5, 9))


def earmuff(sheet, left, right, top, cup, inside):
    """Headband over two cups; cup is the row at which they begin."""
    middle, radius = (left + right) / 2, (right - left) / 2 - 2
    sheet.bend((middle - radius, cup), (middle - radius, top - 1.5, middle + radius, top - 1.5,
                                        middle + radius, cup), heavier=1.5)
    for x, inner in ((left, left + 4), (right, right - 4)):
        outer = 1 if x < inner else -1
        sheet.path(((inner, cup), (inner, cup + 7), (x + outer, cup + 7), (x, cup + 6),
                    (x, cup + 1), (x + outer, cup)), inside=inside, closed=True)


def loss_axes(sheet):
    """Axes of hearing loss, which grows downwards."""
    sheet.row(0, 15, 0)
    sheet.column(0, 0, 14)


def axes(sheet):
    sheet.column(1, 0, 13)
    sheet.row(1, 15, 13)


def person(sheet, x, top, shade):
    """Head and shoulders, x being the left one of the two middle columns."""
    sheet.round(x - 1, top, x + 2, top + 3, line=shade, inside=shade)
    sheet.path(((x - 3, top + 10), (x - 3, top + 7), (x - 1, top + 5), (x + 2, top + 5),
                (x + 4, top + 7), (x + 4, top + 10)), line=shade, inside=shade, closed=True)


def noise_curve(sheet):
    sheet.bend((1.5, 2.5), (9, 2.5, 9, 4, 10.5, 8.5), (11.5, 12, 12.5, 11.5, 14.5, 5.5), line=AMBER,
               heavier=1.5)


def loudspeaker(sheet, left, top):
    sheet.path(((left, top + 2), (left + 1, top + 2), (left + 3, top), (left + 3, top + 6),
                (left + 1, top + 4), (left, top + 4)), inside=INK, closed=True)
    sheet.arc(left + 3, top + 3, 2.5, -45, 45)


# --- Main toolbar ---


def open_file(sheet):
    sheet.path(((1, 13), (1, 2), (6, 2), (7, 4), (12, 4), (12, 7)), inside=PALE_AMBER)
    sheet.path(((1, 13), (4, 7), (15, 7), (12, 13)), inside=PALE_AMBER, closed=True)


def save(sheet):
    sheet.path(((1, 1), (12, 1), (14, 3), (14, 14), (1, 14)), inside=TEAL, closed=True)
    sheet.fill(4, 2, 10, 4, PAPER)
    sheet.fill(8, 2, 9, 4, INK)
    sheet.fill(4, 8, 11, 13, PAPER)
    sheet.row(5, 10, 9, INK)
    sheet.row(5, 10, 11, INK)


def print_page(sheet):
    sheet.box(4, 1, 11, 6, inside=PAPER)
    sheet.box(1, 5, 14, 11, inside=PALE_TEAL)
    sheet.fill(11, 7, 12, 7, AMBER)
    sheet.box(4, 9, 11, 14, inside=PAPER)
    sheet.row(6, 9, 11)


def cut(sheet):
    sheet.path(((4, 0), (9.5, 9.5)), heavier=1.25)
    sheet.path(((11, 0), (5.5, 9.5)), heavier=1.25)
    sheet.round(2, 9, 6, 13, line=TEAL, heavier=1.5)
    sheet.round(9, 9, 13, 13, line=TEAL, heavier=1.5)


def copy(sheet):
    page(sheet, 1, 0, 8, 10)
    page(sheet, 6, 4, 14, 14)
    sheet.row(8, 12, 9, TEAL)
    sheet.row(8, 12, 11, TEAL)


def paste(sheet):
    sheet.box(1, 2, 11, 14, inside=PALE_AMBER)
    sheet.box(4, 1, 8, 3, inside=PAPER)
    page(sheet, 6, 6, 14, 14)
    sheet.row(8, 12, 10, TEAL)
    sheet.row(8, 12, 12, TEAL)


def chart(sheet):
    axes(sheet)
    sheet.path(((3, 10), (6, 6), (9, 8), (14, 2)), line=TEAL, heavier=1.5)
    sheet.path(((3, 11), (8, 11), (14, 7)), line=AMBER, heavier=1.5)


def audiogram(sheet):
    sheet.box(0, 0, 15, 14, inside=PAPER)
    for y in (4, 7, 10):
        sheet.row(1, 14, y, PALE_TEAL)
    sheet.path(((4, 4), (11, 10)), line=INK)
    sheet.round(2, 2, 6, 6, line=AMBER, inside=PAPER, heavier=1.5)
    sheet.path(((9, 8), (13, 12)), line=TEAL, heavier=1.5)
    sheet.path(((13, 8), (9, 12)), line=TEAL, heavier=1.5)


def table(sheet):
    sheet.box(1, 1, 14, 13, inside=PAPER)
    sheet.fill(2, 2, 13, 4, TEAL)
    sheet.row(1, 14, 4)
    sheet.row(1, 14, 7)
    sheet.row(1, 14, 10)
    sheet.column(5, 4, 13)
    sheet.column(10, 4, 13)


def document(sheet):
    page(sheet, 2, 0, 13, 14, fold=4)
    sheet.row(4, 7, 4, TEAL)
    for y in (7, 9, 11):
        sheet.row(4, 11, y, TEAL)


def daily_level(sheet):
    calendar(sheet, PALE_AMBER, "d", 12)


def weekly_level(sheet):
    calendar(sheet, TEAL, "w", 12)


def group_level(sheet):
    person(sheet, 3, 0, TEAL)
    person(sheet, 11, 0, TEAL)
    with sheet.cleared():
        sheet.fill(3, 8, 12, 14, INK)
        sheet.round(5, 3, 10, 8, inside=INK)
    person(sheet, 7, 4, AMBER)


def uncertainty(sheet):
    sheet.row(0, 15, 13)
    sheet.bend((0.5, 11.5), (4, 11.5, 3, 2.5, 5.5, 2.5), (8, 2.5, 7, 11.5, 11, 11.5),
               line=TEAL, heavier=1.5)
    sheet.row(10, 14, 3, AMBER)
    sheet.column(12, 1, 5, AMBER)
    sheet.row(10, 14, 7, AMBER)


def noise_spectrum(sheet):
    sheet.bars((9, 5, 2, 4, 7), TEAL, AMBER)


def attenuation(sheet):
    earmuff(sheet, 1, 14, 1, 7, TEAL)


def protector_choice(sheet):
    earmuff(sheet, 0, 12, 0, 5, PALE_TEAL)
    tick = ((6, 10), (9, 13), (14, 5))
    with sheet.cleared():
        sheet.path(tick, heavier=4)
    sheet.path(tick, line=AMBER, heavier=2)


def damage(sheet):
    ear(sheet)
    sheet.path(((14, 0), (11, 6), (14, 6), (11, 14)), line=AMBER, heavier=1.5)


def noise_shift(sheet):
    loss_axes(sheet)
    noise_curve(sheet)
    loudspeaker(sheet, 2, 7)


def age_threshold(sheet):
    loss_axes(sheet)
    sheet.bend((1.5, 2.5), (7, 3, 11, 5.5, 14.5, 12.5), line=TEAL, heavier=1.5)
    sheet.path(((2, 7), (6, 7), (2, 13), (6, 13)), inside=PALE_AMBER, closed=True)


def age_and_noise_threshold(sheet):
    loss_axes(sheet)
    sheet.bend((1.5, 2.5), (7, 2.5, 11, 3.5, 14.5, 6.5), line=TEAL, heavier=1.5)
    sheet.bend((1.5, 5), (8, 5, 8, 8, 9.5, 11), (11, 14, 12, 14, 14.5, 10.5), line=AMBER,
               heavier=1.5)


def prediction(sheet):
    axes(sheet)
    sheet.bend((2.5, 11.5), (4, 11, 5, 9.5, 6, 8), line=INK, heavier=1.5)
    for x, high, low in ((8, 4, 7), (11, 2, 6), (14, 0, 6)):
        sheet.square(x, high, 2, TEAL)
        sheet.square(x, low, 2, AMBER)


def damage_evolution(sheet):
    sheet.path(((1, 14), (1, 12), (5, 12), (5, 9), (9, 9), (9, 6), (14, 6), (14, 14)),
               inside=PALE_TEAL, closed=True)
    sheet.path(((1, 8), (8, 1)), line=AMBER, heavier=1.5)
    sheet.path(((4, 1), (8, 1), (8, 5)), line=AMBER)


def risk(sheet):
    sheet.path(((7.5, 1), (15, 14), (0, 14)), inside=PALE_AMBER, closed=True)
    sheet.fill(7, 5, 8, 9, INK)
    sheet.fill(7, 11, 8, 12, INK)


def manual(sheet):
    sheet.round(1, 0, 14, 13, inside=TEAL)
    sheet.text("?", 7.5, 10, 11, PAPER)


def loss_by_time(sheet):
    axes(sheet)
    sheet.bend((2, 12), (3, 4, 8, 2, 15, 1.5), line=TEAL, heavier=1.5)
    sheet.round(8, 5, 14, 11, inside=PAPER)
    sheet.path(((11, 6), (11, 8), (13, 8)), line=AMBER)


def loss_by_level(sheet):
    axes(sheet)
    sheet.bend((2, 12), (9, 12, 13, 8, 15, 1), line=TEAL, heavier=1.5)
    loudspeaker(sheet, 3, 1)


# --- Formatting toolbar ---


def bold(sheet):
    sheet.text("G", 7.5, 12, 15)


def italic(sheet):
    sheet.text("C", 7.5, 12, 15, slant=True)


def underline(sheet):
    sheet.text("S", 7.5, 10, 14)
    sheet.row(2, 13, 13, TEAL)


def text_colour(sheet):
    sheet.text("A", 7.5, 9, 13)
    sheet.fill(2, 11, 13, 13, AMBER)


def lines(sheet, spans):
    for y, (left, right) in zip((1, 4, 7, 10, 13), spans):
        sheet.row(left, right, y)


def align_left(sheet):
    lines(sheet, ((1, 14), (1, 9), (1, 14), (1, 9), (1, 14)))


def align_centre(sheet):
    lines(sheet, ((1, 14), (4, 11), (1, 14), (4, 11), (1, 14)))


def align_right(sheet):
    lines(sheet, ((1, 14), (6, 14), (1, 14), (6, 14), (1, 14)))


def word_wrap(sheet):
    sheet.row(1, 14, 1)
    sheet.row(1, 9, 5)
    sheet.row(11, 14, 5, TEAL)
    sheet.column(14, 5, 9, TEAL)
    sheet.row(8, 14, 9, TEAL)
    sheet.path(((10, 7), (8, 9), (10, 11)), line=TEAL)
    sheet.row(1, 5, 9)
    sheet.row(1, 14, 13)


def bullets(sheet):
    for y in (1, 6, 11):
        sheet.square(1, y, 3, TEAL)
        sheet.row(6, 14, y + 1)


def superscript(sheet):
    sheet.text("x", 5, 12, 13)
    sheet.text("2", 12, 6, 8, TEAL)


def subscript(sheet):
    sheet.text("x", 5, 9, 13)
    sheet.text("2", 12, 13, 8, TEAL)


def font(sheet):
    sheet.text("A", 4.5, 12, 14)
    sheet.text("a", 12.5, 12, 11, TEAL)


TOOLBAR = (
    open_file, save, print_page, cut, copy, paste, chart, audiogram, table, document,
    daily_level, weekly_level, group_level, uncertainty, noise_spectrum, attenuation,
    protector_choice, damage, noise_shift, age_threshold, age_and_noise_threshold,
    prediction, damage_evolution, risk, manual, loss_by_time, loss_by_level,
)
FORMAT = (
    bold, italic, underline, text_colour, align_left, align_centre, align_right, word_wrap,
    bullets, superscript, subscript, font,
)


def strip(images, width, height, rule, weight):
    surface = cairo.ImageSurface(cairo.FORMAT_ARGB32, width * len(images), height)
    context = cairo.Context(surface)
    for place, draw in enumerate(images):
        sheet = Sheet(width, height, rule, weight)
        draw(sheet)
        context.set_source_surface(sheet.surface, place * width, 0)
        context.paint()
    return surface


def main():
    resources = pathlib.Path(__file__).resolve().parent.parent
    for name, images in (("toolbar", TOOLBAR), ("format", FORMAT)):
        for width, height, rule, weight in SIZES:
            surface = strip(images, width, height, rule, weight)
            write_alpha_bitmap(resources / f"{name}_{width}.bmp", surface)
            if len(sys.argv) > 1:
                surface.write_to_png(str(pathlib.Path(sys.argv[1]) / f"{name}_{width}.png"))


if __name__ == "__main__":
    main()
