# Without a display the journal gets one of its own: who looks at the machine's processes learns neither the display's cookie
# nor the view's password, and the address is one that this run has for itself.
. "$(dirname "$0")/stand_ins.sh"

stand_in Xvfb <<'END'
echo 97 >&3
exec sleep 60
END
stand_in openbox </dev/null
stand_in mcookie <<END
echo \$(($(date +%N | sed 's/^0*//') + \$(cat '$here/called' | wc -l)))aabbccddeeff | tee -a '$here/cookies'
END
stand_in xauth <<END
cat >>'$here/told-xauth'
END
stand_in x11vnc <<END
cp "\$(printf '%s\n' "\$@" | sed -n '/^-passwdfile\$/{n;p}')" '$here/password'
exec sleep 60
END
stand_in websockify <<END
exec python3 -c '
import signal, socket, sys
listener = socket.socket(fileno=0)
with open(sys.argv[1], "w") as told: print(*listener.getsockname(), file=told)
signal.pause()' '$here/address'
END
stand_in wine <<END
. '$top/scripts/waiting.sh'
wait_for test -s '$here/address' && wait_for test -s '$here/password'
END

# Another program has the port that is tried first; where a run has it at this moment, it gets it behind that.
python3 -c '
import signal, socket, time
listener = socket.socket()
while True:
    try:
        listener.bind(("127.0.0.1", 6080))
        listener.listen()
        break
    except OSError:
        time.sleep(0.02)
print("there", flush=True)
signal.pause()' >"$here/other" &
other=$!
wait_for test -s "$here/other" || wrong 'no other program'

DISPLAY='' sh "$here/tree/run.sh" >"$here/said" 2>&1
status=$?
kill "$other"
[ "$status" = 0 ] || wrong "the run ended with $status"

read -r host port <"$here/address"
[ "$host" = 127.0.0.1 ] || wrong "the view listens on $host"
[ "$port" -gt 6080 ] || wrong "the view has the port of another program"
password=$(cat "$here/password")
[ -n "$password" ] || wrong 'the view has no password'
grep -qF "http://127.0.0.1:$port/vnc.html?autoconnect=1&resize=scale#password=$password" "$here/said" ||
    wrong 'another address is told'
cookie=$(head -n 1 "$here/cookies")
grep -qF ":97 . $cookie" "$here/told-xauth" || wrong 'the display has no cookie'
for secret in $(cat "$here/cookies") "$password"; do
    ! grep -qF -e "$secret" "$here/called" || wrong 'a secret is an argument'
done
[ -z "$(find "${TMPDIR:-/tmp}" -maxdepth 1 -name 'journal-run.*' -newer "$here/other" -user "$(id -u)" \
    -exec grep -ls "$cookie" {}/xauthority \;)" ] || wrong 'the run leaves its folder behind'
