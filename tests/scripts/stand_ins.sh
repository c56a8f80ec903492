# A copy of the tree's scripts in $here, with stand-ins for the programs that they call in front of the others. Each writes
# its name and arguments into $here/called. To be sourced by the tests of this folder.
set -u
top=$(cd "$(dirname "$0")/../.." && pwd)
here=$(mktemp -d) || exit 1
trap 'rm -rf "$here"' EXIT
. "$top/scripts/waiting.sh"

wrong() {
    echo "$*" >&2
    sed 's/^/    /' "$here"/called "$here"/said >&2
    exit 1
}

# stand_in NAME: the lines of its script come from the input.
stand_in() {
    { printf '%s\n' '#!/bin/sh' "echo \"$1 \$*\" >>'$here/called'"; cat; } >"$here/bin/$1"
    chmod +x "$here/bin/$1"
}

mkdir -p "$here/bin" "$here/tree/cmake" "$here/tree/build/deps" "$here/home"
cp -R "$top/run.sh" "$top/scripts" "$here/tree/"
cp "$top/cmake/sqlite.cmake" "$here/tree/cmake/"
touch "$here/tree/build/deps/better-sqlite3-$(sed -n 's/^set(SQLITE_PACKAGE_VERSION \(.*\))$/\1/p' "$top/cmake/sqlite.cmake").tgz"
touch "$here/called" "$here/said"
HOME=$here/home
PATH=$here/bin:$PATH
export HOME PATH
unset WINEPREFIX MERVANE_STORE XDG_DATA_HOME

# Everything is installed, and built at once.
stand_in dpkg-query <<'END'
shift 3
for package; do echo "$package installed"; done
END
stand_in cmake </dev/null
stand_in wine </dev/null
stand_in wineserver </dev/null
stand_in wineboot <<'END'
touch "$WINEPREFIX/system.reg"
END
