"""What the drawings share: their colours and the bitmap files they are written to."""

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
