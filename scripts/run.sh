#!/usr/bin/env bash
# Builds, and sends sound through the phaser: the audio file given, or else a short score of our own.
#
#   scripts/run.sh [AUDIO FILE]

# Before the scripts change the folder.
given=${1:+$(realpath -m -- "$1")}

. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

[ -z "$given" ] || [ -f "$given" ] || fail "there is no file $given"

install_packages
build release quilvane-host Quilvane_VST
scripts/build.sh

host=build/release/tools/host/quilvane-host
soundfont=/usr/share/sounds/sf2/TimGM6mb.sf2
mkdir -p out
input=$given
plot_options=()

if [ -z "$input" ]; then
    say "Playing our score"
    input=out/score.wav
    plot_options=(--seconds 22 --title "Electric piano and drums" --title "The same through Quilvane 2")
    "$host" score out/score.mid
    fluidsynth -q -ni -r 48000 -g 0.8 -O float -T wav -F "$input" "$soundfont" out/score.mid
fi

say "Rendering through the plug-in"
export QUILVANE_PLUGIN="dist/Quilvane 2.so"
"$host" render "$input" out/phaser.wav \
    --set "Stages Number=8" --set "LFO 1 Waveform=Sine" --set "LFO 1 Rate=0.1" --set "LFO 1 Depth=62" \
    --set "Center Frequency=150" --set "Feedback=55" --set "FX=100"

say "Drawing the spectrograms"
"$host" plot "$input" out/phaser.wav out/phaser.png --ratio "${plot_options[@]}"

say "Painting the editor"
"$host" screenshot out/editor.png

say "Done"
echo "Hear out/phaser.wav and see out/phaser.png: the input, the output with its notches sweeping, and the change between them."
echo "See out/editor.png: the plug-in's window."
echo "For a DAW, copy \"dist/Quilvane 2.so\" and \"dist/Quilvane 2_data\" into ~/.vst and let the DAW scan for VST 2 plug-ins."

if [ -n "${DISPLAY:-}" ] && [ -t 0 ]; then
    read -r -p "Open the window and play? [y/N] " answer
    [[ $answer != [yY]* ]] || "$host" edit "$input"
fi
