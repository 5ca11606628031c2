// SPDX-License-Identifier: GPL-3.0-or-later

#include "dsp/phaser/QuilvaneCore.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "dsp/phaser/QuilvaneParameterIds.h"
#include "parameters/Parameter.h"

namespace quilvane
{

using namespace K7R;

namespace
{

constexpr float maximumFeedback = 0.95f;

// An input sample above the threshold wakes its side; a side sleeps when its envelope is below it.
constexpr float wakeThreshold = 1.52587e-5f;
constexpr double sleepThreshold = 1.5258699932019226e-05;
constexpr double silenceDecayPerUnit = 0.0004;
constexpr double wideAwake = 1.0e-3; // an envelope that takes more than a run to reach the threshold

/** Works on the numbers' bits, because the largest of them is found by vectors. */
bool areFinite (const float* samples, size_t numSamples) noexcept
{
    constexpr std::int32_t magnitude = 0x7fffffff, infinity = 0x7f800000;
    std::int32_t largest = 0;

    for (size_t i = 0; i < numSamples; ++i)
    {
        std::int32_t bits = 0;
        std::memcpy (&bits, samples + i, sizeof (bits));
        largest = std::max (largest, bits & magnitude);
    }

    return largest < infinity;
}

} // namespace

//==============================================================================
QuilvaneCore::QuilvaneCore (const SampleRateConstants& constants) :
    GlassRailEffectCore (constants),
    silenceDecay (1.0 - static_cast<double> (constants.rateScaleF) * silenceDecayPerUnit),
    modulation (constants),
    normal (constants),
    high (constants)
{
}

template <typename Function>
void QuilvaneCore::forEachNetwork (Function&& function)
{
    normal.forEach (function);
    high.forEach (function);
}

//==============================================================================
void QuilvaneCore::prepare (bool sampleRateChanged)
{
    forEachNetwork ([] (auto& network) { network.recover(); });
    modulation.prepare (sampleRateChanged);

    if (! sampleRateChanged)
        return;

    forEachNetwork ([] (QuilvaneOTA& network) { network.reset(); });
    silenceDecay = 1.0 - static_cast<double> (rateConstants.rateScaleF) * silenceDecayPerUnit;
}

void QuilvaneCore::tempoChanged (double bpm)
{
    modulation.setTempo (bpm);
}

void QuilvaneCore::songPositionChanged (double ppq)
{
    modulation.setSongPosition (ppq);
}

//==============================================================================
void QuilvaneCore::parameterChanged (const Parameter& parameter)
{
    using namespace parameterIds;

    if (modulation.parameterChanged (parameter))
        return;

    switch (parameter.getId())
    {
        case stagesNumber:
            return forEachNetwork ([stages = 2 * parameter.getInt() + 2] (QuilvaneOTA& network)
                                   { network.setStageCount (stages); });

        case feedback:
            return forEachNetwork ([amount = parameter.getNormalised() * maximumFeedback] (QuilvaneOTA& network)
                                   { network.setFeedback (amount); });

        case fx:
            return forEachNetwork ([mix = parameter.getNormalised()] (QuilvaneOTA& network) { network.setMix (mix); });

        case processingQuality: quality = parameter.getInt(); return;

        default: return;
    }
}

//==============================================================================
bool QuilvaneCore::runGate (Side& side, const float* input, IsActive& isActive, int numSamples) const noexcept
{
    const auto isLoud = [] (float sample) { return std::abs (sample) > wakeThreshold; };

    // Asleep, and nothing wakes it: what the envelope falls to doesn't matter.
    if (! side.active && std::none_of (input, input + numSamples, isLoud))
        return true;

    // Awake, and no run is long enough to fall asleep in.
    if (side.active && side.envelope > wideAwake)
    {
        auto quiet = numSamples; // since the last loud sample

        for (int i = numSamples; --i >= 0;)
        {
            if (isLoud (input[i]))
            {
                side.envelope = 1.0;
                quiet = numSamples - i;
                break;
            }
        }

        while (--quiet >= 0)
            side.envelope *= silenceDecay;

        return true;
    }

    bool isAnyActive = false, isAnyAsleep = false;

    for (size_t i = 0; i < static_cast<size_t> (numSamples); ++i)
    {
        if (isLoud (input[i]))
        {
            side.active = true;
            side.envelope = 1.0;
        }

        side.envelope *= silenceDecay;

        if (side.envelope < sleepThreshold)
            side.active = false;

        isActive[i] = side.active;
        isAnyActive |= side.active;
        isAnyAsleep |= ! side.active;
    }

    return isAnyActive != isAnyAsleep;
}

void QuilvaneCore::processSides (const Buffers& buffers, Sides sides, const Modulation::Run& run) noexcept
{
    const auto size = static_cast<size_t> (run.numSamples);
    const auto [inLeft, inRight] = buffers.in;
    const auto [outLeft, outRight] = buffers.out;
    const auto isBoth = sides.count() == 2;
    alignas (32) double sound[Kernels::maximumSides * maximumRun];

    // All that is read comes before anything that is written: the buffers may be the same.
    if (isBoth)
        for (size_t i = 0; i < size; ++i)
            Kernels::storePair (&sound[2 * i], static_cast<double> (inLeft[i]), static_cast<double> (inRight[i]));
    else
        std::copy_n (sides.left ? inLeft : inRight, size, sound);

    if (quality == 0)
        normal.process (sides, run.hz, sound, run.numSamples);
    else if (quality == 1)
        high.process (sides, run.hz, sound, run.numSamples);

    const auto apply = [&] (double value, size_t i) { return static_cast<float> (value) * run.outputGain[i]; };

    if (isBoth)
    {
        for (size_t i = 0; i < size; ++i)
        {
            outLeft[i] = apply (sound[2 * i], i);
            outRight[i] = apply (sound[2 * i + 1], i);
        }
    }
    else
    {
        for (size_t i = 0; i < size; ++i)
            (sides.left ? outLeft : outRight)[i] = apply (sound[i], i);

        std::fill_n (sides.left ? outRight : outLeft, size, 0.0f);
    }

    if (sides.left)
        recoverSide (0, outLeft, size);

    if (sides.right)
        recoverSide (1, outRight, size);
}

void QuilvaneCore::recoverSide (size_t side, float* output, size_t numSamples) noexcept
{
    if (areFinite (output, numSamples))
        return;

    std::fill_n (output, numSamples, 0.0f);

    if (quality == 0)
        normal.recover (side);
    else if (quality == 1)
        high.recover (side);
}

void QuilvaneCore::runMeters (const float* outputLeft, const float* outputRight, int numSamples) noexcept
{
    // Both at once: each step waits for the last one of its side.
    auto holdLeft = left.meterHold, holdRight = right.meterHold;
    const auto decay = rateConstants.meterDecayF;

    for (int i = 0; i < numSamples; ++i)
    {
        holdLeft = std::max (holdLeft, getMeterLevel (outputLeft[i])) * decay;
        holdRight = std::max (holdRight, getMeterLevel (outputRight[i])) * decay;
    }

    left.meterHold = holdLeft;
    right.meterHold = holdRight;
}

void QuilvaneCore::processRun (const Buffers& buffers, int numSamples) noexcept
{
    IsActive leftActive, rightActive;
    const auto leftIsUniform = runGate (left, buffers.in[0], leftActive, numSamples);
    const auto rightIsUniform = runGate (right, buffers.in[1], rightActive, numSamples);

    const auto isActive = [&] (int i)
    {
        const auto at = static_cast<size_t> (i);
        return Sides { leftIsUniform ? left.active : leftActive[at], rightIsUniform ? right.active : rightActive[at] };
    };

    for (int start = 0; start < numSamples;)
    {
        const auto active = isActive (start);
        auto end = leftIsUniform && rightIsUniform ? numSamples : start + 1;

        while (end < numSamples && isActive (end) == active)
            ++end;

        const auto run = modulation.next (end - start, active);
        const auto rest = buffers.from (start);

        if (active != Sides {})
            processSides (rest, active, run);
        else
            for (auto* out : rest.out)
                std::fill_n (out, run.numSamples, 0.0f);

        start += run.numSamples;
        publishLFOs (run.lfo1, run.lfo2);
    }

    runMeters (buffers.out[0], buffers.out[1], numSamples);
}

// Flattened, because calls are a twentieth of what a block of one sample costs.
[[gnu::flatten]] void QuilvaneCore::processStereo (const float* inLeft, const float* inRight, float* outLeft,
                                                   float* outRight, int numSamples, bool bypassed)
{
    if (bypassed || numSamples == 0)
        publishLFOs (0.0f, 0.0f);

    const Buffers buffers { { inLeft, inRight }, { outLeft, outRight } };

    for (int start = 0; start < numSamples; start += maximumRun)
    {
        const auto size = juce::jmin (maximumRun, numSamples - start);

        if (! bypassed)
        {
            processRun (buffers.from (start), size);
            continue;
        }

        modulation.moveSmoothedValuesAlone (size);

        for (int i = start; i < start + size; ++i)
        {
            const auto inputRight = inRight[i];
            outLeft[i] = inLeft[i];
            outRight[i] = inputRight;
        }
    }

    publishMeters (left.meterHold, right.meterHold);
}

} // namespace quilvane
