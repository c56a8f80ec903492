# keyboard_after_box.sh PROGRAM: after a box and, with it, the dialog below have closed, the main window has the
# keyboard of the display. Keys are pressed on the display itself: what a Windows program sends reaches Wine's window in
# front, whatever the window manager thinks.
set -u
. "$(dirname "$0")/keyboard.sh"

fail() {
    echo "$*; the keyboard is with: $(xdotool getwindowfocus getwindowname 2>&1)" >&2
    exit 1
}

has_ended() { ! kill -0 "$1" 2>/dev/null; }

wine "$1" &
journal=$!
wait_for is_at 'Kelvra Journal' || fail 'the main window did not open'
xdotool key ctrl+n
wait_for is_at_editor || fail 'the editor did not open'
xdotool key Tab Tab x Escape
wait_for is_at 'Warning' || fail 'nothing was asked'
xdotool key Return
wait_for is_at 'Kelvra Journal' || fail 'the main window does not have the keyboard'
xdotool key ctrl+n
wait_for is_at_editor || fail 'the main window does not hear its keys'
xdotool key Escape
wait_for is_at 'Kelvra Journal' || fail 'the main window does not have the keyboard without a box'
xdotool key alt+F4
wait_for has_ended "$journal" || fail 'the journal did not end'
