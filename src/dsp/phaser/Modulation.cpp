// SPDX-License-Identifier: GPL-3.0-or-later

#include "dsp/phaser/Modulation.h"

#include <algorithm>

#include "dsp/phaser/QuilvaneOTA.h"
#include "dsp/phaser/QuilvaneParameterIds.h"
#include "parameters/Parameter.h"

namespace quilvane
{

using namespace K7R;

namespace
{

using Waveform = QuilvaneLFO::Waveform;

// The order of the parameter's names, which is not the oscillator's own.
constexpr std::array<Waveform, 7> waveforms { Waveform::sine,         Waveform::triangle, Waveform::hyperTriangle,
                                              Waveform::rampUp,       Waveform::rampDown, Waveform::square,
                                              Waveform::sampleAndHold };
constexpr std::array<NoteValue::Scale, 3> noteScales { NoteValue::Scale::triplet, NoteValue::Scale::dotted,
                                                       NoteValue::Scale::full };

// Where the parameter's index of a note rate starts in the table of note lengths.
constexpr int firstNoteRate = 1;

constexpr float maximumDepth = 63.0f;        // semitones
constexpr float centreNoteRange = 93.86314f; // from 50 Hz to 11313.7 Hz
constexpr float lowestCentreNote = 31.349958f;
constexpr float maximumGain = 4.0f; // +12 dB

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
Modulation::Movers::Movers (const SampleRateConstants& constants) :
    values (constants),
    stereoPhase (constants),
    lfo1 { QuilvaneLFO (constants), QuilvaneLFO (constants) },
    lfo2 { QuilvaneLFO (constants), QuilvaneLFO (constants) }
{
}

Modulation::Modulation (const SampleRateConstants& constants) : movers (constants) {}

void Modulation::prepare (bool sampleRateChanged)
{
    auto& changed = change();
    changed.forEachLFO ([] (QuilvaneLFO& lfo) { lfo.recover(); });

    if (! sampleRateChanged)
        return;

    changed.forEachLFO ([] (QuilvaneLFO& lfo) { lfo.prepare(); });
    changed.values.prepare();
    changed.stereoPhase.prepare();
}

void Modulation::setTempo (double bpm)
{
    if (bpm == tempo)
        return;

    tempo = bpm;
    change().forEachLFO ([bpm] (QuilvaneLFO& lfo) { lfo.setTempo (bpm); });
}

void Modulation::setSongPosition (double ppq)
{
    // A free oscillator goes on, whatever the position.
    if (movers.lfo1[0].isSynced() || movers.lfo2[0].isSynced())
        change();

    movers.forEachLFO ([ppq] (QuilvaneLFO& lfo) { lfo.setSongPosition (ppq); });
}

//==============================================================================
bool Modulation::parameterChanged (const Parameter& parameter)
{
    using namespace parameterIds;

    const auto n = parameter.getNormalised();
    const auto setTarget = [this] (ValueIndex index, float target)
    {
        change().values.setTarget (index, target);
        return true;
    };

    switch (parameter.getId())
    {
        case lfo1Sync:
        case lfo1Rate:
        case lfo1NoteRate:
        case lfo1NoteScale:
        case lfo1Waveform: lfoParameterChanged (parameter, &Movers::lfo1, lfo1Sync); return true;

        case lfo2Sync:
        case lfo2Rate:
        case lfo2NoteRate:
        case lfo2NoteScale:
        case lfo2Waveform: lfoParameterChanged (parameter, &Movers::lfo2, lfo2Sync); return true;

        case lfo1Depth: return setTarget (depth1, n * maximumDepth);
        case lfo2Depth: return setTarget (depth2, n * maximumDepth);
        case centerFrequency: return setTarget (centreNote, n * centreNoteRange + lowestCentreNote);
        case outputVolume: return setTarget (outputGain, n * n * maximumGain);
        case stereoPhaseId: change().stereoPhase.setTarget (0, n); return true;

        default: return false;
    }
}

void Modulation::lfoParameterChanged (const Parameter& parameter, std::array<QuilvaneLFO, 2> Movers::*lfos, int firstId)
{
    using namespace parameterIds;

    for (auto& lfo : change().*lfos)
    {
        switch (parameter.getId() - firstId + lfo1Sync)
        {
            case lfo1Sync: lfo.setSync (parameter.getBool()); break;
            case lfo1Rate: lfo.setRate (static_cast<double> (parameter.getFloat())); break;
            case lfo1NoteRate: lfo.setNoteRate (parameter.getInt() + firstNoteRate); break;
            case lfo1NoteScale: lfo.setNoteScale (entryAt (noteScales, parameter.getInt())); break;
            case lfo1Waveform: lfo.setWaveform (entryAt (waveforms, parameter.getInt())); break;
            default: break;
        }
    }
}

//==============================================================================
Modulation::States Modulation::getStates() noexcept
{
    return { movers.values.getState(),
             movers.stereoPhase.getState(),
             { movers.lfo1[0].getState(), movers.lfo1[1].getState(), movers.lfo2[0].getState(),
               movers.lfo2[1].getState() } };
}

void Modulation::setStates (const States& states) noexcept
{
    movers.values.setState (states.values);
    movers.stereoPhase.setState (states.stereoPhase);
    movers.forEachLFO ([state = states.lfos.begin()] (QuilvaneLFO& lfo) mutable { lfo.setState (*state++); });
}

Modulation::Movers& Modulation::change() noexcept
{
    if (course.used < course.size)
    {
        setStates (course.before);

        if (course.used > 0)
            moveAll (course.used);
    }

    course.size = course.used = 0;
    return movers;
}

void Modulation::moveAll (int numSamples) noexcept
{
    movers.values.advance (course.values, numSamples);
    movers.stereoPhase.advance (course.stereoPhase, numSamples);

    for (size_t i = 0; i < static_cast<size_t> (numSamples); ++i)
        course.rightOffsets[i] = static_cast<double> (course.stereoPhase[0][i]) * shapes::pi;

    const auto pairOf = [] (std::array<QuilvaneLFO, 2>& lfos) { return FastOscillators::Pair { &lfos[0], &lfos[1] }; };
    FastOscillators::process (kernels, pairOf (movers.lfo1), pairOf (movers.lfo2), course.rightOffsets.data(),
                              course.lfo1, course.lfo2, numSamples);
}

void Modulation::workOutFrequencies() noexcept
{
    const auto sides = course.sides;
    const auto size = static_cast<size_t> (course.size);
    const auto octaves = [this] (size_t i, size_t side)
    {
        const auto& values = course.values;
        return octavesOf (course.lfo1[2 * i + side] * values[depth1][i] + course.lfo2[2 * i + side] * values[depth2][i]
                          + values[centreNote][i]);
    };

    alignas (32) FastOscillators::Pairs<float> exponents;
    auto count = size;

    if (sides.count() == 2)
    {
        count = 2 * size;

        for (size_t i = 0; i < size; ++i)
            Kernels::storePair (&exponents[2 * i], octaves (i, 0), octaves (i, 1));
    }
    else
    {
        for (size_t i = 0; i < size; ++i)
            exponents[i] = octaves (i, sides.left ? 0 : 1);
    }

    const auto paddedCount = (count + 3) / 4 * 4;
    std::fill (exponents.begin() + count, exponents.begin() + paddedCount, 0.0f);
    kernels.frequency (exponents.data(), QuilvaneOTA::maximumFrequency, course.hz.data(), paddedCount);
    std::fill_n (course.hz.begin() + paddedCount, 4, 0.0f);
}

void Modulation::begin (int numSamples, Sides sides) noexcept
{
    // As long as nothing changes, each course is twice as long as the last one, in whole blocks.
    const auto size = std::max (numSamples, std::min (2 * course.size, maximumRun) / numSamples * numSamples);

    if (size > numSamples)
        course.before = getStates();

    moveAll (size);
    course.size = size;
    course.used = 0;
    course.sides = sides;

    if (sides.count() > 0)
        workOutFrequencies();
}

Modulation::Run Modulation::next (int numSamples, Sides sides) noexcept
{
    if (sides != course.sides)
        change();

    if (course.used == course.size)
        begin (numSamples, sides);

    const auto start = static_cast<size_t> (course.used);
    const auto size = std::min (numSamples, course.size - course.used);
    course.used += size;

    const auto last = 2 * static_cast<size_t> (course.used - 1);
    return { size, &course.hz[sides.count() * start], &course.values[outputGain][start], course.lfo1[last],
             course.lfo2[last] };
}

void Modulation::moveSmoothedValuesAlone (int numSamples) noexcept
{
    auto& moving = change();

    for (int i = 0; i < numSamples; ++i)
    {
        moving.values.advance();
        moving.stereoPhase.advance();
    }
}

} // namespace quilvane
