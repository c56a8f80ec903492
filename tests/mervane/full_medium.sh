# full_medium.sh PEER [PAGES]: saves to a store on a file system of 1 MiB that has 0, 1, 2, ... PAGES (40) free pages of 4 KiB.
# Each must end with "saved" or "refused", never with a crash, and the store must be whole. Run by hand, inside a
# session and where file systems can be mounted:
#
#   tests/support/session.sh --unix unshare -rm sh tests/mervane/full_medium.sh build/debug/bin/mervane_peer.exe
peer=$1
last=${2-40}
medium=$TMPDIR/medium
mkdir "$medium" || exit 1
wine ping -n 99999 127.0.0.1 >/dev/null 2>&1 &
failed=0
for free in $(seq 0 "$last"); do
    mount -t tmpfs -o size=1m tmpfs "$medium" || exit 1
    MERVANE_STORE="Z:$medium/journal.db" wine "$peer" write first || failed=1
    available=$(df --output=avail -k "$medium" | tail -n 1)
    dd if=/dev/zero of="$medium/fill" bs=4096 count=$((available / 4 - free)) 2>/dev/null
    MERVANE_STORE="Z:$medium/journal.db" wine "$peer" write second
    status=$?
    case $status in
    0) word=saved ;;
    1 | 2) word=refused ;;
    *) word="ended with $status" failed=1 ;;
    esac
    rm "$medium/fill"
    MERVANE_STORE="Z:$medium/journal.db" wine "$peer" write third || { word="$word, then unusable" failed=1; }
    echo "$free free pages: $word"
    umount "$medium"
done
exit $failed
