#!/bin/sh
# Looks through the code with clang-tidy and cppcheck: sh scripts/analyze.sh [FILE.cpp...], all of src/ unless named.
# Some three seconds a file. What they find ends it with a status other than 0, and so does a source that compiles only
# with the headers that all share.
set -u
cd "$(dirname "$0")/.." || exit 1
. scripts/setup.sh
need_packages $build_packages clang-tidy-14 cppcheck googletest
[ -d build/deps/package ] || fail 'build once before, for the headers of SQLite'

[ $# -gt 0 ] || set -- $(find src -name '*.cpp')
compiler=$(ls -d /usr/lib/gcc/x86_64-w64-mingw32/*-posix)
defines='-DUNICODE -D_UNICODE -DSTRICT -DWIN32_LEAN_AND_MEAN -DNOMINMAX -D_WIN32_WINNT=0x0A00 -D_WIN32_IE=0x0A00'
status=0

# Clang's own headers take the place of GCC's, whose intrinsics it does not know.
clang-tidy-14 --quiet "$@" -- --target=x86_64-w64-mingw32 -std=c++20 $defines -Isrc -Itests \
    -isystem build/deps/package/deps/sqlite3 -isystem /usr/src/googletest/googletest/include \
    -isystem /usr/src/googletest/googlemock/include -isystem "$compiler/include/c++" \
    -isystem "$compiler/include/c++/x86_64-w64-mingw32" -isystem /usr/share/mingw-w64/include || status=1

# Left out: calls whose result does not matter, blocks and handles that an owner takes over, which cppcheck does not
# follow, and two complaints that misread templates and unsigned arithmetic.
cppcheck --quiet --error-exitcode=1 --platform=win64 --library=windows --library=std --library=googletest \
    --std=c++20 --enable=warning,performance,portability --inline-suppr -D_WIN32 -D_WIN64 -DUNICODE -Isrc -Itests \
    --suppress=missingIncludeSystem --suppress=ignoredReturnValue --suppress=memleak --suppress=resourceLeak \
    --suppress=CastIntegerToAddressAtReturn --suppress=integerOverflow "$@" || status=1
# The shared headers hide what a source forgets to include.
cmake --preset debug -B build/plain -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON >build/configure.log 2>&1 || status=1
cmake --build build/plain || status=1
exit $status
