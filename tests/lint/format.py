#!/usr/bin/env python3
"""The code is formatted as .clang-format says; --fix formats it."""
import re
import subprocess
import sys

from source_files import CODE, ROOT, files, report

COMPLAINT = re.compile(r'^(\S.*?):\d+:\d+: ')


def main():
    paths = [str(path.relative_to(ROOT)) for path in files(CODE)]
    if '--fix' in sys.argv:
        return subprocess.run(['clang-format', '-i', *paths], cwd=ROOT, check=False).returncode
    run = subprocess.run(['clang-format', '--dry-run', *paths], cwd=ROOT, check=True, text=True,
                         stderr=subprocess.PIPE)
    wrong = {match[1] for line in run.stderr.splitlines() if (match := COMPLAINT.match(line))}
    return report([f'{path}: tests/lint/format.py --fix would change it' for path in sorted(wrong)])


if __name__ == '__main__':
    sys.exit(main())
