// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>
#include <vector>

#include "bank/BankPreset.h"
#include "support/Signals.h"

namespace bank
{

inline constexpr double sampleRate = 44100.0;

/** Repeats without a step, with its highest sample at -6 dBFS. */
enum class Material
{
    pinkNoise,
    chord // five notes over three octaves, with falling harmonics
};

/** The weighting of loudness by ITU-R BS.1770: a shelf of 4 dB at 1.7 kHz, and a high-pass at 38 Hz. */
class KWeighting
{
public:
    double process (double sample) { return highPass.process (shelf.process (sample)); }

private:
    struct Biquad
    {
        double process (double);

        double b0, b1, b2, a1, a2;
        double z1 = 0.0, z2 = 0.0;
    };

    static Biquad makeShelf();
    static Biquad makeHighPass();

    Biquad shelf = makeShelf(), highPass = makeHighPass();
};

/** A preset in a host that plays, and what is kept of its sound. Both sides hear the same input. */
class Session
{
public:
    /** Of a preset without a stereo phase, whose sides do the same, one need not be run. */
    enum class Sides
    {
        both,
        leftIfAlike
    };

    /** The plug-in begins with all smoothed values arrived and its oscillators at 0. The preset must
        outlive the session. */
    Session (const Preset&, Material, double bpm, Sides);

    /** Plays on; what is kept counts for all levels but the peak, which always counts. */
    void play (size_t numSamples, bool keep);

    /** Brings the oscillators to where they would be some seconds later: hurries the free ones and moves
        the transport. Either gives the same sound as waiting, but for the state of the input. */
    void skip (double seconds);

    /** Begins the material again. */
    void rewind() { position = 0; }

    /** All that was kept. */
    const std::vector<float>& getInput() const { return input; }
    const std::vector<float>& getLeft() const { return left; }
    const std::vector<float>& getRight() const { return right; }

    /** K-weighted power of both sides of the output against the input's, in dB. */
    double getLoudnessChange() const;

    /** Power of the difference of the sides against that of their sum, in dB; -100 if they are equal. */
    double getSideToMid() const;

    /** The output's largest sample. */
    double getPeak() const { return peak; }

private:
    void setFreeRates (double factor);

    const Preset& preset;
    const std::vector<float>& material;
    const bool copiesLeft;
    PluginInTest plugin;
    size_t position = 0;
    KWeighting inputWeighting, leftWeighting, rightWeighting;
    std::vector<float> input, left, right;
    double peak = 0.0, inputPower = 0.0, outputPower = 0.0, midPower = 0.0, sidePower = 0.0;
};

} // namespace bank
