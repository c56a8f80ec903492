"""What the documents point at is there: links, tests, files of the tree; and the picture of the rooms is today's."""
import re
import subprocess
import sys

from source_files import CODE, ROOT, files, name, report

LINK = re.compile(r'\]\(([^)#\s]*)(?:#([^)\s]*))?\)')
TEST_NAME = re.compile(r'`([A-Z]\w+)\.(\w*\*?)`')
PATH = re.compile(r'`((?:src|tests|companions|cmake|docs|scripts|bench|tools|help)/[\w/.-]+\.\w+)`')
TEST = re.compile(r'^TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)', re.MULTILINE)
ENDINGS = {'cpp', 'db', 'exe', 'h', 'htm', 'md', 'py', 'txt'}
EXAMPLES = re.compile(r'ROOM|NAME|/X|_vN')


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
    for suite, test in TEST_NAME.findall(text):
        wanted = re.compile(re.escape(f'{suite}.{test}').replace(r'\*', '.*') + '$')
        if test not in ENDINGS and not any(wanted.match(known) for known in tests):
            yield f'{suite}.{test}'


def missing_files(text):
    return [path for path in PATH.findall(text) if not EXAMPLES.search(path) and not (ROOT / path).exists()]


def tests_of_the_tree():
    sources = files(CODE, ['tests', 'bench'])
    return {'.'.join(names) for path in sources for names in TEST.findall(path.read_text(encoding='utf-8'))}


def what_leads_nowhere():
    tests = tests_of_the_tree()
    for document in files({'.md'}):
        text = document.read_text(encoding='utf-8')
        for wrong in [*broken_links(document, text), *missing_tests(text, tests), *missing_files(text)]:
            yield f'{name(document)}: {wrong}'
    if subprocess.run([sys.executable, '-B', ROOT / 'docs/pictures/rooms.py', '--check'], check=False).returncode:
        yield 'docs/pictures/rooms.svg is not of the declarations: python3 docs/pictures/rooms.py'


sys.exit(report(what_leads_nowhere()))
