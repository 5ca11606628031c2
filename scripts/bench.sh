#!/usr/bin/env bash
# Prints the speed figures. Arguments go to the benchmark program, --benchmark_filter=core for example.

. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

install_packages
build release quilvane-bench

say "Measuring; leave the machine alone for two minutes"
display=()
[ -n "${DISPLAY:-}" ] || display=(xvfb-run -a)
# Others that use the machine disturb all figures alike this way; the least one counts.
"${display[@]}" build/release/bench/quilvane-bench --benchmark_repetitions=5 --benchmark_min_time=0.15 \
    --benchmark_enable_random_interleaving=true "$@"
