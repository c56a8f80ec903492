"""Images drawn as text: one letter a pixel, the letters explained in palette.txt."""

import pathlib

HERE = pathlib.Path(__file__).resolve().parent
MASK = "."


def read_palette():
    """The letters in their order, each with its colour as (red, green, blue)."""
    palette = {}
    for line in (HERE / "palette.txt").read_text(encoding="ascii").splitlines():
        letter, colour = line.split()[:2]
        palette[letter] = tuple(bytes.fromhex(colour))
    return palette


def read_grid(name, size):
    """The rows of images/<size>/<name>.txt; None when there is no such drawing."""
    path = HERE / "images" / str(size) / f"{name}.txt"
    if not path.exists():
        return None
    rows = path.read_text(encoding="ascii").splitlines()
    if len(rows) != size or any(len(row) != size for row in rows):
        raise SystemExit(f"{path}: not {size} rows of {size} letters")
    unknown = set("".join(rows)) - set(read_palette())
    if unknown:
        raise SystemExit(f"{path}: not in the palette: {sorted(unknown)}")
    return rows


def doubled(rows):
    """Twice the size: a staircase becomes a finer slope, the corner of a rectangle stays a corner."""
    size = len(rows)

    def at(x, y):
        return rows[min(max(y, 0), size - 1)][min(max(x, 0), size - 1)]

    def edge(x, y, along, outwards):
        """How far the edge on the outward side of a pixel goes on, two pixels at most."""
        inside, outside = at(x, y), at(x + outwards[0], y + outwards[1])
        for length in (1, 2):
            x, y = x + along[0], y + along[1]
            if at(x, y) != inside or at(x + outwards[0], y + outwards[1]) != outside:
                return length - 1
        return 2

    def quarter(x, y, dx, dy):
        """The quarter of a pixel that looks towards (dx, dy)."""
        inside, beside, above = at(x, y), at(x + dx, y), at(x, y + dy)
        on_slope = beside == above and beside != at(x - dx, y) and above != at(x, y - dy)
        right_angle = edge(x, y, (-dx, 0), (0, dy)) == 2 and edge(x, y, (0, -dy), (dx, 0)) == 2
        return beside if on_slope and not right_angle else inside

    return ["".join(quarter(x, y, dx, dy) for x in range(size) for dx in (-1, 1))
            for y in range(size) for dy in (-1, 1)]


def strip(names, size):
    """The named images side by side; one that is not drawn at this size is made from the one half as large."""
    grids = [read_grid(name, size) or doubled(read_grid(name, size // 2)) for name in names]
    return ["".join(parts) for parts in zip(*grids)]
