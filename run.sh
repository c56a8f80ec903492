#!/bin/sh
# Builds the journal and starts it under Wine. See usage below.
set -u
cd "$(dirname "$0")" || exit 1
. scripts/setup.sh
. scripts/closing.sh
. scripts/waiting.sh

usage() {
    cat <<'END'
usage: sh run.sh [--sample]

Installs what is missing from Debian's packages (as root or with sudo), builds the program into build/release/bin and
starts journal.exe under Wine. Ends when the program ends. Ctrl+C asks the program to close: with something unsaved it asks
what is to become of it, and Ctrl+C once more ends it without.

Your entries and settings live in Wine's usual prefix, ~/.wine, or in $WINEPREFIX. $MERVANE_STORE names another file
for the entries.

    --sample   uses a Wine prefix of its own, with settings of its own and a store of 400 made-up entries, under
               ${XDG_DATA_HOME:-~/.local/share}/journal-sample. Delete that folder to start afresh.
    --help     prints this.

Without a display ($DISPLAY is empty) the program gets a virtual one, to be looked at with a web browser: the address
is printed. It answers on this machine alone (127.0.0.1) and only to the password within the address.
END
}

sample=
for argument; do
    case $argument in
    --sample) sample=yes ;;
    -h | --help) usage; exit 0 ;;
    *) usage >&2; exit 2 ;;
    esac
done

session=
display=
journal=
prefix_made=
sample_made=

marked_processes() { grep -lsFz "JOURNAL_RUN=$session" /proc/[0-9]*/environ | cut -d/ -f3; }
command_of() { tr '\0' ' ' 2>/dev/null <"/proc/$1/cmdline"; }

# The processes of this run, but for Wine's own: those serve every program of a prefix and end with the last one.
own_processes() {
    for pid in $(marked_processes); do
        case $(command_of "$pid") in
        '' | *wineserver* | *\\services.exe* | *\\winedevice.exe* | *\\plugplay.exe* | *\\svchost.exe*) ;;
        *\\rpcss.exe* | *\\explorer.exe\ /desktop*) ;;
        *) echo "$pid" ;;
        esac
    done
}

# Wine's own program that keeps the windows of a display. It ends soon after the last program that has any.
desktop_processes() {
    for pid in $(marked_processes); do
        case $(command_of "$pid") in
        *\\explorer.exe\ /desktop*) echo "$pid" ;;
        esac
    done
}

# Nothing may still be connected to the display when that goes: it would complain.
end_display() {
    for tries in 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15; do
        left=$(desktop_processes)
        [ -n "$left" ] || break
        [ "$tries" -lt 10 ] || kill $left 2>/dev/null
        sleep 0.2
    done
    kill "$display" 2>/dev/null
    wait "$display" 2>/dev/null
}

clean_up() {
    trap '' INT TERM HUP
    unset JOURNAL_RUN
    [ -n "$session" ] || return
    for tries in 1 2 3 4 5 6 7 8 9 10; do
        left=$(own_processes | grep -vx "${display:-none}")
        [ -n "$left" ] || break
        [ "$tries" = 10 ] && kill -KILL $left 2>/dev/null
        kill $left 2>/dev/null
        sleep 0.2
    done
    [ -z "$display" ] || end_display
    rm -rf "$session" ${prefix_made:+"$prefix_made"} ${sample_made:+"$sample_made"}
}

# The journal gets the time to ask about what is not saved; without a person at the terminal not for ever.
interrupted() {
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
    [ -z "$journal" ] || close_journal "$journal" build/release/tools "$1"
}

need_programs() {
    need_packages $build_packages $wine_packages
    [ -n "${DISPLAY-}" ] || need_packages xvfb xauth openbox x11vnc novnc websockify
    need_sqlite_source
    mkdir -p build
    build release --target journal addrbook PegHelp calendar pmail tasks iexplorm askclose \
        ${sample:+makesample} || fail 'the build failed'
}

# on_free_port FIRST FILE COMMAND [ARGUMENT...]: becomes the command, with a socket as its input that listens on this
# machine's first free port from FIRST on; FILE is told which. So no other program can have the port or get it meanwhile.
on_free_port() {
    exec python3 -c '
import os, socket, sys
listener = None
for port in range(int(sys.argv[1]), 65536):
    listener = socket.socket()
    try:
        listener.bind(("127.0.0.1", port))
        listener.listen()
        break
    except OSError:
        listener.close()
else:
    sys.exit("no port is free")
os.dup2(listener.fileno(), 0)
with open(sys.argv[2] + ".new", "w") as told:
    print(port, file=told)
os.rename(sys.argv[2] + ".new", sys.argv[2])
os.execvp(sys.argv[3], sys.argv[3:])' "$@"
}

# Everybody on the machine may read a program's arguments, so the cookie is not one of them.
add_cookie() { printf 'add %s . %s\n' "$1" "$cookie" | xauth -q -f "$XAUTHORITY" source - 2>>"$session/xauth.log"; }

# An X server that only this run may speak to, with a window manager.
start_display() {
    XAUTHORITY=$session/xauthority
    export XAUTHORITY
    cookie=$(mcookie)
    add_cookie :0
    outlive_terminal Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp -noreset -auth "$XAUTHORITY" \
        3>"$session/display" >/dev/null 2>&1 &
    display=$!
    wait_for test -s "$session/display" || fail "Xvfb did not start"
    DISPLAY=:$(cat "$session/display")
    export DISPLAY
    unset WAYLAND_DISPLAY
    add_cookie "$DISPLAY"
    outlive_terminal openbox --config-file "$PWD/scripts/openbox.xml" >/dev/null 2>&1 &
}

# Any page in a browser may try a port of this machine, so the view asks for a password, new each time.
start_view() {
    password=$(mcookie | cut -c1-8)
    printf '%s\n' "$password" >"$session/password"
    outlive_terminal x11vnc -display "$DISPLAY" -localhost -unixsock "$session/view" -rfbport 0 -no6 -forever -shared \
        -passwdfile "$session/password" -quiet >"$session/x11vnc.log" 2>&1 &
    (
        trap '' HUP
        on_free_port 6080 "$session/port" websockify --web /usr/share/novnc --inetd --unix-target="$session/view"
    ) >"$session/websockify.log" 2>&1 &
    wait_for test -s "$session/port" || { cat "$session/websockify.log" >&2; fail 'the view could not be started'; }
    web_port=$(cat "$session/port")
    echo
    echo 'There is no display, so the journal runs on a virtual one. Look at it here:'
    echo
    echo "    http://127.0.0.1:$web_port/vnc.html?autoconnect=1&resize=scale#password=$password"
    echo
    echo "From another machine, first: ssh -L $web_port:127.0.0.1:$web_port $(uname -n)"
    echo 'Ctrl+C here, or closing the journal, ends it all.'
}

# The path as a Windows program knows it.
windows_path() {
    printf 'Z:%s\n' "$1" | tr / '\\'
}

# In the background and waited for, so that a signal is heeded at once.
run_waiting() {
    "$@" </dev/null &
    wait $!
}

choose_sample() {
    folder=${XDG_DATA_HOME:-$HOME/.local/share}/journal-sample
    mkdir -p "$folder"
    WINEPREFIX=$folder/prefix
    MERVANE_STORE=$(windows_path "$folder/journal.db")
    export WINEPREFIX MERVANE_STORE
}

# A new prefix gets its name when it is whole: Wine takes one that was interrupted for ready.
prepare_wine() {
    prefix=${WINEPREFIX:-$HOME/.wine}
    [ ! -e "$prefix" ] || return 0
    echo 'Preparing Wine, once.'
    mkdir -p "$(dirname "$prefix")"
    prefix_made=$(mktemp -d "$prefix.new.XXXXXX") || exit 1
    run_waiting env WINEPREFIX="$prefix_made" sh -c 'wineboot -i && wineserver -w' >"$session/wineboot.log" 2>&1 ||
        { cat "$session/wineboot.log" >&2; fail 'Wine could not be prepared'; }
    mv -T "$prefix_made" "$prefix" || fail 'Wine could not be prepared'
    prefix_made=
}

fill_sample() {
    [ ! -e "$folder/journal.db" ] || return 0
    echo 'Making the sample entries.'
    sample_made=$(mktemp -d "$folder/new.XXXXXX") || exit 1
    run_waiting wine build/release/tools/makesample.exe "$(windows_path "$sample_made/journal.db")" 400 \
        --today "$(date +%F)" ||
        fail 'the sample could not be made'
    mv "$sample_made/journal.db" "$folder/journal.db"
}

trap clean_up EXIT
trap 'interrupted 0; exit 130' INT
trap 'interrupted 20; exit 143' TERM HUP

need_programs
session=$(mktemp -d "${TMPDIR:-/tmp}/journal-run.XXXXXX") || exit 1
# What marks every process that this run starts.
JOURNAL_RUN=$session
WINEDEBUG=${WINEDEBUG:--all}
# A new prefix needs neither Wine's .NET nor its browser, which it would offer to download.
WINEDLLOVERRIDES=${WINEDLLOVERRIDES-winemenubuilder.exe,mscoree,mshtml=}
export JOURNAL_RUN WINEDEBUG WINEDLLOVERRIDES

if [ -z "${DISPLAY-}" ]; then
    start_display
    start_view
fi
[ -z "$sample" ] || choose_sample
prepare_wine
[ -z "$sample" ] || fill_sample
outlive_terminal wine build/release/bin/journal.exe </dev/null &
journal=$!
wait "$journal"
