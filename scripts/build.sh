#!/usr/bin/env bash
# Builds the plug-in and leaves it in dist/, in the portable form that keeps its data beside itself.

. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

install_packages
build portable Quilvane_VST

say "Filling dist/"
mkdir -p "dist/Quilvane 2_data/Presets" "dist/Quilvane 2_data/Skins"
cp "build/portable/src/Quilvane_artefacts/Release/VST/Quilvane 2.so" "dist/.new.so"
mv "dist/.new.so" "dist/Quilvane 2.so"

echo "The plug-in is dist/Quilvane 2.so; keep the folder \"Quilvane 2_data\" beside it."
