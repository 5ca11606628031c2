// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "dsp/Kernels.h"
#include "dsp/QuilvaneOTA.h"

namespace quilvane
{

/** Runs the networks of both sides, or of one, over some samples at once: the same as

        network.setFrequency (hz);
        network.smooth();
        sample = network.processBaseRate (sample);

    for each sample, to within the rounding of double (some 1e-13 of full scale, and 1e-12 at the highest rates). The networks keep their states
    between the calls, so that either form can go on from where the other stopped.
*/
class FastNetwork
{
public:
    static constexpr int maximumSamples = Kernels::maximumSamples;

    /** Both sides, which have got the same settings.
        @param hz the all-passes' frequencies, and
        @param samples the sound, in place: left and right in turn, with room for an even number of samples
        @param numSamples of each side, at most maximumSamples */
    template <typename Network>
    static void process (const Kernels& kernels, Network& left, Network& right, const float* hz, double* samples,
                         int numSamples) noexcept
    {
        Network* const sides[] { &left, &right };
        run (kernels, sides, hz, samples, numSamples);
    }

    /** One side; with room for a multiple of four samples. */
    template <typename Network>
    static void process (const Kernels& kernels, Network& side, const float* hz, double* samples,
                         int numSamples) noexcept
    {
        Network* const sides[] { &side };
        run (kernels, sides, hz, samples, numSamples);
    }

private:
    /** Hands each value of the state, of both sides, to function (values of the sides, place in the kernel's). */
    template <typename Network, size_t NumSides, typename Function>
    static void forEachState (Network* const (&)[NumSides], Kernels::Network&, Function&&) noexcept;

    template <typename Network, size_t NumSides>
    static void run (const Kernels&, Network* const (&)[NumSides], const float* hz, double* samples,
                     int numSamples) noexcept;
};

} // namespace quilvane
