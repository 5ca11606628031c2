// SPDX-License-Identifier: GPL-3.0-or-later

#include "dsp/Clock.h"

#include <array>
#include <cmath>

namespace K7R
{

namespace
{

/** A position this close behind a grid line, as a fraction of a step, counts as on the line, so that
    an edge isn't fired twice. */
constexpr double lineTolerance = 0.005;

double cyclesPerQuarterNote (int noteIndex)
{
    static constexpr std::array<double, 13> lengths { 0.00390625, 0.0078125, 0.015625, 0.03125, 0.0625, 0.125, 0.25,
                                                      0.5,        1.0,       2.0,      4.0,     8.0,    16.0 };

    return noteIndex >= 0 && noteIndex < static_cast<int> (lengths.size()) ? lengths[static_cast<size_t> (noteIndex)]
                                                                           : 0.0;
}

double scaleFactor (int scaleIndex)
{
    static constexpr std::array<double, 3> factors { 1.0, 0.6666666666666666, 1.5 };

    return scaleIndex >= 0 && scaleIndex < static_cast<int> (factors.size()) ? factors[static_cast<size_t> (scaleIndex)]
                                                                             : 0.0;
}

/** The ceiling as a whole number of samples, at most what an int holds. */
int ceilToSamples (double samples)
{
    return static_cast<int> (std::ceil (juce::jlimit (-1.0e9, 1.0e9, samples)));
}

} // namespace

NoteValue::NoteValue()
{
    update();
}

bool NoteValue::setNoteIndex (int index)
{
    if (std::exchange (noteIndex, index) == index)
        return false;

    update();
    return true;
}

bool NoteValue::setScaleIndex (int index)
{
    if (std::exchange (scaleIndex, index) == index)
        return false;

    update();
    return true;
}

void NoteValue::update()
{
    value.store (cyclesPerQuarterNote (noteIndex) * scaleFactor (scaleIndex), std::memory_order_relaxed);
}

//==============================================================================
Clock::~Clock()
{
    cancelPendingUpdate();
}

bool Clock::setNoteIndex (int index)
{
    const auto changed = noteValue.setNoteIndex (index);

    if (changed)
        needsRecalculation = true;

    return changed;
}

bool Clock::setScaleIndex (int index)
{
    const auto changed = noteValue.setScaleIndex (index);

    if (changed)
        needsRecalculation = true;

    return changed;
}

void Clock::setPosition (double ppq)
{
    change (position, ppq);
}

void Clock::setTempo (double bpm)
{
    change (tempo, bpm);
}

void Clock::setSampleRate (double hz)
{
    change (sampleRate, hz);
}

void Clock::setPulseWidth (double fraction)
{
    change (pulseWidth, fraction);
}

void Clock::change (double& member, double newValue)
{
    if (std::exchange (member, newValue) != newValue)
        needsRecalculation = true;
}

//==============================================================================
void Clock::reset()
{
    if (! running)
        return;

    needsRecalculation = true;
    position = 0.0;
    state = State::unknown;
    running = false;
    resetPending = true;
    triggerAsyncUpdate();
}

bool Clock::isNearPreviousLine() const noexcept
{
    const auto steps = getNoteValue() * position;
    const auto next = std::ceil (steps);

    return next - steps > steps - (next - 1.0);
}

bool Clock::tick()
{
    if (! running || tempo <= 0.0 || getNoteValue() <= 0.0)
        return false;

    if (needsRecalculation.exchange (false))
        planNextEdge();

    bool edgeFired = false;

    if (samplesToEdge == 0 && (state == State::unknown || state != nextState))
    {
        firstEdge = state == State::unknown;
        state = nextState;
        edgeFired = true;
        tickPending = true;
        triggerAsyncUpdate();
    }

    --samplesToEdge;
    position += ppqPerSample;

    if (samplesToEdge < 0)
        needsRecalculation = true;

    return edgeFired;
}

void Clock::planNextEdge()
{
    const auto samplesPerMinute = sampleRate * 60.0;
    const auto samplesPerQuarter = samplesPerMinute / tempo;
    ppqPerSample = tempo / samplesPerMinute;

    const auto step = 1.0 / getNoteValue(); // quarter notes
    const auto next = std::ceil (position / step) * step;
    const auto previous = next - step;
    const auto width = step * pulseWidth;
    const auto samplesTo = [&] (double line) { return ceilToSamples ((line - position) * samplesPerQuarter); };

    if (position < 0.0)
    {
        nextState = State::off;
        state = State::unknown;
        samplesToEdge = -1; // none before the song begins
        return;
    }

    const auto isInOnPart = position <= previous + width;

    if (state == State::unknown)
    {
        nextState = State::off;
        samplesToEdge = 0;
    }
    else if (isInOnPart)
    {
        if (state == State::off)
        {
            nextState = State::on;
            samplesToEdge = samplesTo (previous + width);
        }
        else
        {
            nextState = State::off;
            samplesToEdge = position > previous + lineTolerance * step ? samplesTo (next) : 0;
        }
    }
    else if (state == State::off)
    {
        nextState = State::on;
        samplesToEdge = position > next - lineTolerance * step ? samplesTo (next + width) : 0;
    }
    else
    {
        nextState = State::off;
        samplesToEdge = samplesTo (next);
    }
}

void Clock::handleAsyncUpdate()
{
    if (resetPending.exchange (false))
        listeners.call ([] (Listener& l) { l.clockReset(); });

    if (tickPending.exchange (false))
        listeners.call ([] (Listener& l) { l.clockTick(); });
}

} // namespace K7R
