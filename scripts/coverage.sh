#!/bin/sh
# Which lines and functions of our own no test reaches.
#
#   sh scripts/coverage.sh [OPTION OF CTEST...]
#
# Configures build/coverage, builds it (all, or TARGETS='test_util test_list'), runs the tests there (all, or what the
# options choose: -R '^util$') and lists for each file how many lines ran, then every function that never did, then the
# lines. The whole suite takes half an hour on two cores. A program that is killed writes no counts; results of several runs add
# up until build/coverage is deleted.
set -eu
cd "$(dirname "$0")/.."
. scripts/setup.sh

folder=build/coverage
cmake --preset debug -B "$folder" -DJOURNAL_COVERAGE=ON >"$folder.log" 2>&1 ||
    { cat "$folder.log" >&2; exit 1; }
ninja -C "$folder" ${TARGETS-} >"$folder.log" 2>&1 || { tail -20 "$folder.log" >&2; exit 1; }
# The programs are Windows programs, which find this system's paths on the drive Z.
export GCOV_PREFIX=Z:
mkdir -p "$folder/results"
(cd "$folder" && ctest --parallel 2 "$@") || echo 'Some tests failed; what they reached counts.' >&2
exec python3 -B scripts/coverage.py "$folder"
