#!/usr/bin/env bash
# Builds the plug-in and leaves it in dist/, in the portable form that keeps its data beside itself.

. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

install_packages
build portable Quilvane_VST quilvane_factory_bank quilvane_skins

say "Filling dist/"
mkdir -p "dist/Quilvane 2_data/Presets" "dist/Quilvane 2_data/Skins"
cp "build/portable/src/Quilvane_artefacts/Release/VST/Quilvane 2.so" "dist/.new.so"
mv "dist/.new.so" "dist/Quilvane 2.so"

if [ -f presets/manifest.xml ]; then
    cp "build/portable/presets/Quilvane 2 Factory.k7rpkg" "dist/.new.k7rpkg"
    mv "dist/.new.k7rpkg" "dist/Quilvane 2_data/Presets/Quilvane 2 Factory.k7rpkg"
fi

for skin in build/portable/data/Skins/*.k7rskin; do
    cp "$skin" "dist/.new.k7rskin"
    mv "dist/.new.k7rskin" "dist/Quilvane 2_data/Skins/$(basename "$skin")"
done

echo "The plug-in is dist/Quilvane 2.so; keep the folder \"Quilvane 2_data\" beside it."
