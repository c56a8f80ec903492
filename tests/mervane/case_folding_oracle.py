#!/usr/bin/env python3
"""Writes every character that simple case folding changes, and what it becomes, from Python's own database: one
line for each, both in hexadecimal. str.casefold is the full folding; where that gives several characters, the
simple one is the lower case, if that is one character."""
import sys


def fold(character):
    for folded in (character.casefold(), character.lower()):
        if len(folded) == 1:
            return folded
    return character


def main():
    with open(sys.argv[1], 'w', encoding='ascii') as file:
        for code in range(sys.maxunicode + 1):
            folded = ord(fold(chr(code)))
            if folded != code:
                file.write(f'{code:X} {folded:X}\n')


if __name__ == '__main__':
    main()
