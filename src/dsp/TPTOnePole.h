// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cmath>

#include "dsp/SampleRateConstants.h"

namespace quilvane
{

/** A first-order filter section with one state: low-pass, high-pass or all-pass.

    It is the trapezoidal integrator in a feedback loop that is solved without a delay, as in the
    virtual-analogue literature ("topology-preserving transform"): with the prewarped gain g,
    G = g / (1 + g), v = (x - s) G, low = s + v, s' = low + v.
*/
struct TPTOnePole
{
    /** 2 pi, rounded to float. The tuning of every section is defined with this value. */
    static constexpr double twoPi = 6.2831854820251465;

    double cutoff = 0.0; // Hz
    double period = 0.0; // s, at the oversampled rate
    double twoOverPeriod = 0.0;
    double halfPeriod = 0.0;
    double coefficient = 0.0; // G
    double warped = 0.0;      // g
    double state = 0.0;

    void setPeriod (double seconds) noexcept
    {
        period = seconds;
        twoOverPeriod = 2.0 / period;
        halfPeriod = period * 0.5;
    }

    /** Recomputes g and G for the present cut-off and period. */
    void tune() noexcept
    {
        warped = std::tan (cutoff * twoPi * halfPeriod) * twoOverPeriod * halfPeriod;
        coefficient = warped / (warped + 1.0);
    }

    /** Takes a cut-off in Hz; nothing is recomputed if it is the present one. */
    void setCutoff (double hz) noexcept
    {
        if (cutoff == hz)
            return;

        cutoff = hz;
        tune();
    }

    double lowPass (double x) noexcept
    {
        const auto v = (x - state) * coefficient;
        const auto low = state + v;
        state = low + v;
        return low;
    }

    double highPass (double x) noexcept { return x - lowPass (x); }

    double allPass (double x) noexcept
    {
        const auto low = lowPass (x);
        return low - (x - low);
    }
};

} // namespace quilvane
