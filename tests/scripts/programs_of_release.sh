# programs_of_release.sh FOLDER-OF-FETCHED-SOURCES: the folder bin of a release build has what a user runs.
set -u
top=$(cd "$(dirname "$0")/../.." && pwd)
made=$(mktemp -d) || exit 1
trap 'rm -rf "$made"' EXIT
cmake -S "$top" --preset release -B "$made" -DJOURNAL_DEPS_DIR="$1" >"$made/said" 2>&1 || { cat "$made/said" >&2; exit 1; }
programs=$(ninja -C "$made" -t targets all | sed -n 's|^bin/\(.*\.exe\): .*|\1|p' | LC_ALL=C sort | tr '\n' ' ')
[ "$programs" = 'PegHelp.exe addrbook.exe calendar.exe iexplorm.exe journal.exe pmail.exe tasks.exe ' ] && exit
echo "bin has $programs" >&2
exit 1
