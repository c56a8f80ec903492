#!/bin/bash
# Runs a Windows program in a session of its own: a virtual display with a window manager, and a Wine prefix copied
# from a template, so that no test sees another one's windows, registry or files.
#
#   session.sh PROGRAM [ARGUMENT...]
#
# SESSION_SCREEN  the display's size, 1024x768x24 unless set
# SESSION_DPI     Wine's resolution (LogPixels), 96 unless set
set -u

cache=${JOURNAL_WINE_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/journal-tests}
template=$cache/prefix
session=$(mktemp -d "${TMPDIR:-/tmp}/journal-session.XXXXXX")
started=()

export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES='winedbg.exe,winemenubuilder.exe,mscoree,mshtml='
export LC_ALL=C.UTF-8

clean_up() {
    WINEPREFIX=$session/prefix wineserver -k 2>/dev/null
    for pid in "${started[@]}"; do kill "$pid" 2>/dev/null; done
    wait 2>/dev/null
    rm -rf "$session"
}
trap clean_up EXIT
trap 'exit 143' TERM INT HUP

make_template() {
    mkdir -p "$cache"
    exec 9>"$cache/lock"
    flock 9
    if [ ! -e "$template.ready" ]; then
        rm -rf "$template"
        WINEPREFIX=$template wineboot -i >/dev/null 2>&1 9>&- && WINEPREFIX=$template wineserver -w 9>&- && touch "$template.ready"
    fi
    exec 9>&-
}

start_display() {
    Xvfb -displayfd 3 -screen 0 "${SESSION_SCREEN:-1024x768x24}" -nolisten tcp -noreset \
        3>"$session/display" >/dev/null 2>&1 &
    started+=($!)
    for _ in $(seq 200); do
        [ -s "$session/display" ] && break
        sleep 0.05
    done
    [ -s "$session/display" ] || { echo "session: Xvfb did not start" >&2; exit 97; }
    DISPLAY=:$(cat "$session/display")
    export DISPLAY
    openbox >/dev/null 2>&1 &
    started+=($!)
}

start_display
make_template
[ -e "$template.ready" ] || { echo "session: no Wine prefix could be made" >&2; exit 98; }
cp -al "$template" "$session/prefix"
export WINEPREFIX=$session/prefix
if [ "${SESSION_DPI:-96}" != 96 ]; then
    wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$SESSION_DPI" /f >/dev/null 2>&1
    wine reg add 'HKCU\Software\Wine\Fonts' /v LogPixels /t REG_DWORD /d "$SESSION_DPI" /f >/dev/null 2>&1
    wineserver -w
fi
# The session's temporary files go with it, also when a test is killed.
export TMPDIR=$session
wine "$@"
