"""What the drawings share: their colours and the bitmap files they are written to."""

import collections
import functools
import struct


def colour(code):
    """Red, green and blue from 0 to 1 of a colour written as RRGGBB."""
    return tuple(int(code[i:i + 2], 16) / 255 for i in (0, 2, 4))


INK = colour("33475B")
TEAL = colour("1F7A8C")
PALE_TEAL = colour("BFE0E6")
AMBER = colour("D97A0B")
PALE_AMBER = colour("FFC956")
PAPER = colour("FFFFFF")


def straight_alpha(surface):
    """Rows of (blue, green, red, alpha), top first, the colours not multiplied by alpha."""
    width, height, stride = surface.get_width(), surface.get_height(), surface.get_stride()
    data = bytes(surface.get_data())
    for y in range(height):
        row = []
        for at in range(y * stride, y * stride + 4 * width, 4):
            *shades, alpha = data[at:at + 4]
            if alpha:
                shades = [min(255, (c * 255 + alpha // 2) // alpha) for c in shades]
            row.append((*shades, alpha))
        yield row


def write_bitmap(path, width, bits, rows, palette=()):
    """Writes a bitmap file; rows are bytes, top first, without the padding to four bytes."""
    body = b"".join(row + bytes(-len(row) % 4) for row in reversed(rows))
    table = b"".join(bytes((*entry, 0)) for entry in palette)
    offset = 14 + 40 + len(table)
    header = struct.pack("<2sIHHI", b"BM", offset + len(body), 0, 0, offset)
    header += struct.pack("<IiiHHIIiiII", 40, width, len(rows), 1, bits, 0, len(body),
                          0, 0, len(palette), 0)
    path.write_bytes(header + table + body)


def write_alpha_bitmap(path, surface):
    """32 bits with straight alpha: an image list multiplies by alpha itself."""
    rows = [b"".join(map(bytes, row)) for row in straight_alpha(surface)]
    write_bitmap(path, surface.get_width(), 32, rows)


def write_colour_bitmap(path, surface):
    """24 bits; the surface is opaque."""
    rows = [b"".join(bytes(dot[:3]) for dot in row) for row in straight_alpha(surface)]
    write_bitmap(path, surface.get_width(), 24, rows)


def spread(shades):
    """The channel along which colours differ most, and by how much."""
    return max((max(s[c] for s in shades) - min(s[c] for s in shades), c) for c in range(3))


def choose_palette(counts, size):
    """Median cut: halves the box that differs most until there are as many as colours wanted."""
    boxes = [list(counts)]
    while len(boxes) < size:
        (width, channel), box = max(((spread(b), b) for b in boxes), key=lambda pair: pair[0])
        if not width:
            break
        boxes.remove(box)
        box.sort(key=lambda shade: shade[channel])
        half, seen = sum(counts[s] for s in box) / 2, 0
        for cut, shade in enumerate(box[:-1], 1):
            seen += counts[shade]
            if seen >= half:
                break
        boxes += [box[:cut], box[cut:]]
    palette = []
    for box in boxes:
        total = sum(counts[s] for s in box)
        palette.append(tuple(round(sum(s[c] * counts[s] for s in box) / total)
                             for c in range(3)))
    return palette


def write_palette_bitmap(path, surface):
    """8 bits, in 256 colours chosen from those of the opaque surface, errors spread around."""
    picture = [[dot[:3] for dot in row] for row in straight_alpha(surface)]
    counts = collections.Counter(dot for row in picture for dot in row)
    palette = choose_palette(counts, 256)
    nearest = functools.lru_cache(maxsize=None)(lambda shade: min(
        range(len(palette)), key=lambda i: sum((a - b) ** 2 for a, b in zip(palette[i], shade))))
    width = len(picture[0])
    carried = [[0.0] * 3 for _ in range(width + 2)]
    rows = []
    for dots in picture:
        below = [[0.0] * 3 for _ in range(width + 2)]
        row = bytearray()
        for x, dot in enumerate(dots, 1):
            wanted = [min(255.0, max(0.0, c + e)) for c, e in zip(dot, carried[x])]
            index = nearest(tuple(map(round, wanted)))
            row.append(index)
            for c in range(3):
                error = wanted[c] - palette[index][c]
                carried[x + 1][c] += error * 7 / 16
                below[x - 1][c] += error * 3 / 16
                below[x][c] += error * 5 / 16
                below[x + 1][c] += error / 16
        rows.append(bytes(row))
        carried = below
    write_bitmap(path, width, 8, rows, palette)
