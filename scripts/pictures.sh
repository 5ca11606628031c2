#!/usr/bin/env bash
# Remakes every picture of the documents that shows the editor. It needs no display.

. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

install_packages
build release quilvane-host
scripts/build.sh

host=build/release/tools/host/quilvane-host
export QUILVANE_PLUGIN="dist/Quilvane 2.so"
folder=docs/pictures/manual
mkdir -p "$folder"

say "Painting"
"$host" screenshot docs/editor.png
"$host" screenshot "$folder/small.png" --skin Small
"$host" screenshot "$folder/light.png" --skin Light

# NAME=WINDOW; the windows are those of "quilvane-host screenshot --help".
for picture in \
    info=info:Feedback learn=learn \
    quality=quality midi=midi gui=gui \
    options=options about=about warning=alert \
    browser=browser browser-edit=browser-edit browser-saveas=browser-saveas import=import; do
    "$host" screenshot "$folder/${picture%%=*}.png" --show "${picture#*=}"
done

"$host" screenshot "$folder/browser-small.png" --skin Small --show browser
