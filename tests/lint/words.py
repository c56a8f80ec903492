#!/usr/bin/env python3
"""Words that belong in no file: references to papers outside the tree, marks of unfinished work, tests and warnings
that were switched off, paths and hosts of one machine. (A class of one letter keeps each from matching itself.)"""
import re
import sys

from source_files import TEXT, files, matching_lines, report

EVERYWHERE = [
    r'\b[s]pec\.md', r'\b[s]pecification\b', r'\b[t]he spec\b', r'\b[P]art \d\.\d', r'\b[r]uling \d', r'\bissue [#]\d',
    r'\b[s]ubagent', r'[D]EVELOPERS\.md', r'\.[l]ibrary\b',
    r'[/]work/', r'[/]tmp/wt\b', r'[/]farm/', r'[r]egistry\.npmjs', r'[d]eb\.debian', r'[p]ythonhosted',
]
IN_CODE = [r'\b[T]ODO\b', r'\b[F]IXME\b', r'\b[X]XX\b', r'\b[H]ACK\b', r'[n]ot implemented', r'[G]TEST_SKIP',
           r'\b[D]ISABLED_', r'[N]OLINT']


def main():
    unwanted = re.compile('|'.join(EVERYWHERE), re.IGNORECASE)
    unfinished = re.compile('|'.join(IN_CODE))
    return report(matching_lines(files(TEXT), unwanted) +
                  matching_lines(files(TEXT - {'', '.md', '.htm', '.html'}), unfinished))


if __name__ == '__main__':
    sys.exit(main())
