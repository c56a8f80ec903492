# A new prefix comes whole or not at all, and nothing of the user's beside it is touched.
. "$(dirname "$0")/stand_ins.sh"

mkdir "$HOME/.wine.new"
echo mine >"$HOME/.wine.new/mine"
DISPLAY=:0 sh "$here/tree/run.sh" >"$here/said" 2>&1 || wrong 'the run failed'
[ -e "$HOME/.wine/system.reg" ] || wrong 'no prefix was made'
[ "$(cat "$HOME/.wine.new/mine")" = mine ] || wrong "a folder of the user's was taken"
[ "$(ls -A "$HOME" | tr '\n' ' ')" = '.wine .wine.new ' ] || wrong 'something was left behind'

# One that cannot be made is told with its own words, and leaves nothing.
stand_in wineboot <<'END'
echo 'no room for a prefix'
exit 1
END
! WINEPREFIX=$HOME/other DISPLAY=:0 sh "$here/tree/run.sh" >"$here/said" 2>&1 || wrong 'a failure was passed over'
grep -qF 'no room for a prefix' "$here/said" || wrong 'it was not told why'
[ "$(ls -A "$HOME" | tr '\n' ' ')" = '.wine .wine.new ' ] || wrong 'something was left behind'

# Files of the user's where the sample is made stay, too.
stand_in wine <<'END'
case $1 in
*makesample.exe)
    made=$(printf '%s\n' "${2#Z:}" | tr '\\' /)
    echo sample >"$made" ;;
esac
END
mkdir -p "$HOME/.local/share/journal-sample"
echo mine >"$HOME/.local/share/journal-sample/new.db"
stand_in wineboot <<'END'
touch "$WINEPREFIX/system.reg"
END
DISPLAY=:0 sh "$here/tree/run.sh" --sample >"$here/said" 2>&1 || wrong 'the sample failed'
cd "$HOME/.local/share/journal-sample" || wrong 'there is no sample'
[ "$(cat journal.db)" = sample ] || wrong 'no sample was made'
[ "$(cat new.db)" = mine ] || wrong "a file of the user's was taken"
[ "$(ls -A | tr '\n' ' ')" = 'journal.db new.db prefix ' ] || wrong 'something was left behind'
