// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>

#include "dsp/phaser/QuilvaneLFO.h"
#include "dsp/phaser/kernels/Kernels.h"

namespace quilvane
{

/** Runs the four oscillators of the phaser over some samples at once, to the very bit as QuilvaneLFO::next() does. */
class FastOscillators
{
public:
    static constexpr int maximumSamples = Kernels::maximumSamples;

    /** The values of both sides, left and right in turn. */
    template <typename Value>
    using Pairs = std::array<Value, size_t { 2 } * maximumSamples>;

    /** The oscillators of one number, left and right: of the same settings. */
    using Pair = std::array<QuilvaneLFO*, 2>;

    /** @param rightOffsets what is added to the phases of the right side, in radians, from 0 up; none is outside of what
            the first and the last one are
        @param first, second the outputs as unipolar values, 0 to 1 */
    static void process (const Kernels&, const Pair& firstPair, const Pair& secondPair, const double* rightOffsets,
                         Pairs<float>& first, Pairs<float>& second, int numSamples) noexcept;

private:
    static void readWaveforms (const Kernels&, const Pair&, const double* rightOffsets, Pairs<float>& waves,
                               size_t numSamples) noexcept;
};

} // namespace quilvane
