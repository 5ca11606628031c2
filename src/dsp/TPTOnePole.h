// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cmath>

namespace K7R
{

/** The tuning of a first-order filter section with one state, which its owner keeps: low-pass, high-pass or all-pass.

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

    void setPeriod (double seconds) noexcept
    {
        period = seconds;
        twoOverPeriod = 2.0 / period;
        halfPeriod = period * 0.5;
    }

    /** g for a cut-off in Hz. */
    double warp (double hz) const noexcept { return std::tan (hz * twoPi * halfPeriod) * twoOverPeriod * halfPeriod; }

    /** Takes a cut-off whose g is known. */
    void setTuning (double hz, double g) noexcept
    {
        cutoff = hz;
        warped = g;
        coefficient = warped / (warped + 1.0);
    }

    /** Recomputes g and G for the present cut-off and period. */
    void tune() noexcept { setTuning (cutoff, warp (cutoff)); }

    /** Takes a cut-off in Hz; nothing is recomputed if it is the present one. */
    void setCutoff (double hz) noexcept
    {
        if (cutoff != hz)
            setTuning (hz, warp (hz));
    }

    double lowPass (double x, double& state) const noexcept
    {
        const auto v = (x - state) * coefficient;
        const auto low = state + v;
        state = low + v;
        return low;
    }

    double highPass (double x, double& state) const noexcept { return x - lowPass (x, state); }

    double allPass (double x, double& state) const noexcept
    {
        const auto low = lowPass (x, state);
        return low - (x - low);
    }
};

} // namespace K7R
