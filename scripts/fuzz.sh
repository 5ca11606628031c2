#!/usr/bin/env bash
# Builds the fuzzers and lets each of them run for a while. What one finds is left in build/fuzz/found/; a
# fault that is mended belongs into fuzz/seeds/, where the tests go through it.
#
#   scripts/fuzz.sh [SECONDS EACH] [FUZZER...]

. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

seconds=${1:-60}
[[ $seconds =~ ^[1-9][0-9]*$ ]] || fail "\"$seconds\" is no number of seconds"
shift $(($# > 0))

install_packages clang libclang-rt-14-dev
build fuzz quilvane_fuzzers

harnesses=("$@")
[ $# -gt 0 ] || for source in fuzz/*Fuzzer.cpp; do harnesses+=("$(basename "$source" .cpp)"); done

# Else JUCE looks for the first display, and ends with it.
export DISPLAY=:65535
found=0
mkdir -p build/fuzz/found

for harness in "${harnesses[@]}"; do
    name=${harness%Fuzzer}
    [ -x "build/fuzz/fuzz/$harness" ] || fail "there is no fuzzer $harness"
    say "$harness, $seconds s"
    mkdir -p "build/fuzz/corpus/$name"

    # No input may take more than a second, which is about four under the sanitizers, or 512 MiB at once. The first
    # folder grows; the seeds stay as they are.
    "build/fuzz/fuzz/$harness" -max_total_time="$seconds" -timeout=4 -report_slow_units=1 \
        -rss_limit_mb=1024 -malloc_limit_mb=512 -max_len=65536 -print_final_stats=1 -verbosity=0 \
        -artifact_prefix="build/fuzz/found/$name-" \
        "build/fuzz/corpus/$name" "fuzz/seeds/$name" || found=1
done

[ "$found" -eq 0 ] || fail "there are findings in build/fuzz/found"
say "No findings"
