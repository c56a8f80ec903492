#!/usr/bin/env python3
"""Adds up what gcov knows of a build folder: for each of our files the lines that ran, then what never ran.

A header's code and a template's are counted in every object that has them; a line counts as run where any of them ran it."""
import gzip
import json
import subprocess
import sys
import tempfile
from collections import defaultdict
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
OURS = ('src/', 'companions/', 'tools/')
GCOV = 'x86_64-w64-mingw32-gcov-posix'


def reports(folder):
    """The report of each object that has counts or could have some."""
    notes = [path.resolve() for path in Path(folder).rglob('*.gcno')]
    notes = [path for path in notes if any(f'/{start}' in str(path) for start in OURS)]
    with tempfile.TemporaryDirectory() as place:
        for start in range(0, len(notes), 50):
            subprocess.run([GCOV, '--json-format', '--hash-filenames', *map(str, notes[start:start + 50])], cwd=place,
                           check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        for path in Path(place).glob('*.gcov.json.gz'):
            with gzip.open(path, 'rt') as text:
                yield json.load(text)


def name_of(file, folder):
    """The file's name from the root; None for what is not ours."""
    path = Path(file['file'])
    path = path if path.is_absolute() else Path(folder).resolve() / path
    try:
        name = str(path.resolve().relative_to(ROOT))
    except ValueError:
        return None
    return name if name.startswith(OURS) else None


def collect(folder):
    lines = defaultdict(lambda: defaultdict(int))
    functions = defaultdict(lambda: defaultdict(int))
    for report in reports(folder):
        for file in report['files']:
            name = name_of(file, folder)
            if not name:
                continue
            for line in file['lines']:
                lines[name][line['line_number']] += line['count']
            for function in file['functions']:
                functions[name][function['start_line'], function['demangled_name']] += function['execution_count']
    return lines, functions


def ranges(numbers):
    """1, 2, 3, 7 as 1-3, 7."""
    groups = []
    for number in sorted(numbers):
        if groups and number == groups[-1][1] + 1:
            groups[-1][1] = number
        else:
            groups.append([number, number])
    return ', '.join(str(first) if first == last else f'{first}-{last}' for first, last in groups)


def main():
    lines, functions = collect(sys.argv[1])
    total = ran = 0
    for name in sorted(lines):
        reached = sum(1 for count in lines[name].values() if count)
        total, ran = total + len(lines[name]), ran + reached
        print(f'{reached:6} of {len(lines[name]):6}  {name}')
    print(f'{ran:6} of {total:6}  in all\n\nFunctions that no test reaches:')
    for name in sorted(functions):
        for (line, function), count in sorted(functions[name].items()):
            if not count:
                print(f'{name}:{line}: {function}')
    print('\nLines that no test reaches:')
    for name in sorted(lines):
        if missed := [line for line, count in lines[name].items() if not count]:
            print(f'{name}: {ranges(missed)}')


if __name__ == '__main__':
    main()
