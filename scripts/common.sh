# What the scripts share; sourced, never run.

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

say() { printf '\n\033[1m== %s\033[0m\n' "$*"; }

fail()
{
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# install_packages [PACKAGE...]: installs what is missing of the packages that the project needs, and of those given.
install_packages()
{
    local wanted missing=()
    wanted=$(sed -e 's/#.*//' scripts/packages.txt)

    for package in $wanted "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
    done

    if [ ${#missing[@]} -eq 0 ]; then
        say "All packages are installed"
        return
    fi

    local become=()
    [ "$(id -u)" -eq 0 ] || become=(sudo)

    say "Installing: ${missing[*]}"
    "${become[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${become[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# build PRESET [TARGET...]: configures and builds.
build()
{
    local preset=$1
    shift

    say "Configuring ($preset)"
    cmake --preset "$preset" >"build-$preset.log" 2>&1 || { cat "build-$preset.log"; fail "cmake failed"; }
    rm "build-$preset.log"

    say "Building ($preset); the first time takes some minutes"
    cmake --build --preset "$preset" ${@:+--target "$@"}
}

# run_tests PRESET
run_tests()
{
    say "Testing ($1)"
    ctest --preset "$1" -j "$(nproc)"
}
