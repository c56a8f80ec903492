"""The files of our own that the checks look through."""
import pathlib

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = ['.ci', 'bench', 'cmake', 'companions', 'docs', 'help', 'scripts', 'src', 'tests', 'tools']
CODE = {'.cpp', '.h'}
TEXT = CODE | {'.cmake', '.htm', '.html', '.json', '.manifest', '.md', '.py', '.rc', '.sh', '.sql', '.txt', '.xml', ''}


def files(suffixes, folders=None):
    """The files with one of the suffixes, in order, those of the root among them unless folders are named."""
    found = [path for folder in folders or FOLDERS for path in (ROOT / folder).rglob('*')]
    if folders is None:
        found += ROOT.iterdir()
    return sorted(path for path in found
                  if path.is_file() and path.suffix in suffixes
                  and path.name != '.git' and '__pycache__' not in path.parts)


def name(path):
    return path.relative_to(ROOT).as_posix()


def matching_lines(paths, pattern):
    """Each line that the pattern is found in, as "file:line: text"."""
    return [f'{name(path)}:{number}: {line.strip()}'
            for path in paths
            for number, line in enumerate(path.read_text(encoding='utf-8').splitlines(), 1)
            if pattern.search(line)]


def report(problems):
    """Prints the problems; the exit status that a check ends with."""
    found = list(problems)
    for problem in found:
        print(problem)
    return 1 if found else 0
