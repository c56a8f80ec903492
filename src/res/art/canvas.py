"""A picture with alpha that filled outlines are painted on, smooth at the edges."""

import math


def circle(x, y, radius):
    count = max(24, int(radius * 4))
    steps = (2 * math.pi * i / count for i in range(count))
    return [(x + radius * math.cos(a), y + radius * math.sin(a)) for a in steps]


def rounded(left, top, right, bottom, radius):
    """A rectangle; radius is one for all corners or four of them, clockwise from the top left one."""
    radii = radius if isinstance(radius, tuple) else (radius,) * 4
    corners = ((left, top, 1, 1), (right, top, -1, 1), (right, bottom, -1, -1), (left, bottom, 1, -1))
    points = []
    for index, ((x, y, inward_x, inward_y), r) in enumerate(zip(corners, radii)):
        centre = (x + inward_x * r, y + inward_y * r)
        for step in range(9):
            angle = math.pi * (1 + index / 2 + step / 16)
            points.append((centre[0] + r * math.cos(angle), centre[1] + r * math.sin(angle)))
    return points


def bar(x0, y0, x1, y1, width):
    """A line with round ends."""
    direction = math.atan2(y1 - y0, x1 - x0)
    points = []
    for x, y, start in ((x0, y0, direction + math.pi / 2), (x1, y1, direction - math.pi / 2)):
        points += [(x + width / 2 * math.cos(start + math.pi * i / 12),
                    y + width / 2 * math.sin(start + math.pi * i / 12)) for i in range(13)]
    return points


def down(top, bottom, upper, lower):
    """A paint that changes from one colour to another from the height top to bottom."""

    def colour(y):
        share = min(max((y - top) / max(bottom - top, 1), 0), 1)
        return tuple(a + (b - a) * share for a, b in zip(upper, lower))

    return colour


class Canvas:
    def __init__(self, size):
        self.size = size
        self.lines = 16 if size <= 64 else 5  # a pixel row is looked at along so many lines
        self.rows = [[(0.0, 0.0, 0.0, 0.0)] * size for _ in range(size)]  # colours multiplied by alpha

    def fill(self, outline, paint, opacity=1.0):
        """outline: points of a closed line. paint: (red, green, blue), or a function of the height."""
        top = max(0, math.floor(min(y for _, y in outline)))
        bottom = min(self.size, math.ceil(max(y for _, y in outline)))
        sides = zip(outline, outline[1:] + outline[:1])
        edges = [(a, b) if a[1] < b[1] else (b, a) for a, b in sides if a[1] != b[1]]
        for y in range(top, bottom):
            near = [edge for edge in edges if edge[0][1] < y + 1 and edge[1][1] > y]
            cover = [0.0] * self.size
            for line in range(self.lines):
                self._add_spans(near, y + (line + 0.5) / self.lines, cover)
            self._paint_row(y, cover, paint(y + 0.5) if callable(paint) else paint, opacity)

    def _add_spans(self, edges, y, cover):
        crossings = sorted(a[0] + (b[0] - a[0]) * (y - a[1]) / (b[1] - a[1])
                           for a, b in edges if a[1] <= y < b[1])
        for left, right in zip(crossings[::2], crossings[1::2]):
            left, right = max(left, 0.0), min(right, float(self.size))
            for x in range(int(left), min(math.ceil(right), self.size)):
                cover[x] += (min(right, x + 1) - max(left, x)) / self.lines

    def _paint_row(self, y, cover, colour, opacity):
        row = self.rows[y]
        for x, share in enumerate(cover):
            if share <= 0:
                continue
            alpha = min(share, 1.0) * opacity
            red, green, blue, below = row[x]
            rest = 1 - alpha
            row[x] = (colour[0] * alpha + red * rest, colour[1] * alpha + green * rest,
                      colour[2] * alpha + blue * rest, alpha + below * rest)

    def pixels(self):
        """Rows of (red, green, blue, alpha) as whole numbers, the colours not multiplied by alpha."""

        def whole(red, green, blue, alpha):
            if alpha < 1 / 512:
                return (0, 0, 0, 0)
            return tuple(round(value / alpha) for value in (red, green, blue)) + (round(255 * min(alpha, 1)),)

        return [[whole(*pixel) for pixel in row] for row in self.rows]
