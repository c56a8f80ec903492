"""The program's icon: a journal with a clock. Drawn for each size anew, with its edges on whole pixels."""

import math

from canvas import Canvas, bar, circle, down, rounded

ICON_SIZES = (16, 20, 24, 32, 40, 48, 64, 256)

OUTLINE = (0x16, 0x2A, 0x4A)
COVER_TOP, COVER_BOTTOM = (0x5A, 0x98, 0xE4), (0x2B, 0x66, 0xB8)
SPINE_TOP, SPINE_BOTTOM = (0x2A, 0x5F, 0xAE), (0x18, 0x42, 0x80)
PAPER, PAPER_SHADOW = (0xFF, 0xFE, 0xFA), (0xE3, 0xDA, 0xC2)
WRITING = (0x5B, 0x66, 0x75)
RIBBON = (0xC3, 0x27, 0x2B)
CLOCK_RIM, CLOCK_RIM_LOW = (0xFF, 0xD2, 0x57), (0xE0, 0x8F, 0x12)
HAND = (0x1F, 0x2A, 0x3C)


def draw_icon(size):
    canvas = Canvas(size)
    unit = size / 256

    def at(value):
        """A place of the drawing, which is 256 wide, on a whole pixel."""
        return round(value * unit)

    line = max(1, at(9))
    draw_book(canvas, at, line)
    draw_clock(canvas, size, line)
    return canvas.pixels()


def draw_book(canvas, at, line):
    left, top, right, bottom = at(26), at(8), at(220), at(240)
    pages = bottom - line - max(1, at(26))
    corner = at(16)
    canvas.fill(rounded(left, top, right, bottom, corner), OUTLINE)
    canvas.fill(rounded(left + line, pages, right - line, bottom - line, max(corner - line, 0)),
                down(pages, bottom - line, PAPER, PAPER_SHADOW))
    canvas.fill(rounded(left, pages - line, right, pages, 0), OUTLINE)
    inner = max(corner - line, 0)
    spine = left + line + max(2, at(30))
    canvas.fill(rounded(left + line, top + line, spine, pages - line, (inner, 0, 0, 0)),
                down(top, pages, SPINE_TOP, SPINE_BOTTOM))
    canvas.fill(rounded(spine, top + line, right - line, pages - line, (0, inner, 0, 0)),
                down(top, pages, COVER_TOP, COVER_BOTTOM))
    draw_label(canvas, at, spine, right - line)
    ribbon = spine + max(1, at(14))
    canvas.fill(rounded(ribbon, pages, ribbon + max(2, at(20)), min(bottom + at(12), canvas.size), 0), RIBBON)


def draw_label(canvas, at, left, right):
    margin = max(1, at(22))
    left, right, top, bottom = left + margin, right - margin, at(44), at(98)
    canvas.fill(rounded(left, top, right, bottom, at(5)), PAPER)
    thick = max(1, at(9))
    room = bottom - top - 2 * thick
    indent = max(1, at(18))
    if room < 3:
        draw_line(canvas, left + indent, right - indent, (top + bottom - thick) // 2, thick)
        return
    draw_line(canvas, left + indent, right - indent, top + round(room / 3), thick)
    draw_line(canvas, left + indent, right - indent - at(34), top + thick + round(room * 2 / 3), thick)


def draw_line(canvas, left, right, top, thick):
    canvas.fill(rounded(left, top, right, top + thick, 0), WRITING)


def draw_clock(canvas, size, line):
    # A hand of an odd width needs its middle in a pixel, one of an even width between two.
    width = max(1, round(size * 0.034))
    radius = int(size * 0.29) + width % 2 / 2
    middle = size - radius
    canvas.fill(circle(middle, middle, radius), OUTLINE)
    rim = radius - line * 0.9
    canvas.fill(circle(middle, middle, rim), down(middle - rim, middle + rim, CLOCK_RIM, CLOCK_RIM_LOW))
    face = rim - max(size * 0.035, 0.8)
    canvas.fill(circle(middle, middle, face), PAPER)
    if size >= 32:
        draw_ticks(canvas, middle, face, size)
    draw_hands(canvas, middle, face, width)
    if size >= 48:
        canvas.fill(circle(middle, middle, width * 0.95), RIBBON)


def draw_hands(canvas, middle, face, width):
    half = width / 2
    long, short = round(face * 0.72 - half) + half, round(face * 0.56 - half) + half
    ends = width / 4 if width > 2 else 0
    canvas.fill(rounded(middle - half, middle - half, middle + short, middle + half, ends),
                RIBBON if width == 1 else HAND)
    canvas.fill(rounded(middle - half, middle - long, middle + half, middle + half, ends), HAND)


def draw_ticks(canvas, middle, face, size):
    for hour in range(0, 12, 3 if size < 64 else 1):
        angle = math.pi * hour / 6
        outer, inner = face * 0.88, face * (0.76 if hour % 3 else 0.70)
        canvas.fill(bar(middle + outer * math.cos(angle), middle + outer * math.sin(angle),
                        middle + inner * math.cos(angle), middle + inner * math.sin(angle),
                        max(1.0, size * 0.016)), WRITING)
