// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "dsp/phaser/kernels/NetworkLanes.h"

namespace quilvane
{
namespace
{

/** The tunings of some samples at the base rate: what stands still during each of them, the sides in turn. The names are
    those of the derivation in NetworkKernel.h. */
template <int NumSections>
struct NetworkTuning
{
    static constexpr int M = NumSections / 2;
    static constexpr int size = Kernels::maximumSides * Kernels::maximumSamples;

    alignas (32) double a[size], aM[size], rest[size]; // rest: 1 - a^2
    alignas (32) double h[M][size];                    // the input's share in P'
    alignas (32) double rescale[size], move[size];     // q, q (c - a)
    alignas (32) double estimateOthers[size], estimateLast[size];
    alignas (32) double loop[size], through[size], loopFirst[size];
    alignas (32) double fromInput[size], fromLower[size], fromUpper[size];
    alignas (32) double wet[size], conditioned[size], raw[size];
};

template <int Sides, int NumSections>
class NetworkTuner
{
public:
    using Tuning = NetworkTuning<NumSections>;

    /** Works out all samples' tunings, four values at once, and moves the smoothed values.
        @param warped the prewarped gain g for each sample; read by fours */
    static QUILVANE_INLINE void tune (Kernels::Network& network, Tuning& tuning, const double* warped, int numSamples)
    {
        Smoothed values; // NOLINT(cppcoreguidelines-pro-type-member-init): filled as far as it is read
        const auto standStill = smooth (network, values, numSamples);

        const auto one = Double4 {} + 1.0, two = one + one;
        const auto spread = [] (V v) { return __builtin_shufflevector (v, v, 0, Sides - 1, 0, Sides - 1); };
        auto lastA = spread (L::load (network.lastA)), lastOnePlusG = spread (L::load (network.lastOnePlusG));

        for (int i = 0; i < numSamples * Sides; i += 4)
        {
            const auto readSmoothed = [at = standStill ? 0 : i] (const double* source)
            { return loadPairs (source + at); };
            const auto write = [i] (double* destination, Double4 v) { storeVector (destination + i, v); };

            const auto g = loadVector<Double4> (warped + i);
            const auto onePlusG = one + g, invOnePlusG = one / onePlusG;
            const auto a = multiplyAdd (invOnePlusG * g, two, -one);
            const auto before = shift (lastA, a), rescale = shift (lastOnePlusG, onePlusG) * invOnePlusG;
            lastA = a;
            lastOnePlusG = onePlusG;

            const auto a2 = a * a, a3 = a2 * a, rest = one - a2;
            const auto aM = M == 1 ? a : M == 2 ? a2 : M == 3 ? a3 : a2 * a2;
            const auto ratio = M == 1 ? one : M == 2 ? a : M == 3 ? a2 : a3; // a^(M-1)
            const auto aN = aM * aM;

            write (tuning.a, a);
            write (tuning.aM, aM);
            write (tuning.rest, rest);
            write (tuning.h[0], rest);

            if constexpr (M > 1)
                write (tuning.h[1], 2.0 * rest * a);

            if constexpr (M > 2)
                write (tuning.h[2], 3.0 * rest * a2);

            if constexpr (M > 3)
                write (tuning.h[3], 4.0 * rest * a3);

            write (tuning.rescale, rescale);
            write (tuning.move, rescale * (a - before));

            // What is in the loop before its gain is divided by the input's scale.
            const auto feedback = readSmoothed (values.feedback) * network.invInputScale;
            const auto estimate = -feedback * rescale;
            write (tuning.estimateOthers, estimate * (one - a * before));
            write (tuning.estimateLast, estimate * ratio);
            write (tuning.fromInput, feedback * (aN * aN - one));
            write (tuning.fromUpper, feedback * aN);
            write (tuning.fromLower, feedback * aN * aM);

            const auto loop = network.inputScale / (one - aN * readSmoothed (values.feedbackBefore));
            write (tuning.loop, loop);
            write (tuning.through, loop * network.loopThrough);
            write (tuning.loopFirst, loop * network.loopHighPassGain);

            const auto mix = readSmoothed (values.mix), wet = mix * readSmoothed (values.wetMix);
            write (tuning.wet, wet);
            write (tuning.conditioned, (mix - wet) * network.inputScale);
            write (tuning.raw, one - mix);
        }
    }

private:
    using L = Lanes<Sides>;
    using V = typename L::V;

    static constexpr int M = Tuning::M;

    struct Smoothed
    {
        alignas (32) double feedbackBefore[Tuning::size], feedback[Tuning::size];
        alignas (32) double mix[Tuning::size], wetMix[Tuning::size];
    };

    static QUILVANE_INLINE bool isSame (V a, V b)
    {
        const auto differs = a != b;
        return (differs[0] | differs[1]) == 0;
    }

    /** The smoothed values' steps.
        @returns whether all of them stand still: then only the first four of each are written */
    static QUILVANE_INLINE bool smooth (Kernels::Network& network, Smoothed& values, int numSamples)
    {
        const auto smoothing = L::fill (network.smoothingCoefficient);
        const auto step = [smoothing] (V value, double target) { return value - (value - target) * smoothing; };
        auto feedback = L::load (network.feedback), mix = L::load (network.mix), wetMix = L::load (network.wetMix);

        const auto write = [] (double* destination, V v)
        {
            for (int i = 0; i < 4; i += Sides)
                L::store (destination + i, v);
        };

        if (isSame (feedback, step (feedback, network.feedbackTarget)) && isSame (mix, step (mix, network.mixTarget))
            && isSame (wetMix, step (wetMix, network.wetMixTarget)))
        {
            write (values.feedbackBefore, feedback);
            write (values.feedback, feedback);
            write (values.mix, mix);
            write (values.wetMix, wetMix);
            return true;
        }

        for (int i = 0; i < numSamples; ++i)
        {
            const auto at = i * Sides;
            L::store (values.feedbackBefore + at, feedback);
            feedback = step (feedback, network.feedbackTarget);
            mix = step (mix, network.mixTarget);
            wetMix = step (wetMix, network.wetMixTarget);
            L::store (values.feedback + at, feedback);
            L::store (values.mix + at, mix);
            L::store (values.wetMix + at, wetMix);
        }

        // What is read by fours, but belongs to no sample.
        for (int i = numSamples * Sides; i % 4 != 0; i += Sides)
            for (auto* unused : { values.feedbackBefore, values.feedback, values.mix, values.wetMix })
                L::store (unused + i, V {});

        L::store (network.feedback, feedback);
        L::store (network.mix, mix);
        L::store (network.wetMix, wetMix);
        return false;
    }

    /** The values of the samples before. */
    static QUILVANE_INLINE Double4 shift (Double4 before, Double4 now)
    {
        if constexpr (Sides == 2)
            return __builtin_shufflevector (before, now, 2, 3, 4, 5);
        else
            return __builtin_shufflevector (before, now, 3, 4, 5, 6);
    }
};

} // namespace
} // namespace quilvane
