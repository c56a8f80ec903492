#!/bin/sh
# Two programs that write to one store as fast as they can, and a third that shows it: whether anything is lost, how
# long a row is shown that is no longer true, whether they lock each other out. By hand; a short form is in test.sh.
#
#   sh tests/two_writers.sh [WRITES [SEED [ROUNDS]]]     10000 writes by each of the two, seed 1, one round
#
# For a machine that does nothing else meanwhile. Round n has the seed SEED + n - 1. Needs build/debug (see docs/testing.md).
set -u
cd "$(dirname "$0")/.." || exit 1

TWO_WRITERS_COUNT=${1:-10000}
first=${2:-1}
rounds=${3:-1}
TWO_WRITERS_LIMIT=1000 # milliseconds for which a row may be shown that is no longer true
export TWO_WRITERS_COUNT TWO_WRITERS_LIMIT

failed=0
seed=$first
while [ "$seed" -lt $((first + rounds)) ]; do
    TWO_WRITERS_SEED=$seed tests/support/session.sh build/debug/bin/test_mervane.exe \
        --gtest_filter='TwoWriters.*' || failed=1
    seed=$((seed + 1))
done
exit "$failed"
