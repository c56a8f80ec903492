#!/usr/bin/env python3
"""Adds up a run's results: count_results.py FOLDER

FOLDER/ctest.xml names the ctest tests that were run. A check or a script (its name starts with "lint." or "script.")
counts as one test; every other one is a GoogleTest program, whose own results are in FOLDER/NAME.xml and count one by
one. A program that failed beyond what its results say (it crashed, ran out of time or wrote none) counts as one failed test more.

Prints the failed tests and, last, "N passed, N failed"; the exit status is 0 only when some passed and none failed.
"""
import pathlib
import sys
import xml.etree.ElementTree as ElementTree


def program_results(name, path, went_well):
    """The passed tests' number and the failed tests' names of one GoogleTest program."""
    try:
        cases = [case for case in ElementTree.parse(path).getroot().iter('testcase') if case.get('status') == 'run']
    except (OSError, ElementTree.ParseError):
        return 0, [f'{name}: ended without results']
    bad = [case for case in cases if case.get('result') != 'completed' or case.find('failure') is not None]
    failed = [f'{name}: {case.get("classname")}.{case.get("name")}' for case in bad]
    if not cases:
        failed.append(f'{name}: ran no test')
    elif not went_well and not failed:
        failed.append(f'{name}: failed, though each of its tests passed')
    return len(cases) - len(bad), failed


def all_results(folder):
    passed, failed = 0, []
    for test in ElementTree.parse(folder / 'ctest.xml').getroot().iter('testcase'):
        name, went_well = test.get('name'), test.get('status') == 'run'
        if not name.startswith(('lint.', 'script.')):
            here, bad = program_results(name, folder / f'{name}.xml', went_well)
            passed += here
            failed += bad
        elif went_well:
            passed += 1
        else:
            failed.append(name)
    return passed, failed


def main():
    try:
        passed, failed = all_results(pathlib.Path(sys.argv[1]))
    except (OSError, ElementTree.ParseError) as error:
        passed, failed = 0, [f'no results: {error}']
    if not passed and not failed:
        failed = ['no test was run']
    if failed:
        print('\nFailed:')
        for name in failed:
            print(f'    {name}')
    print(f'{passed} passed, {len(failed)} failed')
    return 1 if failed else 0


if __name__ == '__main__':
    sys.exit(main())
