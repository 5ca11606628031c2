// SPDX-License-Identifier: GPL-3.0-or-later

#include "dsp/phaser/FastOscillators.h"

#include <algorithm>

namespace quilvane
{

using namespace K7R;

namespace
{

// Radians per sample, up to which a phase within a turn stays in the range of the kernels.
constexpr double fastestIncrement = 1.0;

// What rounding can add to an angle, and more.
constexpr double spareAngle = 1.0e-6;

} // namespace

void FastOscillators::readWaveforms (const Kernels& kernels, const Pair& pair, const double* rightOffsets,
                                     Pairs<float>& waves, size_t numSamples) noexcept
{
    alignas (32) Pairs<double> phases;
    const auto count = 2 * numSamples, paddedCount = (count + 3) / 4 * 4;

    auto leftPhase = pair[0]->state.phase, rightPhase = pair[1]->state.phase;
    const auto leftIncrement = pair[0]->increment, rightIncrement = pair[1]->increment;

    const auto isSlow = leftIncrement >= 0.0 && leftIncrement <= fastestIncrement && leftPhase <= shapes::twoPi
                        && rightPhase <= shapes::twoPi;

    // Mostly no turn ends in these samples, and what is read is a sum.
    const auto [lowestOffset, highestOffset] = std::minmax (rightOffsets[0], rightOffsets[numSamples - 1]);
    const auto room = shapes::twoPi - spareAngle - static_cast<double> (numSamples) * leftIncrement;
    const auto staysInTurn = leftIncrement >= 0.0 && rightIncrement == leftIncrement && leftPhase >= 0.0
                             && rightPhase >= 0.0 && lowestOffset >= 0.0 && leftPhase < room
                             && rightPhase + highestOffset < room;

    if (staysInTurn)
    {
        for (size_t i = 0; i < numSamples; ++i)
        {
            Kernels::storePair (&phases[2 * i], leftPhase, rightPhase + rightOffsets[i]);
            leftPhase += leftIncrement;
            rightPhase += rightIncrement;
        }
    }

    for (size_t i = staysInTurn ? numSamples : 0; i < numSamples; ++i)
    {
        const auto left = QuilvaneLFO::readPhaseAndWrap (leftPhase, 0.0);
        Kernels::storePair (&phases[2 * i], left, QuilvaneLFO::readPhaseAndWrap (rightPhase, rightOffsets[i]));
        leftPhase += leftIncrement;
        rightPhase += rightIncrement;
    }

    pair[0]->state.phase = leftPhase;
    pair[1]->state.phase = rightPhase;

    if (count < paddedCount)
        Kernels::storePair (&phases[count], 0.0, 0.0);

    const auto read = [&] (auto&& shape)
    { std::transform (phases.begin(), phases.begin() + count, waves.begin(), shape); };

    switch (pair[0]->waveform)
    {
        case QuilvaneLFO::Waveform::triangle: return read (shapes::triangle);
        case QuilvaneLFO::Waveform::square: return read (shapes::square);
        case QuilvaneLFO::Waveform::rampDown: return read (shapes::rampDown);
        case QuilvaneLFO::Waveform::rampUp: return read (shapes::rampUp);

        case QuilvaneLFO::Waveform::sine:
            if (isSlow)
                return kernels.sine (phases.data(), waves.data(), paddedCount);

            break;

        case QuilvaneLFO::Waveform::hyperTriangle:
            if (isSlow)
                return kernels.hyperTriangle (phases.data(), waves.data(), paddedCount);

            break;

        case QuilvaneLFO::Waveform::sampleAndHold: break;
    }

    for (size_t i = 0; i < count; ++i)
        waves[i] = pair[i % 2]->readWaveform (phases[i]);
}

void FastOscillators::process (const Kernels& kernels, const Pair& firstPair, const Pair& secondPair,
                               const double* rightOffsets, Pairs<float>& first, Pairs<float>& second,
                               int numSamples) noexcept
{
    const auto size = static_cast<size_t> (numSamples);
    readWaveforms (kernels, firstPair, rightOffsets, first, size);
    readWaveforms (kernels, secondPair, rightOffsets, second, size);

    // The lags of all four take turns, because a step of each waits for its last one.
    const std::array<QuilvaneLFO*, 4> lfos { firstPair[0], firstPair[1], secondPair[0], secondPair[1] };
    std::array<double, 4> lagged {};
    const auto coefficient = lfos[0]->lagCoefficient;

    for (size_t k = 0; k < lfos.size(); ++k)
        lagged[k] = lfos[k]->state.lagged;

    kernels.lag (lagged.data(), coefficient, first.data(), second.data(), size);

    for (size_t k = 0; k < lfos.size(); ++k)
        lfos[k]->state.lagged = lagged[k];
}

} // namespace quilvane
