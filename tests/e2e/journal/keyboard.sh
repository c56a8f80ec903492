# Which window has the keyboard of the display. To be sourced by the scripts of this folder.
. "$(dirname "$0")/../../../scripts/waiting.sh"

is_at() { [ "$(xdotool getwindowfocus getwindowname 2>/dev/null)" = "$1" ]; }
# A new entry's window is called by the day.
is_at_editor() { is_at "$(date +%A)" || is_at "$(date -d yesterday +%A)"; }
