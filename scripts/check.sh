#!/usr/bin/env bash
# Checks the form of our own code: formatting, the direction of includes, then clang-tidy on the sources of the
# release build.
#
#   scripts/check.sh [--fix]

. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

mapfile -t files < <(git ls-files '*.cpp' '*.h' ':!libs')

if [ "${1:-}" = --fix ]; then
    clang-format -i "${files[@]}"
fi

say "Formatting"
clang-format --dry-run --Werror "${files[@]}"

say "Includes"
python3 scripts/check-includes.py

say "clang-tidy"
[ -f build/release/compile_commands.json ] || cmake --preset release >/dev/null
mapfile -t sources < <(git ls-files 'src/*.cpp' 'tools/*.cpp')
printf '%s\0' "${sources[@]}" | xargs -0 -n 1 -P "$(nproc)" clang-tidy -p build/release --quiet 2>/dev/null
