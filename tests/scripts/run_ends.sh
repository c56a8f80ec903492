# run_ends.sh PROGRAMS TOOLS: on a display of its own the journal starts, closes when it is asked to, and leaves neither a
# process nor a word about the display behind.
prefix=$WINEPREFIX
session_temp=$TMPDIR
. "$(dirname "$0")/stand_ins.sh"
rm "$here"/bin/wine*
WINEPREFIX=$prefix
export WINEPREFIX
mkdir -p "$here/tree/build/release"
ln -s "$1" "$here/tree/build/release/bin"
ln -s "$2" "$here/tree/build/release/tools"
stand_in x11vnc <<'END'
exec sleep 60
END
stand_in websockify <<'END'
exec sleep 60
END
MERVANE_STORE=$(printf 'Z:%s\n' "$here/journal.db" | tr / '\\')
export MERVANE_STORE

DISPLAY='' sh "$here/tree/run.sh" >"$here/said" 2>&1 &
run=$!
wait_for test -s "$here/journal.db" || wrong 'the journal did not start'
kill "$run"
wait "$run"
status=$?
[ "$status" = 143 ] || wrong "the run ended with $status"
grep -q '^    http://127.0.0.1:' "$here/said" || wrong 'no address was told'
! grep -q 'X connection' "$here/said" || wrong 'the end of the display was told'
[ -z "$(ls -d "$session_temp"/journal-run.* 2>/dev/null)" ] || wrong 'the folder of the run is still there'
[ -z "$(grep -lsz "JOURNAL_RUN=$session_temp" /proc/[0-9]*/environ | while read -r file; do
    tr '\0' ' ' 2>/dev/null <"${file%environ}cmdline" | grep -E 'Xvfb|openbox|x11vnc|websockify|journal.exe'
done)" ] || wrong 'something is still running'
