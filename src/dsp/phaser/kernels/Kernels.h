// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstddef>
#include <cstring>

namespace quilvane
{

/** The inner loops of the phaser, as this processor runs them fastest. They are compiled once for every x86-64 (or
    whatever else the program is built for) and once more for AVX2 with fused multiply-add; the choice is made when
    they are first asked for.

    Arrays of two sides are interleaved: left, right, left, right; storePair() is the way to write them. Nothing here
    allocates, waits, or keeps anything.
*/
struct Kernels
{
    /** Samples at the base rate that one call takes at most. */
    static constexpr int maximumSamples = 64;

    static constexpr int maximumSides = 2;
    static constexpr int maximumOversamplingStages = 4;
    static constexpr int maximumSections = 8;

    /** Writes the values of both sides in one go: the kernels load pairs, and a load of what two stores have written waits
        for both to be done. */
    template <typename Value>
    static void storePair (Value* place, Value left, Value right) noexcept
    {
        const Value pair[] { left, right };
        std::memcpy (place, pair, sizeof (pair));
    }

    /** What a network runs on: its state, both sides interleaved, and what stands still. FastNetwork fills it in, calls
        begin(), and then run() for any number of blocks; end() makes its state readable. Of one side alone, each array
        has one value for a pair. */
    struct Network
    {
        // Fixed sections: G, and their integrators.
        double inputHighPassGain, inputLowPassGain, loopHighPassGain;
        double input[3 * maximumSides]; // high-passes, low-pass
        double loop[2 * maximumSides];
        double allpass[maximumSections * maximumSides];

        // Oversampling filters: x, yA, yB of each interpolator; first, second, yB, yA of each decimator.
        double up[3 * maximumOversamplingStages * maximumSides];
        double down[4 * maximumOversamplingStages * maximumSides];

        // Smoothed values, one step for each sample.
        double mix[maximumSides], feedback[maximumSides], wetMix[maximumSides];
        double mixTarget, feedbackTarget, wetMixTarget, smoothingCoefficient;

        double loopHighPassAmount;

        // The kernels' own, from begin() to end(): the last sample's tuning; what follows from the fixed sections.
        double lastA[maximumSides], lastOnePlusG[maximumSides];
        double inputGain[maximumSides], lowGain[maximumSides], lowGain2[maximumSides];
        double loopKept[maximumSides], minusLoopAmount[maximumSides];
        double inputScale, invInputScale, loopThrough;
    };

    /** What runs one side or both. */
    struct NetworkFunctions
    {
        /** Brings the states, as QuilvaneOTA has them, to the form that run() takes. */
        void (*begin) (Network&);

        /** @param warped the prewarped gain g of the all-passes for each sample; read by fours
            @param samples at the base rate, in place and at unit gain */
        void (*run) (Network&, const double* warped, double* samples, int numSamples);

        /** Brings the states back to the form of QuilvaneOTA. */
        void (*end) (Network&);
    };

    /** By number of sides - 1, stages of oversampling - 3, and half the number of sections - 1. */
    NetworkFunctions networks[2][2][4];

    /** g = tan (scale * hz) * gain, for arguments of the tangent from 0 to warpLimit.
        @param count a multiple of 4; at most 2 * maximumSamples, like in all that follow */
    void (*warp) (const float* hz, double scale, double gain, double* warped, size_t count);
    static constexpr double warpLimit = 0.115;

    /** sin (phase - 45 degrees), for phases from 0 to 2 pi, rounded to float as the library's sine is. */
    void (*sine) (const double* phases, float* waves, size_t count);

    /** The hyper triangle over phases from 0 to 2 pi, rounded at each step as with the library's power. */
    void (*hyperTriangle) (const double* phases, float* waves, size_t count);

    /** 13.75 * 2^exponent, at most highest, rounded to float as with the library's power. NaN stays NaN. */
    void (*frequency) (const float* exponents, float highest, float* hz, size_t count);

    /** The lags of two pairs of oscillators, in place.
        @param lagged the four states: of the first pair, and of the second
        @param first, second bipolar waves, which become the unipolar output */
    void (*lag) (double* lagged, double coefficient, float* first, float* second, size_t numSamples);

    /** Those for this processor. */
    static const Kernels& get() noexcept;

    /** Those for any processor that the program runs on. */
    static const Kernels& getBaseline() noexcept;
};

} // namespace quilvane
