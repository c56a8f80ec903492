#!/bin/bash
# Runs a Windows program in a session of its own: a virtual display with a window manager, and a Wine prefix copied
# from a template, so that no test sees another one's windows, registry or files, nor the user's own.
#
#   session.sh PROGRAM [ARGUMENT...]
#   session.sh --unix COMMAND [ARGUMENT...]   a command of this side, which may start several Windows programs
#
# Ends with the program's exit status, of which Unix shows the low byte (an access violation, 0xC0000005, is 5).
# Whatever ends this script, also SIGKILL and the end of its parent, nothing that it started stays behind.
#
# SESSION_SCREEN      the display's size, 1024x768x24 unless set
# SESSION_DPI         Wine's resolution (LogPixels), 96 unless set
# JOURNAL_WINE_CACHE  where the template and the sessions are kept
set -u

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/../../scripts/waiting.sh"
cache=${JOURNAL_WINE_CACHE:-${XDG_CACHE_HOME:-${HOME:-/tmp}/.cache}/journal-tests}

# Ends every process of a session, known by the session's name in its environment, and removes the session.
# Wine's processes leave their parents, so that no process group or parent tells them.
end_session() {
    local session=$1 display marked tries
    exec 2>/dev/null
    unset JOURNAL_SESSION
    # The display server removes its lock and its socket when it is asked to end; nothing else needs asking.
    display=$(cat "$session/xvfb.pid")
    for tries in {1..200}; do
        marked=$(grep -lsFz "JOURNAL_SESSION=$session" /proc/[0-9]*/environ | cut -d/ -f3)
        [ -n "$marked" ] || break
        [ "$tries" != 2 ] || kill "$display"
        [ "$tries" -gt 50 ] || marked=$(grep -vx "$display" <<<"$marked")
        [ -z "$marked" ] || kill -KILL $marked
        sleep 0.02
    done
    # Where Debian's Wine server keeps its socket.
    [ ! -s "$session/prefix/wineserver" ] || rm -rf "/tmp/$(basename "$(cat "$session/prefix/wineserver")")"
    rm -rf "$session"
}

# The guard outlives this script, however that ends: the lock is free then.
if [ "${1-}" = --guard ]; then
    flock "$2/lock" true
    [ ! -d "$2" ] || end_session "$2"
    exit 0
fi

# Wine needs some addresses below 2 GB for itself, and the kernel's random place for a program's heap may lie on one
# of them: one program in two thousand does not start then. Where the system lets us, nothing is placed at random.
fixed_addresses=
! setarch -R true 2>/dev/null || fixed_addresses='setarch -R'

# ctest kills a test that takes too long, and may be killed itself: the session ends with its parent.
if [ "${JOURNAL_SESSION_PARENT-}" != $PPID ]; then
    JOURNAL_SESSION_PARENT=$PPID exec $fixed_addresses setpriv --pdeathsig TERM "$BASH" "${BASH_SOURCE[0]}" "$@"
fi
unset JOURNAL_SESSION_PARENT

mkdir -p "$cache"
find "$cache" -maxdepth 1 -name 'session.*' -mmin +60 | while read -r stale; do
    ! flock -n "$stale/lock" true || (end_session "$stale")
done
session=$(mktemp -d "$cache/session.XXXXXX") || exit 96
exec 8>"$session/lock"
flock 8
setsid -f "$BASH" "${BASH_SOURCE[0]}" --guard "$session" 8>&- >/dev/null 2>&1 </dev/null
trap 'end_session "$session"' EXIT
trap 'exit 143' TERM INT HUP

export JOURNAL_SESSION=$session HOME=$session/home TMPDIR=$session/tmp
export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES='winedbg.exe,winemenubuilder.exe,mscoree,mshtml='
export LC_ALL=C.UTF-8
unset WAYLAND_DISPLAY XAUTHORITY MERVANE_STORE
mkdir "$HOME" "$TMPDIR"

start_display() {
    Xvfb -displayfd 3 -screen 0 "${SESSION_SCREEN:-1024x768x24}" -nolisten tcp -noreset \
        3>"$session/display" >/dev/null 2>&1 8>&- &
    echo $! >"$session/xvfb.pid"
    wait_for test -s "$session/display" || { echo "session: Xvfb did not start" >&2; exit 97; }
    DISPLAY=:$(cat "$session/display")
    export DISPLAY
    openbox --config-file "$here/../../scripts/openbox.xml" \
        --startup "sh -c 'echo ready >\"\$JOURNAL_SESSION/openbox\"'" >/dev/null 2>&1 8>&- &
}

# A prefix is made once for each version of Wine and of this function. Wine would link the folders of the user's own
# documents into it: real ones take their place.
make_template() {
    local new link
    exec 9>"$cache/lock"
    flock 9
    if [ ! -d "$template" ]; then
        rm -rf "$cache"/new.* "$cache"/prefix-*
        new=$(mktemp -d "$cache/new.XXXXXX")
        WINEPREFIX=$new timeout 300 wineboot -i >/dev/null 2>&1 8>&- 9>&- &&
            WINEPREFIX=$new timeout 60 wineserver -w 8>&- 9>&- &&
            find "$new/drive_c/users" -type l | while read -r link; do rm "$link" && mkdir "$link"; done &&
            rm -f "$new/wineserver" && mv "$new" "$template"
    fi
    exec 9>&-
    [ -d "$template" ] || { echo "session: no Wine prefix could be made" >&2; exit 98; }
}

# The big files, which nobody writes, are linked; the registry is copied, for Wine writes into a file that has several
# links, and would share it.
copy_prefix() {
    cp -al "$template" "$session/prefix" 2>/dev/null ||
        { rm -rf "$session/prefix" && cp -a "$template" "$session/prefix"; } || exit 98
    cp --remove-destination "$template"/*.reg "$session/prefix/"
    if [ "${SESSION_DPI:-96}" != 96 ]; then
        printf '\n[%s]\n"LogPixels"=dword:%08x\n' 'Control Panel\\Desktop' "$SESSION_DPI" \
            'Software\\Wine\\Fonts' "$SESSION_DPI" >>"$session/prefix/user.reg"
    fi
}

template=$cache/prefix-$(wine --version 2>/dev/null | tr -cs 'a-zA-Z0-9.\n' -)-1
start_display
[ -d "$template" ] || make_template
copy_prefix
export WINEPREFIX=$session/prefix
wait_for test -s "$session/openbox" || { echo "session: openbox did not start" >&2; exit 97; }
if [ "${1-}" = --unix ]; then
    shift
else
    set -- wine "$@"
fi
"$@" <&0 8>&- &
wait $!
