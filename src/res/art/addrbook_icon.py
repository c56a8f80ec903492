"""The address book's icon: a book with a person on its cover and letters at its edge. In the manner of the journal's."""

from canvas import Canvas, circle, down, rounded
from icon import OUTLINE, PAPER, PAPER_SHADOW, RIBBON

COVER_TOP, COVER_BOTTOM = (0x4D, 0xB2, 0x6A), (0x1F, 0x7C, 0x40)
SPINE_TOP, SPINE_BOTTOM = (0x2B, 0x86, 0x49), (0x14, 0x5A, 0x2C)
TABS = (RIBBON, (0xE3, 0x9B, 0x17), (0x3F, 0x7F, 0xCF))


def draw_address_book(size):
    canvas = Canvas(size)

    def at(value):
        """A place of the drawing, which is 256 wide, on a whole pixel."""
        return round(value * size / 256)

    line = max(1, at(9))
    draw_tabs(canvas, at, line)
    draw_book(canvas, at, line)
    draw_person(canvas, at)
    return canvas.pixels()


def draw_tabs(canvas, at, line):
    left, right, height = at(196), at(248), at(50)
    for index, colour in enumerate(TABS):
        top = at(34 + 62 * index)
        canvas.fill(rounded(left, top, right, top + height, at(12)), OUTLINE)
        canvas.fill(rounded(left, top + line, right - line, top + height - line, max(at(12) - line, 0)), colour)


def draw_book(canvas, at, line):
    left, top, right, bottom = at(14), at(8), at(214), at(248)
    corner = at(16)
    pages = bottom - line - max(1, at(22))
    inner = max(corner - line, 0)
    spine = left + line + max(2, at(26))
    canvas.fill(rounded(left, top, right, bottom, corner), OUTLINE)
    canvas.fill(rounded(left + line, pages, right - line, bottom - line, inner),
                down(pages, bottom - line, PAPER, PAPER_SHADOW))
    canvas.fill(rounded(left, pages - line, right, pages, 0), OUTLINE)
    canvas.fill(rounded(left + line, top + line, spine, pages - line, (inner, 0, 0, 0)),
                down(top, pages, SPINE_TOP, SPINE_BOTTOM))
    canvas.fill(rounded(spine, top + line, right - line, pages - line, (0, inner, 0, 0)),
                down(top, pages, COVER_TOP, COVER_BOTTOM))


def draw_person(canvas, at):
    middle, radius = (at(54) + at(202)) / 2, max(at(30), 2)
    canvas.fill(circle(middle, at(82), radius), PAPER)
    half, top, bottom = max(at(56), 3), at(122), at(180)
    canvas.fill(rounded(middle - half, top, middle + half, bottom, (half * 0.8, half * 0.8, 0, 0)), PAPER)
