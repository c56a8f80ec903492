#!/usr/bin/env python3
"""Includes point to earlier rooms only, headers include each other in no circle, and a source includes its own header
first, which so proves that it stands alone."""
import re
import sys

from source_files import ROOT, files, name, report

ROOMS = ['util', 'mervane', 'ui', 'data', 'editor', 'list', 'export', 'options', 'app']
# What every room may know of the application, and which room is to stand by itself.
APP_HEADERS = {'app/journal_app.h', 'app/registry_store.h'}
STORE_HEADERS = {'util/held_file.h', 'util/owners.h'}
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"')


def includes(path):
    return [match[1] for line in path.read_text(encoding='utf-8').splitlines() if (match := INCLUDE.match(line))]


def is_allowed(room, header):
    other = header.split('/')[0]
    if room == 'mervane':
        return other == 'mervane' or header in STORE_HEADERS
    if other == 'res' or header in APP_HEADERS:
        return True
    return other in ROOMS and ROOMS.index(other) <= ROOMS.index(room)


def wrong_arrows(paths):
    for path in paths:
        room = path.relative_to(ROOT / 'src').parts[0]
        for header in includes(path):
            if '/' in header and room in ROOMS and not is_allowed(room, header):
                yield f'{name(path)}: includes "{header}", which a file of {room}/ must not know'
            elif '/' not in header and header != 'sqlite3.h':
                yield f'{name(path)}: includes "{header}" without naming its room'


def foreign_first_includes(paths):
    for path in paths:
        own = path.with_suffix('.h')
        if path.suffix == '.cpp' and own.exists():
            wanted = own.relative_to(ROOT / 'src').as_posix()
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
    paths = files({'.cpp', '.h'}, ['src'])
    graph = {path.relative_to(ROOT / 'src').as_posix(): includes(path) for path in paths if path.suffix == '.h'}
    if not graph:
        return report(['no headers were found'])
    return report([*wrong_arrows(paths), *foreign_first_includes(paths), *circles(graph)])


if __name__ == '__main__':
    sys.exit(main())
