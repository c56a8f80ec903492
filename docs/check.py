#!/usr/bin/env python3
"""What the documents point at: links, tests, files of the tree, and the picture of the rooms. Prints what leads nowhere.

    python3 docs/check.py"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[1]
LINK = re.compile(r'\]\(([^)#\s]*)(?:#([^)\s]*))?\)')
TEST_NAME = re.compile(r'`([A-Z]\w+)\.(\w*\*?)`')
PATH = re.compile(r'`((?:src|tests|companions|cmake|docs|scripts|bench|tools|help)/[\w/.-]+\.\w+)`')
TEST = re.compile(r'^TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)', re.MULTILINE)
ENDINGS = {'cpp', 'db', 'exe', 'h', 'htm', 'md', 'py', 'txt'}
EXAMPLES = re.compile(r'ROOM|NAME|/X|_vN')


def files():
    listed = subprocess.run(['git', '-C', ROOT, 'ls-files'], capture_output=True, text=True, check=True)
    return [ROOT / name for name in listed.stdout.splitlines()]


def anchors(document):
    headings = re.findall(r'^#+ (.*)$', document.read_text(encoding='utf-8'), re.MULTILINE)
    return {re.sub(r'[^\w -]', '', heading.lower()).replace(' ', '-') for heading in headings}


def broken_links(document, text):
    for path, anchor in LINK.findall(text):
        target = (document.parent / path).resolve() if path else document
        if path.startswith('http'):
            continue
        if not target.exists() or (anchor and target.suffix == '.md' and anchor not in anchors(target)):
            yield path + ('#' + anchor if anchor else '')


def missing_tests(text, tests):
    for suite, name in TEST_NAME.findall(text):
        wanted = re.compile(re.escape(f'{suite}.{name}').replace(r'\*', '.*') + '$')
        if name not in ENDINGS and not any(wanted.match(test) for test in tests):
            yield f'{suite}.{name}'


def missing_files(text):
    return [path for path in PATH.findall(text) if not EXAMPLES.search(path) and not (ROOT / path).exists()]


def main():
    tree = [path for path in files() if path.exists()]
    sources = [path for path in tree if path.suffix in ('.cpp', '.h') and 'tests' in path.parts]
    tests = {'.'.join(names) for path in sources for names in TEST.findall(path.read_text(encoding='utf-8'))}
    found = []
    for document in (path for path in tree if path.suffix == '.md'):
        text = document.read_text(encoding='utf-8')
        for wrong in [*broken_links(document, text), *missing_tests(text, tests), *missing_files(text)]:
            found.append(f'{document.relative_to(ROOT)}: {wrong}')
    if subprocess.run([sys.executable, '-B', ROOT / 'docs/pictures/rooms.py', '--check'], check=False).returncode:
        found.append('docs/pictures/rooms.svg is not of the declarations: python3 docs/pictures/rooms.py')
    print('\n'.join(found) or 'all lead somewhere')
    return 1 if found else 0


if __name__ == '__main__':
    sys.exit(main())
