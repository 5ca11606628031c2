// SPDX-License-Identifier: GPL-3.0-or-later

#include "dsp/QuilvaneLFO.h"

#include <cmath>

#include "dsp/FilterState.h"

namespace quilvane
{

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
    phase = 0.0;
    updateIncrement();
}

void QuilvaneLFO::recover() noexcept
{
    if (! isUsableState (phase) || ! isUsableState (lagged))
        phase = lagged = 0.0;
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
        phase = (cycles - std::floor (cycles)) * shapes::twoPi;
    }
}

void QuilvaneLFO::updateIncrement()
{
    effectiveRate = synced ? clock.getNoteValue() * clock.getTempo() * minutesPerSecond : rate;
    increment = effectiveRate * rateConstants.samplePeriod * shapes::twoPi;
}

void QuilvaneLFO::drawRandomStep() noexcept
{
    const auto drawn = randomB;
    randomA ^= drawn;
    randomB = randomA + drawn;
    held = static_cast<float> (static_cast<int32_t> (drawn)) * randomScale;
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
    const auto wasFirstHalf = std::exchange (firstHalf, readPhase < shapes::pi);

    if (firstHalf && ! wasFirstHalf)
        drawRandomStep();

    return held;
}

void QuilvaneLFO::next (float& out) noexcept
{
    const auto wave = readWaveform (readPhaseAndWrap (phase, phaseOffset));

    phase += increment;
    lagged -= (lagged - static_cast<double> (wave)) * lagCoefficient;
    out = static_cast<float> (lagged);
}

} // namespace quilvane
