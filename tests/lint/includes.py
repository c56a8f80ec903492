#!/usr/bin/env python3
"""A room's files include headers of the rooms that it is declared to know and of no others, and of each of those at least
one; headers include each other in no circle; a source includes its own header first, which so proves that it stands
alone. That rooms know earlier ones only is seen to where they are declared, by journal_room in cmake/rooms.cmake."""
import re
import sys

from source_files import ROOT, files, name, report

ROOTS = ['src', 'companions']
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"')
DECLARATION = re.compile(r'^journal_room\(([^)]*)\)', re.MULTILINE)


def declared_rooms():
    """Each room with the rooms that it knows."""
    rooms = {}
    for root in ROOTS:
        for match in DECLARATION.finditer((ROOT / root / 'CMakeLists.txt').read_text(encoding='utf-8')):
            room, *rest = match[1].split()
            known = rest[1:] if rest[:1] == ['KNOWS'] else []
            rooms[room] = known[:known.index('LINKS')] if 'LINKS' in known else known
    return rooms


def inside(path):
    """A path as includes name it."""
    return path.relative_to(ROOT).relative_to(path.relative_to(ROOT).parts[0])


def room_of(path):
    return inside(path).parent.as_posix()


def includes(path):
    return [match[1] for line in path.read_text(encoding='utf-8').splitlines() if (match := INCLUDE.match(line))]


def wrong_arrows(paths, rooms):
    used = {room: set() for room in rooms}
    for path in paths:
        room = room_of(path)
        if room not in rooms:
            yield f'{name(path)}: stands in no room'
            continue
        for header in includes(path):
            other, _, file = header.rpartition('/')
            used[room].add(other)
            if not other and file != 'sqlite3.h':
                yield f'{name(path)}: includes "{header}" without naming its room'
            elif other and other not in [room, *rooms[room]]:
                yield f'{name(path)}: includes "{header}", which a file of {room} must not know'
    for room, known in rooms.items():
        for other in known:
            if other not in used[room]:
                yield f'{room}: is declared to know {other}, and includes nothing of it'


def foreign_first_includes(paths):
    for path in paths:
        own = path.with_suffix('.h')
        if path.suffix == '.cpp' and own.exists():
            wanted = inside(own).as_posix()
            if includes(path)[:1] != [wanted]:
                yield f'{name(path)}: does not include "{wanted}" first'


def circles(graph):
    """One problem for each include that closes a circle."""
    finished, way = set(), []

    def walk(header):
        if header in way:
            yield 'a circle: ' + ' -> '.join(way[way.index(header):] + [header])
        elif header not in finished:
            way.append(header)
            for other in graph.get(header, []):
                yield from walk(other)
            way.pop()
            finished.add(header)

    for header in graph:
        yield from walk(header)


def main():
    paths = files({'.cpp', '.h'}, ROOTS)
    graph = {inside(path).as_posix(): includes(path) for path in paths if path.suffix == '.h'}
    rooms = declared_rooms()
    if not graph or not rooms:
        return report(['no headers or no rooms were found'])
    return report([*wrong_arrows(paths, rooms), *foreign_first_includes(paths), *circles(graph)])


if __name__ == '__main__':
    sys.exit(main())
