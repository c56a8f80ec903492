#!/bin/sh
# Measures the figures of docs/bench.md and prints them with their limits.
#
#   sh bench/run.sh [FIGURE...]     start page sort filter find save assign import export count
#                                   server memory; all of them unless named
#
# BENCH_STORES  where the stores of up to a million entries are kept (2 GB), build/bench unless set
set -u
cd "$(dirname "$0")/.." || exit 1

stores=${BENCH_STORES:-$PWD/build/bench}
bin=$PWD/build/release/bin
tools=$PWD/build/release/tools

windows_path() { echo "Z:$1" | tr / '\\'; }

prepare() {
    . scripts/setup.sh
    need_packages $build_packages $wine_packages xvfb openbox
    need_sqlite_source
    mkdir -p build "$stores"
    build release || exit 1
    # Stores that an older schema or generator made are made anew.
    newest=$(ls -t tools/sample/* src/mervane/connection/schema.cpp | head -n 1)
    for store in "$stores"/bulk-*.db; do
        if [ "$newest" -nt "$store" ]; then rm -f "$store"; fi
    done
}

# The server of this session's Wine prefix.
wine_server() {
    for process in /proc/[0-9]*; do
        case $(cat "$process/comm" 2>/dev/null) in
        wineserver*)
            if { tr '\0' '\n' <"$process/environ"; } 2>/dev/null | grep -qxF "WINEPREFIX=$WINEPREFIX"; then
                echo "${process#/proc/}"
                return
            fi ;;
        esac
    done
}

bench() { wine "$tools/bench.exe" "$(windows_path "$stores")" "$@"; }

# What journal.exe holds once its list over a store is painted, and maybe sorted by the subject as well: private memory
# and all resident pages, in KiB.
memory_of() { # STORE ROWS [sorted]
    MERVANE_STORE=$(windows_path "$1") wine "$bin/journal.exe" &
    journal=$!
    bench wait "$2"
    if [ "${3-}" = sorted ]; then bench sort "$2"; fi
    awk '/^Anonymous:/ { private = $2 } /^Rss:/ { resident = $2 } END { print private, resident }' \
        "/proc/$journal/smaps_rollup"
    bench close "$2"
    wait "$journal"
}

# The middle one of three.
median_memory() { for _ in 1 2 3; do memory_of "$@"; done | sort -n | sed -n 2p; }

print_memory() { # NAME PRIVATE RESIDENT PRIVATE-OF-EMPTY
    echo "$@" | awk '{
        above = ($(NF - 2) - $NF) / 1024; name = $1
        for (i = 2; i < NF - 2; ++i) name = name " " $i
        printf "  %-56s %10.1f %10.1f %7.1f %6d  %s\n", name, $(NF - 2) / 1024, $(NF - 1) / 1024, above, 25,
               above <= 25 ? "ok" : "MISSED" }'
}

measure_memory() {
    empty=$(median_memory "$TMPDIR/empty.db" 0)
    printf '\n%-58s %10s %10s %7s %6s\n' "Memory of journal.exe, MiB" private resident above limit
    print_memory "an empty list" $empty ${empty% *}
    print_memory "1,000 entries" $(median_memory "$stores/bulk-1000.db" 1000) ${empty% *}
    print_memory "10,000 entries" $(median_memory "$stores/bulk-10000.db" 10000) ${empty% *}
    print_memory "65,535 entries" $(median_memory "$stores/bulk-65535.db" 65535) ${empty% *}
    print_memory "65,535 entries, sorted by subject too" $(median_memory "$stores/bulk-65535.db" 65535 sorted) ${empty% *}
}

inside() {
    # While any program runs, Wine stays warm.
    wine ping -n 99999 127.0.0.1 >/dev/null 2>&1 &
    bench stores || exit 1
    BENCH_WINESERVER=$(wine_server)
    export BENCH_WINESERVER
    for figure; do
        if [ "$figure" = memory ]; then measure_memory; else bench "$figure" || exit 1; fi
    done
}

if [ "${1-}" = --inside ]; then
    shift
    inside "$@"
    exit
fi
prepare
if [ $# -eq 0 ]; then set -- start page sort filter find save assign import export count server memory; fi
exec tests/support/session.sh --unix sh bench/run.sh --inside "$@"
