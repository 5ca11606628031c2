// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include "bank/BankSession.h"

/** What a preset of the bank does to sound, measured on its output at 44.1 kHz. */
namespace bank
{

/** Gains of the output over the input in dB: by frame, side and half-octave band from 110 Hz to 14 kHz. */
struct Spectrogram
{
    static constexpr size_t numBands = 14;
    static constexpr size_t frameSize = 2 * numBands; // left side first

    size_t getNumFrames() const { return gains.size() / frameSize; }
    const float* getFrame (size_t index) const { return gains.data() + index * frameSize; }

    /** RMS of the gains about their mean: how far the sound is from its input in colour, in dB. */
    double getColour() const;

    /** RMS of what a band's gain changes by from frame to frame, in dB. */
    double getRestlessness() const;

    /** How alike the left side is to itself, or to the right side, some frames later: 1 if the same,
        0 if unrelated. */
    double getLikeness (int framesLater, bool toRightSide) const;

    /** The shift at which the sides are most alike, in frames, of up to half of a cycle. */
    int getLag (int framesPerCycle) const;

    std::vector<float> gains;
};

/** How unlike two sound: the RMS difference in dB of their gains about their means, as a share of their
    colour, at that shift in time of up to half their length at which they are most alike. */
double getDistance (const Spectrogram&, const Spectrogram&);

/** Two cycles of a preset's slowest oscillator (of a chord, one), or as many as make a second; half a second
    if nothing moves. */
struct Heard
{
    double loudnessChange = 0.0; // dB, K-weighted, both sides, against the input
    double sideToMid = 0.0;      // dB, the difference of the sides against their sum
    double peak = 0.0;           // the largest sample, 1 at full scale
    Spectrogram spectrogram;
    int framesPerCycle = 0;
};

/** Listens at evenly spaced places of the cycle; to slow ones in short pieces. */
Heard listen (const Preset&, Material, double bpm);

/** One and a half seconds on pink noise, frame by frame: from the start, or if the cycle is longer, in three
    parts a third of it apart. */
Spectrogram listenInParts (const Preset&, double bpm);

/** A copy without the oscillator that sweeps less. */
Preset withoutSecondLayer (const Preset&);

/** By how many dB the highest peak of the response stands over its mean power, at the best of three places
    of the sweep, where it is stopped: start, middle and top. */
double measureResonance (const Preset&);

/** Plays the same noise twice: the power of the difference in what comes out, in dB. */
double measureChange (const Preset&);

} // namespace bank
