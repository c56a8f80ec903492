#!/bin/sh
# Bad input, the long form: the readers under a fuzzer with the address and undefined-behaviour sanitizers, on this side;
# then, under Wine, durations against their oracle and all seeded cases in the built programs.
#
#   tests/fuzz/run.sh [TARGET...]     vcards help blobs texts durations for the fuzzer, wine for the rest; all unless named
#
# FUZZ_CASES   for each target, 100,000 unless set
# FUZZ_SEED    1 unless set
#
# One line for each target: cases and seconds. What breaks stops it, and is kept in build/fuzz/TARGET-crash-...
set -u
cd "$(dirname "$0")/../.." || exit 1
. scripts/setup.sh
cases=${FUZZ_CASES:-100000}
seed=${FUZZ_SEED:-1}
out=build/fuzz

# 16-bit characters as the programs have them, and the texts' templates compiled for them.
flags='-std=c++20 -g -O1 -fshort-wchar -D_GLIBCXX_EXTERN_TEMPLATE=0 -Itests/fuzz/native -Itests/fuzz -Icompanions -Isrc
    -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -Wall'
sources="src/formats/vcard/*.cpp src/formats/text/lines.cpp src/formats/text/utf16_source.cpp
    companions/help/page/document_builder.cpp
    companions/help/page/entities.cpp companions/help/page/find_in_topics.cpp
    companions/help/page/help_document.cpp companions/help/page/html_reader.cpp
    companions/help/page/html_tokens.cpp companions/help/page/page_text.cpp
    companions/help/page/print_layout.cpp companions/help/page/rtf_writer.cpp
    companions/help/page/table_columns.cpp companions/help/page/topic_text.cpp
    companions/help/page/topics.cpp src/mervane/values/id_blob.cpp src/mervane/values/text_codec.cpp
    src/mervane/search/text_pattern.cpp src/mervane/search/case_folding.cpp
    src/mervane/search/case_folding_table.cpp src/util/duration_text.cpp src/util/time_count.cpp
    tests/fuzz/*_target.cpp tests/fuzz/*_targets.cpp tests/fuzz/native/platform.cpp"

build_fuzzer() {
    need_packages clang-14 libclang-rt-14-dev
    mkdir -p $out
    export flags out
    printf '%s\n' $sources | xargs -P 2 -I{} sh -c \
        'clang++-14 $flags -c {} -o "$out/$(echo {} | tr / _).o"' || fail 'the readers do not build'
}

# fuzz TARGET FUNCTION LONGEST
fuzz() {
    clang++-14 $flags -fsanitize=fuzzer -DTARGET="$2" tests/fuzz/native/fuzz_main.cpp $out/*.cpp.o -o "$out/$1" ||
        fail "$1 does not link"
    rm -rf "$out/$1.corpus"
    mkdir -p "$out/$1.corpus"
    folders="$out/$1.corpus tests/fuzz/seeds/$1"
    [ "$1" != vcards ] || folders="$folders tests/formats/samples"
    "$out/$1" -runs="$cases" -seed="$seed" -max_len="$3" -timeout=20 -rss_limit_mb=4096 \
        -artifact_prefix="$out/$1-" $folders >"$out/$1.log" 2>&1 ||
        { tail -n 40 "$out/$1.log" >&2; fail "$1: a case is broken"; }
    echo "$1: seed $seed, $(sed -n 's/^Done \([0-9]*\) runs in \([0-9]*\) second.*/\1 cases, \2 s/p' "$out/$1.log")"
}

wine_cases() {
    python3 -B tests/util/duration_oracle.py $out/durations.txt "$cases" "$seed" || fail 'no durations were made'
    DURATION_CASES=$PWD/$out/durations.txt tests/support/session.sh build/debug/bin/test_util.exe \
        --gtest_filter='DurationOracle.*' || fail 'a duration is another one'
    FUZZ_CASES=$cases FUZZ_SEED=$seed tests/support/session.sh build/debug/bin/test_fuzz.exe ||
        fail 'a case is broken'
}

mkdir -p $out
[ $# -gt 0 ] || set -- vcards help blobs texts durations wine
case " $* " in *' vcards '* | *' help '* | *' blobs '* | *' texts '* | *' durations '*) build_fuzzer ;; esac
for target; do
    case $target in
    vcards) fuzz vcards TryVCards 1500 ;;
    help) fuzz help TryHelpPage 1000 ;;
    blobs) fuzz blobs TryIdBlob 300 ;;
    texts) fuzz texts TryTexts 300 ;;
    durations) fuzz durations TryDuration 200 ;;
    wine) wine_cases ;;
    *) fail "there is no target $target" ;;
    esac
done
