# close_from_shell.sh PROGRAM TOOLS SCRIPTS: a script asks the journal to close; an entry that is not saved is asked about, and
# what was saved is there afterwards. Another program of the same name over another store is left alone. The end of the
# terminal does not end it.
set -u
. "$3/closing.sh"
. "$(dirname "$0")/keyboard.sh"
tools=$2

fail() {
    echo "$*" >&2
    exit 1
}

# The other journal has the same title, and the keyboard until this one's window is there.
is_at_own() { is_at 'Kelvra Journal' && [ "$(xdotool getwindowfocus)" != "$other_window" ]; }

other_store=$(mktemp)
rm "$other_store"
MERVANE_STORE=Z:$other_store wine "$1" &
other=$!
wait_for is_at 'Kelvra Journal' || fail 'the other journal did not open'
other_window=$(xdotool getwindowfocus)
own_store=$(mktemp)
rm "$own_store"
MERVANE_STORE=Z:$own_store
export MERVANE_STORE
wine "$tools/askclose.exe" && fail 'there is nobody to be asked yet'

wine "$1" &
journal=$!
wait_for wine "$tools/askclose.exe" || fail 'the journal did not open'
wait "$journal" || fail 'the journal did not close'

wine "$1" &
journal=$!
wait_for is_at_own || fail 'the main window did not open'
xdotool key ctrl+n
wait_for is_at_editor || fail 'the editor did not open'
close_journal "$journal" "$tools" 20 || fail 'the journal did not close with an editor open'

outlive_terminal wine "$1" &
journal=$!
wait_for is_at_own || fail 'the main window did not open'
xdotool key ctrl+n
wait_for is_at_editor || fail 'the editor did not open'
xdotool key Tab Tab x
kill -HUP "$journal"
close_journal "$journal" "$tools" 2 && fail 'the journal closed over an entry that is not saved'
wait_for is_at 'Warning' || fail 'nothing was asked'
kill -0 "$other" || fail 'the other journal was closed'
kill "$journal" "$other"
rm -f "$own_store"* "$other_store"*
