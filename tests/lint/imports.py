"""Each of the given programs is one file: it takes its functions from the system's own libraries only."""
import re
import subprocess
import sys

SYSTEM = {'advapi32', 'comctl32', 'comdlg32', 'gdi32', 'kernel32', 'msvcrt', 'ntdll', 'ole32', 'shell32', 'shlwapi',
          'user32', 'uxtheme'}


def libraries(objdump, program):
    headers = subprocess.run([objdump, '-p', program], capture_output=True, text=True, check=True).stdout
    return {library.lower() for library in re.findall(r'DLL Name: (\S+)\.dll', headers, re.IGNORECASE)}


objdump, *programs = sys.argv[1:]
foreign = 0
for program in programs:
    needed = libraries(objdump, program)
    if 'kernel32' not in needed:
        sys.exit(f'{program}: its libraries cannot be read')
    for library in sorted(needed - SYSTEM):
        print(f'{program} needs {library}.dll')
        foreign += 1
sys.exit(1 if foreign else 0)
