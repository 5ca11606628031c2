// SPDX-License-Identifier: GPL-3.0-or-later

#include "dsp/QuilvaneCore.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "dsp/FastNetwork.h"
#include "dsp/QuilvaneParameterIds.h"
#include "parameters/Parameter.h"

namespace quilvane
{

namespace
{

using Waveform = QuilvaneLFO::Waveform;

// The order of the parameter's names, which is not the oscillator's own.
constexpr std::array<Waveform, 7> waveforms { Waveform::sine,         Waveform::triangle, Waveform::hyperTriangle,
                                              Waveform::rampUp,       Waveform::rampDown, Waveform::square,
                                              Waveform::sampleAndHold };
constexpr std::array<NoteValue::Scale, 3> noteScales { NoteValue::Scale::triplet, NoteValue::Scale::dotted,
                                                       NoteValue::Scale::full };

constexpr double pi = 3.141592653589793;

// Where the parameter's index of a note rate starts in the table of note lengths.
constexpr int firstNoteRate = 1;

constexpr float maximumDepth = 63.0f;        // semitones
constexpr float centreNoteRange = 93.86314f; // from 50 Hz to 11313.7 Hz
constexpr float lowestCentreNote = 31.349958f;
constexpr float maximumFeedback = 0.95f;
constexpr float maximumGain = 4.0f; // +12 dB

// An input sample above the threshold wakes its side; a side sleeps when its envelope is below it.
constexpr float wakeThreshold = 1.52587e-5f;
constexpr double sleepThreshold = 1.5258699932019226e-05;
constexpr double silenceDecayPerUnit = 0.0004;
constexpr double wideAwake = 1.0e-3; // an envelope that takes more than a run to reach the threshold

template <typename Table>
auto entryAt (const Table& table, int index)
{
    return table[static_cast<size_t> (juce::jlimit (0, static_cast<int> (table.size()) - 1, index))];
}

/** The octaves from 13.75 Hz to a note number. */
float octavesOf (float note)
{
    return (note - 9.0f) * 0.083333336f;
}

} // namespace

//==============================================================================
QuilvaneCore::Side::Side (const SampleRateConstants& constants) :
    normal (constants),
    high (constants),
    lfo1 (constants),
    lfo2 (constants)
{
}

QuilvaneCore::QuilvaneCore (const SampleRateConstants& constants) :
    GlassRailEffectCore (constants),
    silenceDecay (1.0 - static_cast<double> (constants.rateScaleF) * silenceDecayPerUnit),
    modulation (constants),
    stereoPhase (constants),
    left (constants),
    right (constants)
{
}

template <typename Function>
void QuilvaneCore::forEachNetwork (Function&& function)
{
    for (auto* side : { &left, &right })
    {
        function (side->normal);
        function (side->high);
    }
}

template <typename Function>
void QuilvaneCore::forEachLFO (Function&& function)
{
    for (auto lfo : { &Side::lfo1, &Side::lfo2 })
        for (auto* side : { &left, &right })
            function (side->*lfo);
}

//==============================================================================
void QuilvaneCore::prepare (bool sampleRateChanged)
{
    forEachNetwork ([] (auto& network) { network.recover(); });
    forEachLFO ([] (QuilvaneLFO& lfo) { lfo.recover(); });

    if (! sampleRateChanged)
        return;

    forEachLFO ([] (QuilvaneLFO& lfo) { lfo.prepare(); });
    forEachNetwork ([] (QuilvaneOTA& network) { network.reset(); });
    modulation.prepare();
    stereoPhase.prepare();
    silenceDecay = 1.0 - static_cast<double> (rateConstants.rateScaleF) * silenceDecayPerUnit;
}

void QuilvaneCore::tempoChanged (double bpm)
{
    if (bpm == tempo)
        return;

    tempo = bpm;
    forEachLFO ([bpm] (QuilvaneLFO& lfo) { lfo.setTempo (bpm); });
}

void QuilvaneCore::songPositionChanged (double ppq)
{
    forEachLFO ([ppq] (QuilvaneLFO& lfo) { lfo.setSongPosition (ppq); });
}

//==============================================================================
void QuilvaneCore::parameterChanged (const Parameter& parameter)
{
    using namespace parameterIds;

    switch (parameter.getId())
    {
        case lfo1Sync:
        case lfo1Rate:
        case lfo1NoteRate:
        case lfo1NoteScale:
        case lfo1Waveform: return lfoParameterChanged (parameter, &Side::lfo1, lfo1Sync);

        case lfo2Sync:
        case lfo2Rate:
        case lfo2NoteRate:
        case lfo2NoteScale:
        case lfo2Waveform: return lfoParameterChanged (parameter, &Side::lfo2, lfo2Sync);

        case lfo1Depth: return modulation.setTarget (depth1, parameter.getNormalised() * maximumDepth);
        case lfo2Depth: return modulation.setTarget (depth2, parameter.getNormalised() * maximumDepth);

        case centerFrequency:
            return modulation.setTarget (centreNote, parameter.getNormalised() * centreNoteRange + lowestCentreNote);

        case stereoPhaseId: return stereoPhase.setTarget (0, parameter.getNormalised());

        case stagesNumber:
            return forEachNetwork ([stages = 2 * parameter.getInt() + 2] (QuilvaneOTA& network)
                                   { network.setStageCount (stages); });

        case feedback:
            return forEachNetwork ([amount = parameter.getNormalised() * maximumFeedback] (QuilvaneOTA& network)
                                   { network.setFeedback (amount); });

        case fx:
            return forEachNetwork ([mix = parameter.getNormalised()] (QuilvaneOTA& network) { network.setMix (mix); });

        case outputVolume:
        {
            const auto n = parameter.getNormalised();
            return modulation.setTarget (outputGain, n * n * maximumGain);
        }

        case processingQuality: quality = parameter.getInt(); return;

        default: return;
    }
}

void QuilvaneCore::lfoParameterChanged (const Parameter& parameter, QuilvaneLFO Side::*lfo, int firstId)
{
    using namespace parameterIds;

    for (auto* side : { &left, &right })
    {
        auto& oscillator = side->*lfo;

        switch (parameter.getId() - firstId + lfo1Sync)
        {
            case lfo1Sync: oscillator.setSync (parameter.getBool()); break;
            case lfo1Rate: oscillator.setRate (static_cast<double> (parameter.getFloat())); break;
            case lfo1NoteRate: oscillator.setNoteRate (parameter.getInt() + firstNoteRate); break;
            case lfo1NoteScale: oscillator.setNoteScale (entryAt (noteScales, parameter.getInt())); break;
            case lfo1Waveform: oscillator.setWaveform (entryAt (waveforms, parameter.getInt())); break;
            default: break;
        }
    }
}

//==============================================================================
bool QuilvaneCore::runGate (Side& side, const float* input, Run<bool>& isActive, int numSamples) const noexcept
{
    const auto isLoud = [] (float sample) { return std::abs (sample) > wakeThreshold; };

    // Asleep, and nothing wakes it: what the envelope falls to doesn't matter.
    if (! side.active && std::none_of (input, input + numSamples, isLoud))
    {
        std::fill_n (isActive.begin(), numSamples, false);
        return true;
    }

    // Awake, and no run is long enough to fall asleep in.
    if (side.active && side.envelope > wideAwake)
    {
        std::fill_n (isActive.begin(), numSamples, true);
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

void QuilvaneCore::runControls (Controls& controls, int numSamples) noexcept
{
    modulation.advance (controls.modulation, numSamples);
    stereoPhase.advance (controls.stereoPhase, numSamples);

    Run<double> offsets;

    for (size_t i = 0; i < static_cast<size_t> (numSamples); ++i)
        offsets[i] = static_cast<double> (controls.stereoPhase[0][i]) * pi;

    FastOscillators::process (kernels, { &left.lfo1, &right.lfo1 }, { &left.lfo2, &right.lfo2 }, offsets.data(),
                              controls.lfo1, controls.lfo2, numSamples);
}

template <size_t NumSides>
void QuilvaneCore::processSides (const std::array<Side*, NumSides>& sides, size_t firstSide, const Controls& controls,
                                 const std::array<float*, NumSides>& samples, int start, int end) noexcept
{
    const auto size = static_cast<size_t> (end - start);
    const auto count = NumSides * size, paddedCount = (count + 3) / 4 * 4;
    alignas (32) FastOscillators::Pairs<float> exponents, hz;
    alignas (32) FastOscillators::Pairs<double> sound;

    for (size_t i = 0; i < size; ++i)
    {
        const auto from = i + static_cast<size_t> (start);
        const auto octaves = [&] (size_t side)
        {
            const auto& moved = controls.modulation;
            return octavesOf (controls.lfo1[2 * from + side] * moved[depth1][from]
                              + controls.lfo2[2 * from + side] * moved[depth2][from] + moved[centreNote][from]);
        };
        const auto sample = [&] (size_t side) { return static_cast<double> (samples[side][from]); };

        if constexpr (NumSides == 2)
        {
            Kernels::storePair (&exponents[2 * i], octaves (0), octaves (1));
            Kernels::storePair (&sound[2 * i], sample (0), sample (1));
        }
        else
        {
            exponents[i] = octaves (firstSide);
            sound[i] = sample (0);
        }
    }

    std::fill (exponents.begin() + count, exponents.begin() + paddedCount, 0.0f);
    kernels.frequency (exponents.data(), QuilvaneOTA::maximumFrequency, hz.data(), paddedCount);

    const auto run = [&] (auto Side::*network)
    {
        if constexpr (NumSides == 2)
            FastNetwork::process (kernels, sides[0]->*network, sides[1]->*network, hz.data(), sound.data(),
                                  end - start);
        else
            FastNetwork::process (kernels, sides[0]->*network, hz.data(), sound.data(), end - start);
    };

    if (quality == 0)
        run (&Side::normal);
    else if (quality == 1)
        run (&Side::high);

    for (size_t i = 0; i < size; ++i)
        for (size_t side = 0; side < NumSides; ++side)
            samples[side][i + static_cast<size_t> (start)] = static_cast<float> (sound[i * NumSides + side]);
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

void QuilvaneCore::processRun (const float* inLeft, const float* inRight, float* outLeft, float* outRight,
                               int numSamples) noexcept
{
    Controls controls; // NOLINT(cppcoreguidelines-pro-type-member-init): filled as far as it's read
    runControls (controls, numSamples);

    Run<bool> leftActive, rightActive;
    const auto leftIsUniform = runGate (left, inLeft, leftActive, numSamples);
    const auto rightIsUniform = runGate (right, inRight, rightActive, numSamples);

    // Both inputs are read before anything is written: the buffers may be the same.
    Run<float> samplesLeft, samplesRight;
    std::copy_n (inLeft, numSamples, samplesLeft.begin());
    std::copy_n (inRight, numSamples, samplesRight.begin());

    const auto isActive = [&] (int i)
    { return std::pair (leftActive[static_cast<size_t> (i)], rightActive[static_cast<size_t> (i)]); };

    for (int start = 0, end = 0; start < numSamples; start = end)
    {
        const auto active = isActive (start);

        if (leftIsUniform && rightIsUniform)
            end = numSamples;

        while (end < numSamples && isActive (end) == active)
            ++end;

        if (active.first && active.second)
            processSides<2> ({ &left, &right }, 0, controls, { samplesLeft.data(), samplesRight.data() }, start, end);
        else if (active.first)
            processSides<1> ({ &left }, 0, controls, { samplesLeft.data() }, start, end);
        else if (active.second)
            processSides<1> ({ &right }, 1, controls, { samplesRight.data() }, start, end);

        if (! active.first)
            std::fill (samplesLeft.begin() + start, samplesLeft.begin() + end, 0.0f);

        if (! active.second)
            std::fill (samplesRight.begin() + start, samplesRight.begin() + end, 0.0f);
    }

    for (size_t i = 0; i < static_cast<size_t> (numSamples); ++i)
    {
        const auto gain = controls.modulation[outputGain][i];
        outLeft[i] = samplesLeft[i] * gain;
        outRight[i] = samplesRight[i] * gain;
    }

    runMeters (outLeft, outRight, numSamples);

    const auto last = 2 * static_cast<size_t> (numSamples - 1);
    lfo1Value.store (controls.lfo1[last], std::memory_order_relaxed);
    lfo2Value.store (controls.lfo2[last], std::memory_order_relaxed);
}

void QuilvaneCore::processStereo (const float* inLeft, const float* inRight, float* outLeft, float* outRight,
                                  int numSamples, bool bypassed)
{
    lfo1Value.store (0.0f, std::memory_order_relaxed);
    lfo2Value.store (0.0f, std::memory_order_relaxed);

    for (int start = 0; start < numSamples; start += maximumRun)
    {
        const auto size = juce::jmin (maximumRun, numSamples - start);

        if (! bypassed)
        {
            processRun (inLeft + start, inRight + start, outLeft + start, outRight + start, size);
            continue;
        }

        for (int i = start; i < start + size; ++i)
        {
            modulation.advance();
            stereoPhase.advance();
            const auto inputRight = inRight[i];
            outLeft[i] = inLeft[i];
            outRight[i] = inputRight;
        }
    }

    publishMeters (left.meterHold, right.meterHold);
}

} // namespace quilvane
