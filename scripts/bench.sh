#!/usr/bin/env bash
# Prints the speed figures. Arguments go to the benchmark program, --benchmark_filter=core for example.

. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

install_packages
build release quilvane-bench

say "Measuring; leave the machine alone for a minute"
display=()
[ -n "${DISPLAY:-}" ] || display=(xvfb-run -a)
"${display[@]}" build/release/bench/quilvane-bench "$@"
