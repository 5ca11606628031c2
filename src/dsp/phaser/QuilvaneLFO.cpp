// SPDX-License-Identifier: GPL-3.0-or-later

#include "dsp/phaser/QuilvaneLFO.h"

#include <cmath>

#include "dsp/FilterState.h"

namespace quilvane
{

using namespace K7R;

namespace
{

constexpr double minutesPerSecond = 0.016666666666666666;
constexpr double lagAtBaseRate = 0.01;       // per sample
constexpr float randomScale = 4.656613e-10f; // from 32 bits with sign to -1..1

} // namespace

QuilvaneLFO::QuilvaneLFO (const SampleRateConstants& constants) :
    rateConstants (constants),
    lagCoefficient (constants.lagScale * lagAtBaseRate)
{
}

void QuilvaneLFO::prepare()
{
    drawRandomStep();
    state.phase = 0.0;
    updateIncrement();
}

void QuilvaneLFO::recover() noexcept
{
    if (! isUsableState (state.phase) || ! isUsableState (state.lagged))
        state.phase = state.lagged = 0.0;
}

void QuilvaneLFO::setSync (bool shouldSync)
{
    if (std::exchange (synced, shouldSync) != shouldSync)
        updateIncrement();
}

void QuilvaneLFO::setRate (double hz)
{
    if (std::exchange (rate, hz) != hz)
        updateIncrement();
}

void QuilvaneLFO::setNoteRate (int noteIndex)
{
    clock.setNoteIndex (noteIndex);
    updateIncrement();
}

void QuilvaneLFO::setNoteScale (NoteValue::Scale scale)
{
    clock.setScaleIndex (static_cast<int> (scale));
    updateIncrement();
}

void QuilvaneLFO::setTempo (double bpm)
{
    clock.setTempo (bpm);
    updateIncrement();
}

void QuilvaneLFO::setSongPosition (double ppq)
{
    clock.setPosition (ppq);

    if (synced)
    {
        const auto cycles = clock.getNoteValue() * ppq;
        state.phase = (cycles - std::floor (cycles)) * shapes::twoPi;
    }
}

void QuilvaneLFO::updateIncrement()
{
    effectiveRate = synced ? clock.getNoteValue() * clock.getTempo() * minutesPerSecond : rate;
    increment = effectiveRate * rateConstants.samplePeriod * shapes::twoPi;
}

void QuilvaneLFO::drawRandomStep() noexcept
{
    const auto drawn = state.randomB;
    state.randomA ^= drawn;
    state.randomB = state.randomA + drawn;
    state.held = static_cast<float> (static_cast<int32_t> (drawn)) * randomScale;
}

//==============================================================================
float QuilvaneLFO::readWaveform (double readPhase) noexcept
{
    switch (waveform)
    {
        case Waveform::triangle: return shapes::triangle (readPhase);
        case Waveform::sine: return static_cast<float> (std::sin (readPhase - shapes::quarterPi));
        case Waveform::square: return shapes::square (readPhase);
        case Waveform::rampDown: return shapes::rampDown (readPhase);
        case Waveform::rampUp: return shapes::rampUp (readPhase);
        case Waveform::sampleAndHold: return readRandomStep (readPhase);
        case Waveform::hyperTriangle: return shapes::hyperTriangle (readPhase);
    }

    return 0.0f;
}

float QuilvaneLFO::readRandomStep (double readPhase) noexcept
{
    const auto wasFirstHalf = std::exchange (state.firstHalf, readPhase < shapes::pi);

    if (state.firstHalf && ! wasFirstHalf)
        drawRandomStep();

    return state.held;
}

void QuilvaneLFO::next (float& out) noexcept
{
    const auto wave = readWaveform (readPhaseAndWrap (state.phase, phaseOffset));

    state.phase += increment;
    state.lagged -= (state.lagged - static_cast<double> (wave)) * lagCoefficient;
    out = static_cast<float> (state.lagged);
}

} // namespace quilvane
