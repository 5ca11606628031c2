// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "dsp/OversampleIIR.h"
#include "dsp/phaser/kernels/NetworkLanes.h"

namespace quilvane
{
namespace
{

/** The cascades of half-band filters around the network, as OversampleIIR has them. */
template <int Sides, int Stages>
class HalfBandKernel
{
public:
    static constexpr int factor = 1 << Stages;

    /** One sample to the high rate: the branches of an interpolator side by side, whose outputs are the even and the odd
        samples.
        @param histories x, yA, yB of each interpolator */
    static QUILVANE_INLINE void interpolate (double* histories, const double* source, double* interpolated)
    {
        const auto coefficients = L::join (L::fill (K7R::OversampleIIR::HalfBand::coefficientA),
                                           L::fill (K7R::OversampleIIR::HalfBand::coefficientB));
        alignas (32) double between[2][factor / 2 * Sides];

        for (int stage = 0; stage < Stages; ++stage)
        {
            auto* const history = histories + stage * 3 * Sides;
            auto* const result = stage == Stages - 1 ? interpolated : between[stage % 2];
            auto previous = L::twice (L::load (history));
            auto y = L::loadPair (history + Sides);

            for (int i = 0; i < 1 << stage; ++i)
            {
                const auto x = L::twice (L::load (source + i * Sides));
                y = step (coefficients, x, previous, y);
                storeVector (result + 2 * i * Sides, y);
                previous = x;
            }

            L::store (history, L::lower (previous));
            storeVector (history + Sides, y);
            source = result;
        }
    }

    /** One sample from the high rate, at unit gain: the branches of a decimator side by side, of which each takes one
        sample of a pair.
        @param histories first, second, yB, yA of each decimator
        @param readPair gives the pairs of samples at the high rate */
    template <typename ReadPair>
    static QUILVANE_INLINE void decimate (double* histories, ReadPair&& readPair, double* sample)
    {
        const auto coefficients = L::join (L::fill (K7R::OversampleIIR::HalfBand::coefficientB),
                                           L::fill (K7R::OversampleIIR::HalfBand::coefficientA));
        alignas (32) double between[2][factor / 2 * Sides];

        for (int stage = Stages - 1; stage >= 0; --stage)
        {
            const auto* const source = between[(stage + 1) % 2];
            auto* const history = histories + stage * 4 * Sides;
            auto previous = L::loadPair (history);
            auto y = L::loadPair (history + 2 * Sides);

            for (int i = 0; i < 1 << stage; ++i)
            {
                const auto x = stage == Stages - 1 ? readPair (i) : L::loadPair (source + 2 * i * Sides);
                y = step (coefficients, x, previous, y);
                L::store (between[stage % 2] + i * Sides, L::lower (y) + L::upper (y));
                previous = x;
            }

            storeVector (history, previous);
            storeVector (history + 2 * Sides, y);
        }

        L::store (sample, L::load (between[0]) * (1.0 / factor));
    }

private:
    using L = Lanes<Sides>;
    using W = typename L::W;

    static QUILVANE_INLINE W step (W coefficient, W x, W previousX, W y)
    {
        return multiplyAdd (coefficient, x - y, previousX);
    }
};

} // namespace
} // namespace quilvane
