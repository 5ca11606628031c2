// SPDX-License-Identifier: GPL-3.0-or-later

#include "bank/BankSession.h"

#include <algorithm>
#include <cmath>

using namespace quilvane::parameterIds;

namespace bank
{

namespace
{

constexpr double inputPeak = 0.5011872; // -6 dBFS

std::vector<float> scaledToPeak (std::vector<float> samples)
{
    float highest = 0.0f;

    for (auto sample : samples)
        highest = std::max (highest, std::abs (sample));

    for (auto& sample : samples)
        sample *= static_cast<float> (inputPeak) / highest;

    return samples;
}

/** A sum of white noises, each held twice as long as the one before. */
std::vector<float> makePinkNoise()
{
    constexpr size_t length = size_t { 1 } << 18;
    constexpr uint32_t numNoises = 13;
    std::vector<float> sum (length);

    for (uint32_t k = 0; k < numNoises; ++k)
    {
        const auto held = signals::noise (length >> k, k + 1);

        for (size_t i = 0; i < length; ++i)
            sum[i] += held[i >> k];
    }

    return scaledToPeak (std::move (sum));
}

std::vector<float> makeChord()
{
    constexpr size_t length = size_t { 1 } << 16;
    constexpr double highest = 9000.0; // Hz
    std::vector<float> sum (length), wave (length);

    for (size_t i = 0; i < length; ++i)
        wave[i] = static_cast<float> (std::sin (2.0 * signals::pi * static_cast<double> (i) / length));

    for (double hz : { 73.42, 146.83, 220.0, 369.99, 659.26 })
    {
        // Whole periods, so that the sound repeats without a step.
        const auto periods = static_cast<size_t> (hz * length / sampleRate);

        for (size_t harmonic = 1; static_cast<double> (harmonic) * hz < highest; ++harmonic)
        {
            const auto start = 7919 * harmonic * harmonic; // keeps the crests apart

            for (size_t i = 0; i < length; ++i)
                sum[i] += wave[(start + i * periods * harmonic) % length] / static_cast<float> (harmonic);
        }
    }

    return scaledToPeak (std::move (sum));
}

const std::vector<float>& getSamples (Material material)
{
    static const auto noise = makePinkNoise();
    static const auto chord = makeChord();
    return material == Material::pinkNoise ? noise : chord;
}

} // namespace

//==============================================================================
double KWeighting::Biquad::process (double x)
{
    const auto y = b0 * x + z1;
    z1 = b1 * x - a1 * y + z2;
    z2 = b2 * x - a2 * y;
    return y;
}

KWeighting::Biquad KWeighting::makeShelf()
{
    const auto k = std::tan (signals::pi * 1681.974450955533 / sampleRate), q = 0.7071752369554196;
    const auto high = std::pow (10.0, 3.999843853973347 / 20.0), band = std::pow (high, 0.4996667741545416);
    const auto a0 = 1.0 + k / q + k * k;
    return { (high + band * k / q + k * k) / a0, 2.0 * (k * k - high) / a0, (high - band * k / q + k * k) / a0,
             2.0 * (k * k - 1.0) / a0, (1.0 - k / q + k * k) / a0 };
}

KWeighting::Biquad KWeighting::makeHighPass()
{
    const auto k = std::tan (signals::pi * 38.13547087602444 / sampleRate), q = 0.5003270373238773;
    const auto a0 = 1.0 + k / q + k * k;
    return { 1.0, -2.0, 1.0, 2.0 * (k * k - 1.0) / a0, (1.0 - k / q + k * k) / a0 };
}

//==============================================================================
Session::Session (const Preset& presetToPlay, Material materialToPlay, double bpm, Sides sides) :
    preset (presetToPlay),
    material (getSamples (materialToPlay)),
    copiesLeft (sides == Sides::leftIfAlike && presetToPlay.stereoPhase == 0.0),
    plugin (2.0 * sampleRate)
{
    preset.applyTo (plugin);

    // The change of the rate makes the smoothed values arrive, and the oscillators begin at 0.
    plugin.rate = sampleRate;
    plugin.prepare();
    plugin.playHead.fails = false;
    plugin.playHead.playing = true;
    plugin.playHead.bpm = bpm;
}

void Session::play (size_t numSamples, bool keep)
{
    std::vector<float> in (numSamples);

    for (auto& sample : in)
        sample = material[position++ % material.size()];

    auto outLeft = in, outRight = copiesLeft ? std::vector<float> (numSamples) : in;
    plugin.process (outLeft, outRight);

    if (copiesLeft)
        outRight = outLeft;

    for (size_t i = 0; i < numSamples; ++i)
    {
        const auto l = static_cast<double> (outLeft[i]), r = static_cast<double> (outRight[i]);
        const auto weightedIn = inputWeighting.process (static_cast<double> (in[i]));
        const auto weightedLeft = leftWeighting.process (l), weightedRight = rightWeighting.process (r);
        peak = std::max ({ peak, std::abs (l), std::abs (r) });

        if (keep)
        {
            inputPower += 2.0 * weightedIn * weightedIn;
            outputPower += weightedLeft * weightedLeft + weightedRight * weightedRight;
            midPower += (l + r) * (l + r);
            sidePower += (l - r) * (l - r);
        }
    }

    if (keep)
    {
        input.insert (input.end(), in.begin(), in.end());
        left.insert (left.end(), outLeft.begin(), outLeft.end());
        right.insert (right.end(), outRight.begin(), outRight.end());
    }
}

void Session::skip (double seconds)
{
    constexpr double mostHurry = 400.0, highestRate = 20.0;
    double fastest = 0.0;

    for (const auto& oscillator : preset.oscillators)
        if (oscillator.isUsed() && ! oscillator.synced)
            fastest = std::max (fastest, oscillator.freeRate);

    if (fastest > 0.0)
    {
        const auto hurry = std::min (mostHurry, highestRate / fastest);
        const auto numSamples = std::ceil (seconds / hurry * sampleRate);
        setFreeRates (seconds * sampleRate / numSamples);
        play (static_cast<size_t> (numSamples), false);
        setFreeRates (1.0);
        seconds -= numSamples / sampleRate;
    }

    plugin.playHead.ppq += seconds * plugin.playHead.bpm / 60.0;
}

void Session::setFreeRates (double factor)
{
    const int ids[] { lfo1Rate, lfo2Rate };

    for (size_t i = 0; i < 2; ++i)
        plugin.parameter (ids[i]).setFloat (static_cast<float> (preset.oscillators[i].freeRate * factor), true);
}

double Session::getLoudnessChange() const
{
    return 10.0 * std::log10 (outputPower / inputPower);
}

double Session::getSideToMid() const
{
    constexpr double nothing = 1.0e-10;
    return 10.0 * std::log10 (sidePower / midPower + nothing);
}

} // namespace bank
