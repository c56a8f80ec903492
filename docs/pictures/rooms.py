#!/usr/bin/env python3
"""Draws docs/pictures/rooms.svg: the rooms as src/CMakeLists.txt and companions/CMakeLists.txt declare them, each above
those that it knows. Arrows that others imply, and those to the resources, are left out. Fails when a declared room has no
place here.

    python3 docs/pictures/rooms.py            draws it
    python3 docs/pictures/rooms.py --check    fails when the drawn one is not of today's declarations"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
PICTURE = ROOT / 'docs/pictures/rooms.svg'

# Where a room stands: its column and its storey, from the ground up.
PLACES = {
    'mervane/values': (0, 1), 'mervane/search': (0, 2), 'mervane/changes': (0, 3),
    'mervane/file': (1, 1), 'mervane/sqlite': (1, 2), 'mervane/records': (1, 3), 'mervane/order': (1, 4),
    'mervane/store': (0.5, 5), 'mervane': (0.5, 6), 'data': (0.5, 7), 'pick': (0.5, 8),
    'mervane/backup': (2, 3), 'mervane/connection': (2, 4),
    'ui/screen': (3, 1), 'ui/pictures': (3, 2), 'ui': (3, 3), 'ui/bars': (3, 4), 'settings': (4, 4), 'res': (4, 1),
    'columns': (3, 8), 'filter': (1, 9), 'editor': (2, 9), 'list': (3, 10), 'options': (0.5, 10),
    'find': (2, 11), 'export': (3, 11), 'app': (2, 12),
    'formats/text': (5, 1), 'formats/vcard': (5, 2), 'addrbook/transfer': (5.55, 7), 'addrbook': (5, 8),
    'frame': (5, 5), 'launcher': (6, 1), 'help/page': (6, 4), 'help': (6, 6),
}
GROUND = 'util'
RESOURCES = 'res'
STOREYS = 13
PITCH_X, PITCH_Y, WIDTH, HEIGHT, MARGIN = 138, 52, 124, 28, 14

FAMILIES = [  # the first that fits the name
    ('mervane', 'store'), ('ui', 'ui'), ('addrbook', 'companion'), ('help', 'companion'), ('launcher', 'companion'),
    ('frame', 'companion'), ('formats', 'ground'), ('util', 'ground'), ('res', 'ground'), ('settings', 'ui'), ('', 'journal'),
]
STYLE = """
  .page { fill: #ffffff }
  text { font: 12px sans-serif; fill: #1a1a1a; text-anchor: middle }
  path { fill: none; stroke: #8a8a8a; stroke-width: 1.2 }
  marker path { fill: #8a8a8a; stroke: none }
  rect { stroke: #6b6b6b; rx: 4px }
  .page { stroke: none }
  .ground { fill: #e7e2d8 } .store { fill: #cfe3f5 } .ui { fill: #dcefd3 }
  .journal { fill: #fbe3c2 } .companion { fill: #ead9f2 }
  @media (prefers-color-scheme: dark) {
    .page { fill: #14181d }
    text { fill: #f0f0f0 }
    path { stroke: #8f979f }
    marker path { fill: #8f979f }
    rect { stroke: #8f979f }
    .page { stroke: none }
    .ground { fill: #4a453a } .store { fill: #1f4a70 } .ui { fill: #2d5a22 }
    .journal { fill: #74501c } .companion { fill: #573a68 }
  }
"""


def declared_rooms():
    rooms = {}
    for root in ('src', 'companions'):
        text = (ROOT / root / 'CMakeLists.txt').read_text(encoding='utf-8')
        for match in re.finditer(r'^journal_room\(([^)]*)\)', text, re.MULTILINE):
            room, *rest = match[1].split()
            known = rest[1:] if rest[:1] == ['KNOWS'] else []
            rooms[room] = known[:known.index('LINKS')] if 'LINKS' in known else known
    return rooms


def reach(rooms, room):
    found, waiting = set(), list(rooms[room])
    while waiting:
        known = waiting.pop()
        if known not in found:
            found.add(known)
            waiting += rooms[known]
    return found


def shown_arrows(rooms):
    return [(room, known) for room, all_known in rooms.items() for known in all_known
            if known != RESOURCES and not any(known in reach(rooms, other) for other in all_known if other != known)]


def family(room):
    return next(name for prefix, name in FAMILIES if room.startswith(prefix))


def corner(room):
    column, storey = PLACES[room]
    return MARGIN + column * PITCH_X, MARGIN + (STOREYS - 1 - storey) * PITCH_Y


def box(room, x, y, width):
    return (f'  <rect class="{family(room)}" x="{x:g}" y="{y}" width="{width}" height="{HEIGHT}"/>\n'
            f'  <text x="{x + width / 2:g}" y="{y + 18}">{room}</text>\n')


def arrow(room, known, sources, targets):
    """From the lower edge of a room to the upper edge of the one that it knows, the ends of several side by side."""
    x, y = corner(room)
    outgoing, incoming = sources[room], targets[known]
    x += WIDTH * (outgoing.index(known) + 1) / (len(outgoing) + 1)
    top = y + HEIGHT
    if known == GROUND:
        bottom = MARGIN + (STOREYS - 1) * PITCH_Y
        return f'  <path marker-end="url(#head)" d="M{x:.0f} {top}V{bottom - 2}"/>\n'
    to_x, bottom = corner(known)
    to_x += WIDTH * (incoming.index(room) + 1) / (len(incoming) + 1)
    bend = max(18, (bottom - top) * 0.45)
    return (f'  <path marker-end="url(#head)" d="M{x:.0f} {top}C{x:.0f} {top + bend:.0f} {to_x:.0f} '
            f'{bottom - bend:.0f} {to_x:.0f} {bottom - 2}"/>\n')


def draw(rooms):
    columns = 1 + max(column for column, _ in PLACES.values())
    width, height = 2 * MARGIN + columns * PITCH_X - (PITCH_X - WIDTH), 2 * MARGIN + STOREYS * PITCH_Y - 24
    arrows = shown_arrows(rooms)
    sources = {room: sorted((k for r, k in arrows if r == room), key=lambda k: PLACES.get(k, (99, 0))[0])
               for room in rooms}
    targets = {room: sorted((r for r, k in arrows if k == room), key=lambda r: PLACES[r][0]) for room in rooms}
    svg = (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
           f'viewBox="0 0 {width} {height}" role="img" aria-label="The rooms, each above those that it knows">\n'
           f'  <style>{STYLE}  </style>\n'
           '  <defs><marker id="head" viewBox="0 0 8 8" refX="7" refY="4" markerWidth="7" markerHeight="7" '
           'orient="auto"><path d="M0 0L8 4L0 8z"/></marker></defs>\n'
           f'  <rect class="page" width="{width}" height="{height}"/>\n')
    svg += ''.join(arrow(room, known, sources, targets) for room, known in arrows)
    svg += ''.join(box(room, *corner(room), WIDTH) for room in rooms if room != GROUND)
    svg += box(GROUND, MARGIN, MARGIN + (STOREYS - 1) * PITCH_Y, width - 2 * MARGIN)
    return svg + '</svg>\n'


def main():
    rooms = declared_rooms()
    homeless = set(rooms) ^ (set(PLACES) | {GROUND})
    if homeless:
        print('no place, or no room any more:', ', '.join(sorted(homeless)))
        return 1
    svg = draw(rooms)
    if '--check' in sys.argv:
        return 0 if PICTURE.read_text(encoding='utf-8') == svg else 1
    PICTURE.write_text(svg, encoding='utf-8')
    return 0


if __name__ == '__main__':
    sys.exit(main())
