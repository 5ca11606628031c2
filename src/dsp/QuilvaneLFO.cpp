// SPDX-License-Identifier: GPL-3.0-or-later

#include "dsp/QuilvaneLFO.h"

#include <cmath>

#include "dsp/FilterState.h"

namespace quilvane
{

namespace
{

constexpr double pi = 3.141592653589793;
constexpr double twoPi = 6.283185307179586;
constexpr double oneOverPi = 0.3183098861837907;
constexpr double twoOverPi = 0.6366197723675814;
constexpr double threeHalvesPi = 4.71238898038469;
constexpr double quarterPi = 0.7853981633974483;

constexpr double minutesPerSecond = 0.016666666666666666;
constexpr double lagAtBaseRate = 0.01; // per sample
constexpr float hyperExponent = 1.5f;
constexpr float randomScale = 4.656613e-10f; // from 32 bits with sign to -1..1

/** -1 at phase 0, 1 at pi. */
float triangleAt (double phase)
{
    return phase < pi ? static_cast<float> (phase * twoOverPi - 1.0)
                      : static_cast<float> ((threeHalvesPi - phase) * twoOverPi);
}

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
        phase = (cycles - std::floor (cycles)) * twoPi;
    }
}

void QuilvaneLFO::updateIncrement()
{
    effectiveRate = synced ? clock.getNoteValue() * clock.getTempo() * minutesPerSecond : rate;
    increment = effectiveRate * rateConstants.samplePeriod * twoPi;
}

void QuilvaneLFO::drawRandomStep() noexcept
{
    const auto drawn = randomB;
    randomA ^= drawn;
    randomB = randomA + drawn;
    held = static_cast<float> (static_cast<int32_t> (drawn)) * randomScale;
}

//==============================================================================
double QuilvaneLFO::readPhaseAndWrap() noexcept
{
    auto readPhase = phase + phaseOffset;

    if (readPhase > twoPi)
    {
        phase -= twoPi;
        readPhase -= twoPi;
    }

    return readPhase >= 0.0 ? readPhase : readPhase + twoPi;
}

float QuilvaneLFO::readWaveform (double readPhase) noexcept
{
    switch (waveform)
    {
        case Waveform::triangle: return triangleAt (readPhase);
        case Waveform::sine: return static_cast<float> (std::sin (readPhase - quarterPi));
        case Waveform::square: return readPhase < pi ? 1.0f : -1.0f;
        case Waveform::rampDown: return static_cast<float> ((twoPi - readPhase) * oneOverPi - 1.0);
        case Waveform::rampUp: return static_cast<float> (readPhase * oneOverPi - 1.0);
        case Waveform::sampleAndHold:
        {
            const auto wasFirstHalf = std::exchange (firstHalf, readPhase < pi);

            if (firstHalf && ! wasFirstHalf)
                drawRandomStep();

            return held;
        }
        case Waveform::hyperTriangle:
        {
            const auto u = 0.5f - triangleAt (readPhase) * 0.5f;
            return 1.0f - 2.0f * std::pow (u, hyperExponent);
        }
    }

    return 0.0f;
}

void QuilvaneLFO::next (float& out) noexcept
{
    const auto wave = readWaveform (readPhaseAndWrap());

    phase += increment;
    lagged -= (lagged - static_cast<double> (wave)) * lagCoefficient;
    out = static_cast<float> (lagged);
}

} // namespace quilvane
