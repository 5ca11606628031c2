// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace reference
{
/** A half-band low-pass at its own high rate: two second-order all-pass branches, the second one delayed by a sample.

    Its gain is 2 at DC and 0 at the high rate's Nyquist frequency.
*/
struct HalfBand
{
    static constexpr double coefficientA = 0.645731810279208;
    static constexpr double coefficientB = 0.9585032857892308;

    /** The inputs and outputs of one branch at the two samples before; [0] is n - 1 and [1] is n - 2. */
    struct Branch
    {
        double x[2] = {};
        double y[2] = {};
    };

    /** Runs one sample at the high rate. */
    double step (double v);

    Branch a, b;
};

/** Runs a per-sample process at 8 or 16 times the base rate, through a cascade of two-times stages.

    Nothing clears its history. The result comes back multiplied by `factor`; the caller multiplies it by `gain`.
*/
struct Oversampler
{
    /** @param oversamplingFactor  8 or 16 */
    explicit Oversampler (int oversamplingFactor);

    /** Replaces one base-rate sample by its result. Calls `inner (double& sample)` exactly `factor` times. */
    template <typename Inner>
    void process (double& sample, Inner&& inner)
    {
        sample = processLevel (0, sample, inner);
    }

    int factor;
    int levels; // 3 or 4
    double gain;
    HalfBand up[4], down[4]; // from the lowest rate to the highest; factor 8 uses the first three

private:
    /** Interpolates one sample by two, runs what lies above this level on both, and keeps the second result. */
    template <typename Inner>
    double processLevel (int level, double v, Inner& inner)
    {
        double result = 0.0;

        for (int pass = 0; pass < 2; ++pass)
        {
            const double s = pass == 0 ? v : 0.0;
            const double t = up[level].step (s);
            double z = t;

            if (level == levels - 1)
                inner (z);
            else
                z = processLevel (level + 1, t, inner);

            result = down[level].step (z);
        }

        return result;
    }
};
} // namespace reference
