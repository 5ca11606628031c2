// SPDX-License-Identifier: GPL-3.0-or-later

#include "dsp/QuilvaneCore.h"

#include <array>
#include <cmath>

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

constexpr float maximumFrequency = 12543.854f; // Hz, MIDI note 127

// An input sample above the threshold wakes its side; a side sleeps when its envelope is below it.
constexpr float wakeThreshold = 1.52587e-5f;
constexpr double sleepThreshold = 1.5258699932019226e-05;
constexpr double silenceDecayPerUnit = 0.0004;

template <typename Table>
auto entryAt (const Table& table, int index)
{
    return table[static_cast<size_t> (juce::jlimit (0, static_cast<int> (table.size()) - 1, index))];
}

/** The frequency of a note number in Hz, limited to what the sections can be tuned to. */
float frequencyOfNote (float note)
{
    const auto octaves = (note - 9.0f) * 0.083333336f;
    const auto hz = static_cast<float> (std::pow (2.0, static_cast<double> (octaves)) * 13.75);

    if (hz < 0.0f)
        return 0.0f;

    return hz > maximumFrequency ? maximumFrequency : hz;
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

QuilvaneCore::LFOValues QuilvaneCore::Side::nextLFOs() noexcept
{
    const auto nextUnipolar = [] (QuilvaneLFO& lfo)
    {
        float bipolar = 0.0f;
        lfo.next (bipolar);
        return (bipolar + 1.0f) * 0.5f;
    };

    const auto first = nextUnipolar (lfo1);
    return { first, nextUnipolar (lfo2) };
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
void QuilvaneCore::detectActivity (Side& side, float input) const noexcept
{
    if (std::abs (input) > wakeThreshold)
    {
        side.active = true;
        side.envelope = 1.0;
    }
}

void QuilvaneCore::releaseIfSilent (Side& side) const noexcept
{
    side.envelope *= silenceDecay;

    if (side.envelope < sleepThreshold)
        side.active = false;
}

double QuilvaneCore::processNetwork (Side& side, double frequency, double input) const noexcept
{
    const auto run = [=] (auto& network)
    {
        network.setFrequency (frequency);
        network.smooth();
        return network.processBaseRate (input);
    };

    switch (quality)
    {
        case 0: return run (side.normal);
        case 1: return run (side.high);
        default: return input;
    }
}

float QuilvaneCore::processSide (Side& side, LFOValues lfos, float input) noexcept
{
    if (! side.active)
        return 0.0f;

    const auto note = lfos.first * modulation[depth1] + lfos.second * modulation[depth2] + modulation[centreNote];
    const auto frequency = static_cast<double> (frequencyOfNote (note));
    const auto output = processNetwork (side, frequency, static_cast<double> (input));

    return static_cast<float> (output) * modulation[outputGain];
}

void QuilvaneCore::updateMeter (Side& side, float output) const noexcept
{
    const auto level = getMeterLevel (output);

    if (level > side.meterHold)
        side.meterHold = level;

    side.meterHold *= rateConstants.meterDecayF;
}

void QuilvaneCore::processStereo (const float* inLeft, const float* inRight, float* outLeft, float* outRight,
                                  int numSamples, bool bypassed)
{
    LFOValues lfos { 0.0f, 0.0f };

    for (int i = 0; i < numSamples; ++i)
    {
        modulation.advance();
        stereoPhase.advance();

        // Both are read before anything is written: the buffers may be the same.
        const auto inputLeft = inLeft[i];
        const auto inputRight = inRight[i];

        if (bypassed)
        {
            outLeft[i] = inputLeft;
            outRight[i] = inputRight;
            continue;
        }

        detectActivity (left, inputLeft);
        detectActivity (right, inputRight);
        releaseIfSilent (left);
        releaseIfSilent (right);

        lfos = left.nextLFOs();

        const auto offset = static_cast<double> (stereoPhase[0]) * pi;
        right.lfo1.setPhaseOffset (offset);
        right.lfo2.setPhaseOffset (offset);
        const auto rightLfos = right.nextLFOs();

        outLeft[i] = processSide (left, lfos, inputLeft);
        outRight[i] = processSide (right, rightLfos, inputRight);

        updateMeter (left, outLeft[i]);
        updateMeter (right, outRight[i]);
    }

    lfo1Value.store (lfos.first, std::memory_order_relaxed);
    lfo2Value.store (lfos.second, std::memory_order_relaxed);
    publishMeters (left.meterHold, right.meterHold);
}

} // namespace quilvane
