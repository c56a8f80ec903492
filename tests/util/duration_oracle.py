#!/usr/bin/env python3
"""Writes durations and what they have to read as, worked out here in another way than the program's: typed texts with
the count that they add, and counts with their phrase. Texts are in hexadecimal, a UTF-16 unit in four digits.

  duration_oracle.py FILE [CASES [SEED]]
"""
import datetime
import math
import random
import re
import sys

NUMBER_AND_UNIT = re.compile(r'([0-9]+\.?[0-9]*|\.[0-9]*)[^MHDWS]*([MHDWS])?')
SECOND = 10_000_000
MINUTE, HOUR, DAY = 60 * SECOND, 3600 * SECOND, 86400 * SECOND
# What one whole stands for, what the fraction is counted in, and how many of these make one whole.
UNITS = {'D': (DAY, HOUR, 24), 'H': (HOUR, MINUTE, 60), 'M': (MINUTE, 0, 0), 'S': (SECOND, 0, 0), 'W': (DAY, DAY, 7),
         None: (MINUTE, 0, 0)}
LARGEST = 2**31 - 1
FIRST_DAY = datetime.date(1601, 1, 1)
DAYS_OF_400_YEARS = 146_097
LAST_YEAR = 30827


def parse(text):
    """(1 or 0, the count, the text as it is left)"""
    first = re.search('[0-9.]', text)
    if not first:
        return 0, 0, text
    upper = text[first.start():].upper()
    count = 0
    for number, unit in NUMBER_AND_UNIT.findall(upper):
        fraction, whole = math.modf(float('0' + number + '0' if '.' in number else number))
        one, part, parts = UNITS[unit or None]
        count += one * int(min(whole, LARGEST)) + part * int(fraction * parts)
    return 1, count % 2**64, text[:first.start()] + upper


def year_and_day(count):
    cycles, day = divmod(count // DAY, DAYS_OF_400_YEARS)
    date = FIRST_DAY + datetime.timedelta(days=day)
    return date.year + 400 * cycles, date.day


def phrase(count):
    if count >= 2**63:
        return '0 minutes'
    d = year_and_day(count)[1] - 1
    h, m = count // HOUR % 24, count // MINUTE % 60
    hour = 'hour' if h == 1 else 'hrs'
    if d and m:
        return f'{d} {"dy" if d == 1 else "dys"} ' + (f'{h} {hour}' if h else '0 hrs') + f' {m} mn'
    if d:
        return f'{d} {"day" if d == 1 else "days"}' + (f' {h} {hour}' if h else '')
    if h and m:
        return f'{h} {hour} {m} {"minute" if m == 1 else "min"}'
    if h:
        return f'{h} {"hour" if h == 1 else "hours"}'
    return f'{m} {"minute" if m == 1 else "minutes"}'


def a_number(choose):
    digits = ''.join(choose.choices('0123456789', k=choose.choice((1,) * 20 + (2, 3, 5, 9, 12, 20) * 5 + (400,))))
    fraction = ''.join(choose.choices('0123456789', k=choose.choice((0, 1, 1, 2, 3, 17, 40))))
    return choose.choice((digits, digits, digits + '.' + fraction, '.' + fraction, digits + ',' + fraction, '.', '0',
                          digits + 'e' + fraction, '0x' + digits, '2147483647', '2147483648', '0.05', '1.1.1'))


def a_text(choose):
    words = ('min', 'mn', 'minutes', 'M', 'h', 'hrs', 'Hour', 'd', 'dys', 'DAYS', 's', 'sec', 'w', 'wk', 'Weeks', 'and',
             'half a', '-', '+', ':', ',', 'infinity', 'nan', '\u00e4', '\u00e9', '\u20ac', '\u6f22', '\t')
    text = ''
    for _ in range(choose.choice((0, 1, 1, 1, 2, 2, 3, 6, 20))):
        text += choose.choice(('', '', ' ', '  ')) + choose.choice((a_number(choose), choose.choice(words)))
        text += choose.choice(('', '', choose.choice(words), chr(choose.randrange(32, 127))))
    return text


def a_count(choose):
    while True:
        count = choose.choice((choose.randrange(2**64), choose.randrange(40 * DAY), choose.randrange(2 * DAY),
                               choose.randrange(40) * DAY + choose.choice((-1, 0, 1, MINUTE - 1, MINUTE, HOUR)),
                               choose.randrange(2000) * MINUTE, choose.randrange(2**62) // DAY * DAY)) % 2**64
        # The system's own limit lies in the year behind the last one.
        if count >= 2**63 or year_and_day(count)[0] <= LAST_YEAR:
            return count


def in_hexadecimal(text):
    return text.encode('utf-16-be').hex() or '-'


def main():
    cases = int(sys.argv[2]) if len(sys.argv) > 2 else 10_000
    choose = random.Random(int(sys.argv[3]) if len(sys.argv) > 3 else 1)
    with open(sys.argv[1], 'w', encoding='ascii') as file:
        file.write(f'{2 * cases}\n')
        for _ in range(cases):
            text = a_text(choose)
            result, count, left = parse(text)
            file.write(f'parse {in_hexadecimal(text)} {result} {count} {in_hexadecimal(left)}\n')
            count = a_count(choose)
            file.write(f'phrase {count} {in_hexadecimal(phrase(count))}\n')


if __name__ == '__main__':
    main()
