#!/usr/bin/env python3
"""Writes the table of src/mervane/search/case_folding.cpp from Unicode's CaseFolding.txt:

    python3 tools/make_case_folding.py /usr/share/unicode/CaseFolding.txt src/mervane/search/case_folding_table.cpp

Debian's package unicode-data has that file. The table is kept in the tree, so that building needs neither."""
import re
import subprocess
import sys

LINE = re.compile(r'^([0-9A-F]+); [CS]; ([0-9A-F]+);')
VERSION = re.compile(r'^# CaseFolding-(\S+)\.txt')


def read_pairs(lines):
    """Each character with the one that it folds to: simple folding takes the statuses C and S."""
    pairs = [(int(match[1], 16), int(match[2], 16)) for line in lines if (match := LINE.match(line))]
    return sorted(pairs)


def to_ranges(pairs):
    """[first, last, step, distance]: neighbours, or every second character, that fold by the same distance."""
    ranges = []
    for code, folded in pairs:
        last = ranges[-1] if ranges else None
        if last and last[3] == folded - code:
            step = code - last[1]
            if step == last[2] or (last[0] == last[1] and step in (1, 2)):
                last[1:3] = code, step
                continue
        ranges.append([code, code, 1, folded - code])
    return ranges


def main():
    source, target = sys.argv[1:]
    with open(source, encoding='utf-8') as file:
        lines = file.read().splitlines()
    version = VERSION.match(lines[0])[1]
    with open(target, 'w', encoding='utf-8', newline='\n') as file:
        file.write(f'// Made by tools/make_case_folding.py from CaseFolding.txt of Unicode {version}.\n'
                   '#include "mervane/case_folding_table.h"\n\nnamespace mervane {\n\n'
                   'const FoldingRange kFoldingRanges[] = {\n')
        for first, last, step, distance in to_ranges(read_pairs(lines)):
            file.write(f'    {{0x{first:04X}, 0x{last:04X}, {step}, {distance}}},\n')
        file.write('};\n\nconst size_t kFoldingRangeCount = sizeof kFoldingRanges / sizeof kFoldingRanges[0];\n\n'
                   '} // namespace mervane\n')
    subprocess.run(['clang-format', '-i', target], check=True)


if __name__ == '__main__':
    main()
