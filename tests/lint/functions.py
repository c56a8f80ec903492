"""Functions are short: half of them have at most 8 lines, none has more than 40, counted from the name to the last brace."""
import re
import statistics
import sys

from source_files import CODE, files, name, report

MEDIAN, LONGEST = 8, 40
# The format puts a function's braces on lines of their own, at the depth at which it stands, unless it is whole on one line.
OPENING, CLOSING = re.compile(r'^( *)\{$'), re.compile(r'^( *)\}$')
ONE_LINE = re.compile(r'^ *[^=]*\) .*\{.*\}$')


def functions(path):
    """Of each function the number of its first line and how many it has."""
    lines = path.read_text(encoding='utf-8').splitlines()
    opened = {}
    for number, line in enumerate(lines, 1):
        if opening := OPENING.match(line):
            opened[opening[1]] = first_line(lines, number - 1, opening[1])
        elif (closing := CLOSING.match(line)) and closing[1] in opened:
            first = opened.pop(closing[1])
            yield first, number - first + 1
        elif ONE_LINE.match(line):
            yield number, 1


def first_line(lines, brace, depth):
    """Of the heading whose brace stands at this index; what it goes on with is deeper than its beginning."""
    while brace > 0 and lines[brace - 1].startswith(depth + ' '):
        brace -= 1
    return brace


def problems():
    sizes = []
    for path in files(CODE, ['src', 'companions']):
        for first, size in functions(path):
            sizes.append(size)
            if size > LONGEST:
                yield f'{name(path)}:{first}: {size} lines'
    if statistics.median(sizes) > MEDIAN:
        yield f'half of the {len(sizes)} functions have more than {statistics.median(sizes)} lines'


sys.exit(report(problems()))
