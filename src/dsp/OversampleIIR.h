// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>

#include "dsp/FilterState.h"

namespace quilvane::OversampleIIR
{

/** The history of one half-band filter: two second-order all-passes in z^2, side by side.

    At its own rate the filter is H(z) = A(z^2) + z^-1 B(z^2), where each branch with coefficient c
    is (c + z^-2) / (1 + c z^-2): the polyphase form of a half-band IIR filter. The gain is 2 at DC,
    and the high rate's Nyquist frequency is a zero. Both coefficients are part of the sound.
*/
template <typename Sample>
class HalfBandState
{
public:
    /** One step at the high rate. */
    Sample step (Sample input) noexcept
    {
        const auto delayedB = branchB.y1;
        branchB.step (input, Sample (0.9585032857892308));
        return branchA.step (input, Sample (0.645731810279208)) + delayedB;
    }

    /** Forgets the history if something unusable got into it. */
    void recover() noexcept
    {
        if (! branchA.isUsable() || ! branchB.isUsable())
            *this = {};
    }

private:
    struct Branch
    {
        Sample x1 {}, x2 {}, y1 {}, y2 {};

        Sample step (Sample x, Sample coefficient) noexcept
        {
            const auto y = coefficient * (x - y2) + x2;
            x2 = x1;
            x1 = x;
            y2 = y1;
            y1 = y;
            return y;
        }

        bool isUsable() const noexcept
        {
            return isUsableState (x1) && isUsableState (x2) && isUsableState (y1) && isUsableState (y2);
        }
    };

    Branch branchA, branchB;
};

/** Runs a per-sample process at 2^Stages times the rate.

    A cascade of two-times interpolators and decimators, all with the same half-band filter:
    interpolation by zero stuffing, decimation keeps the second sample of each pair. The result
    comes back multiplied by `factor`, the cascade's gain; the caller multiplies by `gain`.

    The filters are light and not linear in phase, and their delay is not reported. The history
    lasts as long as the object.
*/
template <typename Sample, int Stages>
class Base
{
public:
    static constexpr int factor = 1 << Stages;
    static constexpr Sample gain = Sample (1) / Sample (factor);

    virtual ~Base() = default;

    /** Replaces one sample at the base rate by the result, times `factor`. */
    void process (Sample& sample) noexcept { sample = processLevel<0> (sample); }

    /** Clears filters with an unusable history; leaves the others alone. */
    void recoverFilters() noexcept
    {
        for (auto* filters : { &up, &down })
            for (auto& filter : *filters)
                filter.recover();
    }

protected:
    /** The process at the high rate, called `factor` times for each sample. */
    virtual void processOversampled (Sample& sample) noexcept = 0;

private:
    template <size_t Level>
    Sample processLevel (Sample input) noexcept
    {
        processPass<Level> (input);
        return processPass<Level> (Sample (0));
    }

    template <size_t Level>
    Sample processPass (Sample input) noexcept
    {
        auto sample = up[Level].step (input);

        if constexpr (Level + 1 == static_cast<size_t> (Stages))
            processOversampled (sample);
        else
            sample = processLevel<Level + 1> (sample);

        return down[Level].step (sample);
    }

    // From the lowest rate to the highest; down[i] runs at the rate of up[i].
    std::array<HalfBandState<Sample>, static_cast<size_t> (Stages)> up, down;
};

template <typename Sample>
using x8Mono = Base<Sample, 3>;

template <typename Sample>
using x16Mono = Base<Sample, 4>;

} // namespace quilvane::OversampleIIR
