#!/usr/bin/env python3
"""Tests wait for a condition with a limit, never for a length of time."""
import re
import sys

from source_files import files, matching_lines, report

FIXED_WAIT = re.compile(r"\bSleep(?:Ex)?\(\s*[1-9][\d']{2,}|\bsleep_(?:f[o]r|until)\b|^\s*sleep +[1-9]|time\.sleep\([1-9]")


def main():
    return report(matching_lines(files({'.cpp', '.h', '.py', '.sh'}, ['tests', 'bench']), FIXED_WAIT))


if __name__ == '__main__':
    sys.exit(main())
