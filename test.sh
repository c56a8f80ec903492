#!/bin/sh
# Builds everything and runs every test, installing from Debian's packages what is missing.
#
#   sh test.sh [CTEST-OPTION...]     for example: sh test.sh -R '^list$'
#
# The last line tells how many tests passed and failed; the exit status is 0 only when none failed.
set -u
cd "$(dirname "$0")" || exit 1
. scripts/setup.sh

no_tests() {
    echo "$0: $*" >&2
    echo '0 passed, 1 failed'
    exit 1
}

# A failure to install ends the sub-shell only, so that the last line is there all the same.
(
    need_packages $build_packages $wine_packages googletest xvfb xauth openbox xdotool clang-format
    need_sqlite_source
) || no_tests 'what the tests need could not be installed'
mkdir -p build
build debug || no_tests 'the build failed'

results=build/debug/results
rm -rf "$results"
mkdir -p "$results"
ctest --preset debug --parallel $(($(nproc) + 1)) --output-junit "$PWD/$results/ctest.xml" "$@"
exec python3 tests/support/count_results.py "$results"
