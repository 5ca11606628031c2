// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>

#include "dsp/FilterState.h"

namespace K7R::OversampleIIR
{

/** The half-band filter of all stages, as a pair of first-order all-passes at the lower of its two rates.

    At the higher rate it is H(z) = A(z^2) + z^-1 B(z^2), each branch with the coefficient c being
    (c + z^-2) / (1 + c z^-2): the polyphase form of a half-band IIR filter. The gain is 2 at DC, and the high rate's
    Nyquist frequency is a zero. Both coefficients are part of the sound.

    An interpolator's input is zero at every second sample, and of a decimator's output every second sample is thrown
    away. So each branch sees, or matters for, one of the two phases only, and runs at the lower rate.
*/
struct HalfBand
{
    static constexpr double coefficientA = 0.645731810279208;
    static constexpr double coefficientB = 0.9585032857892308;

    /** One step of a branch: y[n] = c (x[n] - y[n-1]) + x[n-1]. */
    template <typename Sample>
    static void step (Sample coefficient, Sample x, Sample previousX, Sample& y) noexcept
    {
        y = coefficient * (x - y) + previousX;
    }
};

/** Doubles the rate: zeros between the samples, and the half-band filter over them. */
template <typename Sample>
struct Interpolator
{
    Sample x {}, yA {}, yB {}; // the last input, and what each branch made of it

    /** The two samples that one becomes. */
    std::array<Sample, 2> step (Sample input) noexcept
    {
        HalfBand::step (Sample (HalfBand::coefficientA), input, x, yA);
        HalfBand::step (Sample (HalfBand::coefficientB), input, x, yB);
        x = input;
        return { yA, yB };
    }

    bool isUsable() const noexcept { return isUsableState (x) && isUsableState (yA) && isUsableState (yB); }
};

/** Halves the rate: the half-band filter, of whose output the second sample of each pair is kept. */
template <typename Sample>
struct Decimator
{
    Sample first {}, second {}, yB {}, yA {}; // the last pair, and what each branch made of its sample

    Sample step (Sample newFirst, Sample newSecond) noexcept
    {
        HalfBand::step (Sample (HalfBand::coefficientB), newFirst, first, yB);
        HalfBand::step (Sample (HalfBand::coefficientA), newSecond, second, yA);
        first = newFirst;
        second = newSecond;
        return yA + yB;
    }

    bool isUsable() const noexcept
    {
        return isUsableState (first) && isUsableState (second) && isUsableState (yA) && isUsableState (yB);
    }
};

/** Runs a per-sample process at 2^Stages times the rate, by a cascade of interpolators and decimators.

    The result comes back multiplied by `factor`, the cascade's gain; the caller multiplies by `gain`.

    The filters are light and not linear in phase, and their delay is not reported. The history
    lasts as long as the object.
*/
template <typename Sample, int Stages>
class Base
{
public:
    static constexpr int factor = 1 << Stages;
    static constexpr Sample gain = Sample (1) / Sample (factor);

    /** The history of all filters, from the lowest rate to the highest; down[i] runs at the rate of up[i]. */
    struct Filters
    {
        std::array<Interpolator<Sample>, static_cast<size_t> (Stages)> up;
        std::array<Decimator<Sample>, static_cast<size_t> (Stages)> down;
    };

    virtual ~Base() = default;

    /** Replaces one sample at the base rate by the result, times `factor`. */
    void process (Sample& sample) noexcept { sample = processLevel<0> (sample); }

    /** Clears filters with an unusable history; leaves the others alone. */
    void recoverFilters() noexcept
    {
        for (auto& filter : filters.up)
            if (! filter.isUsable())
                filter = {};

        for (auto& filter : filters.down)
            if (! filter.isUsable())
                filter = {};
    }

    Filters filters;

protected:
    /** The process at the high rate, called `factor` times for each sample. */
    virtual void processOversampled (Sample& sample) noexcept = 0;

private:
    template <size_t Level>
    Sample processLevel (Sample input) noexcept
    {
        auto pair = filters.up[Level].step (input);

        for (auto& sample : pair)
        {
            if constexpr (Level + 1 == static_cast<size_t> (Stages))
                processOversampled (sample);
            else
                sample = processLevel<Level + 1> (sample);
        }

        return filters.down[Level].step (pair[0], pair[1]);
    }
};

template <typename Sample>
using x8Mono = Base<Sample, 3>;

template <typename Sample>
using x16Mono = Base<Sample, 4>;

} // namespace K7R::OversampleIIR
