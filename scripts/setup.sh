# What run.sh and test.sh share: installing what is missing from Debian's packages, and building. To be sourced from
# the top of the tree.

build_packages='g++-mingw-w64-x86-64-posix cmake ninja-build python3'
# Wine, the libraries that its windows want and that it only recommends, and the fonts that Windows programs expect.
wine_packages='wine wine64 libxcomposite1 libxcursor1 libxfixes3 libxi6 libxinerama1 libxrandr2 libxrender1
    fonts-wine fonts-liberation'

fail() {
    echo "$0: $*" >&2
    exit 1
}

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        fail "needs to be root, or sudo, for: $*"
    fi
}

# quietly COMMAND [ARGUMENT...]: shows what the command says only where it fails.
quietly() {
    said=$(mktemp) || return 1
    ("$@") >"$said" 2>&1
    status=$?
    [ "$status" = 0 ] || cat "$said" >&2
    rm -f "$said"
    return "$status"
}

# Installs those of the named packages that are not there. Asks the network for nothing when all are.
need_packages() {
    installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "$@" 2>/dev/null | sed -n 's/ installed$//p')
    missing=
    for package; do
        printf '%s\n' "$installed" | grep -qxF -e "$package" || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    echo "Installing:$missing"
    quietly as_root apt-get -q update || echo "$0: the lists of packages could not be renewed" >&2
    quietly as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -y --no-install-recommends \
        -o DPkg::Lock::Timeout=300 install $missing || fail "could not install:$missing"
}

# SQLite's source comes through npm, once.
need_sqlite_source() {
    version=$(sed -n 's/^set(SQLITE_PACKAGE_VERSION \(.*\))$/\1/p' cmake/sqlite.cmake)
    [ -n "$version" ] || fail "cmake/sqlite.cmake names no version"
    [ -e "build/deps/better-sqlite3-$version.tgz" ] || command -v npm >/dev/null || need_packages npm
}

# build PRESET [--target TARGET...]
build() {
    preset=$1
    shift
    cmake --preset "$preset" >build/configure.log 2>&1 || { cat build/configure.log >&2; return 1; }
    cmake --build --preset "$preset" "$@"
}
