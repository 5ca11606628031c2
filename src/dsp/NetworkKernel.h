// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "dsp/OversampleIIR.h"
#include "dsp/VectorMath.h"

// The network of QuilvaneOTA behind its oversampler, rearranged so that a processor with vectors is busy. It computes
// the same as QuilvaneOTA::process(), with other roundings: the two differ by some 1e-14 of full scale.
//
// Lanes. The two sides are the same network with other coefficients, and are two lanes of one vector (V). The chain
// of N all-passes is cut in two halves of M = N / 2, the lower and the upper half of a vector of twice the width (W).
//
// One section. With a = 2 G - 1 and b = 1 - a, QuilvaneOTA's step is y = a x + b s, s' = (1 + a) x - a s. In the
// scaled state t = b s, y = a x + t and t' = (1 - a^2) x - a t = x - a y: two fused multiply-adds. When a changes
// from one sample to the next, t is multiplied by the new b over the old one; with b = 2 / (1 + g) that is
// (1 + old g) / (1 + new g).
//
// The feedback's estimate. It is e = f (t_0 + a t_1 + ... + a^(N-1) t_(N-1)), f being the feedback. By the step
// before, t_k = w_k - a w_(k+1), where w_0 is the chain's input and w_N = y its output; so within one sample of the
// base rate, while a stands still, the sum collapses to e = f (w - a^N y), with the w and the y of the step before.
// Only the first step of each sample of the base rate takes the long sum.
//
// The chain's output without the chain. A group of M sections gives a^M x + P, with P = t_(M-1) + a t_(M-2) + ... +
// a^(M-1) t_0 of its states before the step. Let D be the pair of both groups' P. Then the second group's input is
// w_M = a^M w + D_lower and the output y = a^M w_M + D_upper, before any section has run: both groups run at once,
// and the next step needn't wait for them. D itself is worked out one step ahead, from the states before the last
// step and that step's input: D' = r . t + h x, with
//     r_(M-1-i) = i (1 - a^2) a^(i-1) - a^(i+1), h = M a^(M-1) (1 - a^2),
// the first of which is what t' = x - a y makes of P's weights, and the second the group's impulse response at 1.
//
// The loop. With u = l (c - e), l being the loop's gain and c the conditioned input, and y from above,
//     u = l c - l f (1 - a^2N) w + l f a^N (a^M D_lower + D_upper), the w and the D of the step before.
// The two high-passes of the loop are h = k (x - s), s' = s + 2 G (x - s) with k = 1 - G. With the second one's state
// divided by k, and s the sum of the two states, the loop's output is
//     w = (1 - A + A k^2) u - A k^2 s, A being the amount, and s' = (1 - 2 G) s - 2 G s_1 + 4 G u.
// The input's high-passes are treated in the same way.
//
// The mix is linear in the chain's output, the conditioned and the raw input.

namespace quilvane
{
namespace
{

/** How one side, or both, lie in vectors. */
template <int Sides>
struct Lanes;

template <>
struct Lanes<2>
{
    using V = Double2;
    using W = Double4;

    static QUILVANE_INLINE V fill (double x) { return V { x, x }; }
    static QUILVANE_INLINE W join (double lower, double upper) { return W { lower, lower, upper, upper }; }
    static QUILVANE_INLINE W join (V lower, V upper) { return __builtin_shufflevector (lower, upper, 0, 1, 2, 3); }
    static QUILVANE_INLINE V lower (W w) { return __builtin_shufflevector (w, w, 0, 1); }
    static QUILVANE_INLINE V upper (W w) { return __builtin_shufflevector (w, w, 2, 3); }
};

template <>
struct Lanes<1>
{
    using V = double;
    using W = Double2;

    static QUILVANE_INLINE V fill (double x) { return x; }
    static QUILVANE_INLINE W join (V lower, V upper) { return W { lower, upper }; }
    static QUILVANE_INLINE V lower (W w) { return w[0]; }
    static QUILVANE_INLINE V upper (W w) { return w[1]; }
};

template <int Sides, int Stages, int NumSections>
class NetworkKernel
{
public:
    static void run (Kernels::Network& network, const double* warped, double* samples, int numSamples)
    {
        NetworkKernel kernel (network);
        Tuning tuning; // NOLINT(cppcoreguidelines-pro-type-member-init): filled as far as it is read
        kernel.tune (tuning, warped, numSamples);

        for (int i = 0; i < numSamples; ++i)
            kernel.process (tuning, i, samples + i * Sides);

        kernel.storeStates (1.0 + load (warped + (numSamples - 1) * Sides));
    }

private:
    using L = Lanes<Sides>;
    using V = typename L::V;
    using W = typename L::W;

    static constexpr int M = NumSections / 2;
    static constexpr int factor = 1 << Stages;

    static QUILVANE_INLINE V load (const double* p) { return loadVector<V> (p); }

    /** Two values that were stored one by one: a single load would wait until both stores are done. */
    static QUILVANE_INLINE W loadPair (const double* p) { return L::join (load (p), load (p + Sides)); }
    static QUILVANE_INLINE W twice (V v) { return L::join (v, v); }

    QUILVANE_INLINE explicit NetworkKernel (Kernels::Network& n) :
        network (n),
        inputGain (L::fill (2.0 * n.inputHighPassGain)),
        inputScale (L::fill ((1.0 - n.inputHighPassGain) * (1.0 - n.inputHighPassGain))),
        lowGain (L::fill (n.inputLowPassGain)),
        lowGain2 (L::fill (2.0 * n.inputLowPassGain)),
        loopGain (L::fill (2.0 * n.loopHighPassGain)),
        loopGain2 (L::fill (4.0 * n.loopHighPassGain)),
        loopKept (L::fill (1.0 - 2.0 * n.loopHighPassGain)),
        smoothing (L::fill (n.smoothingCoefficient))
    {
        const auto inputK = 1.0 - n.inputHighPassGain, loopK = 1.0 - n.loopHighPassGain;
        const auto amount = n.loopHighPassAmount * loopK * loopK;
        loopAmount = L::fill (amount);
        loopThrough = L::fill (1.0 - n.loopHighPassAmount + amount);

        for (int k = 0; k < M; ++k)
            t[k] = L::join (load (n.allpass + k * Sides), load (n.allpass + (k + M) * Sides));

        high1 = load (n.input);
        high2 = load (n.input + Sides) / inputK;
        low = load (n.input + 2 * Sides);
        loop1 = load (n.loop);
        loopSum = loop1 + load (n.loop + Sides) / loopK;
    }

    QUILVANE_INLINE void storeStates (V lastOnePlusG)
    {
        const auto perState = twice (lastOnePlusG * 0.5); // 1 / b

        for (int k = 0; k < M; ++k)
        {
            const auto s = t[k] * perState;
            storeVector (network.allpass + k * Sides, L::lower (s));
            storeVector (network.allpass + (k + M) * Sides, L::upper (s));
        }

        storeVector (network.input, high1);
        storeVector (network.input + Sides, high2 * (1.0 - network.inputHighPassGain));
        storeVector (network.input + 2 * Sides, low);
        storeVector (network.loop, loop1);
        storeVector (network.loop + Sides, (loopSum - loop1) * (1.0 - network.loopHighPassGain));
    }

    //==============================================================================
    /** What stands still during one sample at the base rate, for each of them; sides in turn. */
    struct Tuning
    {
        static constexpr int size = Kernels::maximumSides * Kernels::maximumSamples;

        alignas (32) double a[size], aM[size], h[size], r[M][size];
        alignas (32) double rescale[size]; // of the all-passes' states
        alignas (32) double loop[size], minusLoopFeedback[size];
        alignas (32) double fromInput[size], fromLower[size], fromUpper[size];
        alignas (32) double wet[size], conditioned[size], raw[size];
    };

    /** All samples' tunings, four values at once, and the smoothed values' steps. */
    QUILVANE_INLINE void tune (Tuning& tuning, const double* warped, int numSamples)
    {
        alignas (32) double feedbackBefore[Tuning::size], feedback[Tuning::size], mix[Tuning::size],
            wetMix[Tuning::size], onePlusG[Tuning::size + Kernels::maximumSides];

        auto nowFeedback = load (network.feedback), nowMix = load (network.mix), nowWetMix = load (network.wetMix);

        // The states' scale as they are loaded is that of b = 1.
        storeVector (onePlusG, L::fill (2.0));

        for (int i = 0; i < numSamples; ++i)
        {
            const auto at = i * Sides;
            storeVector (feedbackBefore + at, nowFeedback);
            nowMix = nowMix - (nowMix - network.mixTarget) * smoothing;
            nowFeedback = nowFeedback - (nowFeedback - network.feedbackTarget) * smoothing;
            nowWetMix = nowWetMix - (nowWetMix - network.wetMixTarget) * smoothing;
            storeVector (feedback + at, nowFeedback);
            storeVector (mix + at, nowMix);
            storeVector (wetMix + at, nowWetMix);
            storeVector (onePlusG + at + Sides, load (warped + at) + 1.0);
        }

        storeVector (network.feedback, nowFeedback);
        storeVector (network.mix, nowMix);
        storeVector (network.wetMix, nowWetMix);

        for (int i = 0; i < numSamples * Sides; i += 4)
        {
            const auto read = [i] (const double* values) { return loadVector<Double4> (values + i); };
            const auto write = [i] (double* values, Double4 v) { storeVector (values + i, v); };
            const auto one = Double4 {} + 1.0;

            const auto g = read (warped);
            const auto invOnePlusG = one / (one + g);
            const auto gain = invOnePlusG * g;
            const auto a = gain + gain - one;
            const auto a2 = a * a, a3 = a2 * a, rest = one - a2;
            const auto aM = M == 1 ? a : M == 2 ? a2 : M == 3 ? a3 : a2 * a2;
            const auto ratio = M == 1 ? one : M == 2 ? a : M == 3 ? a2 : a3; // a^(M-1)
            const auto aN = aM * aM;

            write (tuning.a, a);
            write (tuning.aM, aM);
            write (tuning.h, ratio * rest * static_cast<double> (M));
            write (tuning.rescale, read (onePlusG) * invOnePlusG);

            if constexpr (M > 1)
                write (tuning.r[M - 2], rest - a2);

            if constexpr (M > 2)
                write (tuning.r[M - 3], 2.0 * rest * a - a3);

            if constexpr (M > 3)
                write (tuning.r[M - 4], 3.0 * rest * a2 - a2 * a2);

            const auto loop = one / (one - aN * read (feedbackBefore));
            const auto loopFeedback = loop * read (feedback);
            write (tuning.loop, loop);
            write (tuning.minusLoopFeedback, -loopFeedback);
            write (tuning.fromInput, -loopFeedback * (one - aN * aN));
            write (tuning.fromUpper, loopFeedback * aN);
            write (tuning.fromLower, loopFeedback * aN * aM);

            const auto nowWet = read (mix) * read (wetMix);
            write (tuning.wet, nowWet);
            write (tuning.conditioned, read (mix) - nowWet);
            write (tuning.raw, one - read (mix));
        }
    }

    //==============================================================================
    static QUILVANE_INLINE W halfBandStep (W coefficient, W x, W previousX, W y)
    {
        return coefficient * (x - y) + previousX;
    }

    /** The branches of an interpolator side by side, whose outputs are the even and the odd samples.
        @returns where the result lies: in buffers[(Stages - 1) % 2] */
    QUILVANE_INLINE const double* interpolate (const double* source, double (&buffers)[2][factor * Sides])
    {
        const auto coefficients =
            L::join (L::fill (OversampleIIR::HalfBand::coefficientA), L::fill (OversampleIIR::HalfBand::coefficientB));

        for (int stage = 0; stage < Stages; ++stage)
        {
            auto* const history = network.up + stage * 3 * Sides;
            auto* const result = buffers[stage % 2];
            auto previous = twice (load (history));
            auto y = loadPair (history + Sides);

            for (int i = 0; i < 1 << stage; ++i)
            {
                const auto x = twice (load (source + i * Sides));
                y = halfBandStep (coefficients, x, previous, y);
                storeVector (result + 2 * i * Sides, y);
                previous = x;
            }

            storeVector (history, L::lower (previous));
            storeVector (history + Sides, y);
            source = result;
        }

        return source;
    }

    /** The branches of a decimator side by side, of which each takes one sample of a pair. */
    QUILVANE_INLINE void decimate (const double* source, double (&buffers)[2][factor * Sides], double* sample)
    {
        const auto coefficients =
            L::join (L::fill (OversampleIIR::HalfBand::coefficientB), L::fill (OversampleIIR::HalfBand::coefficientA));

        for (int stage = Stages; stage-- > 0;)
        {
            auto* const history = network.down + stage * 4 * Sides;
            auto* const result = buffers[(stage + 1) % 2];
            auto previous = loadPair (history);
            auto y = loadPair (history + 2 * Sides);

            for (int i = 0; i < 1 << stage; ++i)
            {
                const auto x = loadPair (source + 2 * i * Sides);
                y = halfBandStep (coefficients, x, previous, y);
                storeVector (result + i * Sides, L::lower (y) + L::upper (y));
                previous = x;
            }

            storeVector (history, previous);
            storeVector (history + 2 * Sides, y);
            source = result;
        }

        storeVector (sample, load (source) * (1.0 / factor));
    }

    QUILVANE_INLINE V condition (V x)
    {
        const auto d1 = x - high1;
        high1 = inputGain * d1 + high1;
        const auto d2 = d1 - high2;
        high2 = inputGain * d2 + high2;
        const auto d3 = inputScale * d2 - low;
        const auto c = lowGain * d3 + low;
        low = lowGain2 * d3 + low;
        return c;
    }

    /** One sample at the base rate, in place. */
    QUILVANE_INLINE void process (const Tuning& tuning, int index, double* sample)
    {
        const auto at = static_cast<size_t> (index) * Sides;
        const auto aM = load (tuning.aM + at), loop = load (tuning.loop + at);
        const auto fromInput = load (tuning.fromInput + at);
        const auto fromLower = load (tuning.fromLower + at), fromUpper = load (tuning.fromUpper + at);
        const auto wet = load (tuning.wet + at), conditioned = load (tuning.conditioned + at);
        const auto raw = load (tuning.raw + at);
        const auto aW = twice (load (tuning.a + at)), hW = twice (load (tuning.h + at));
        const auto rescale = twice (load (tuning.rescale + at));

        W r[M];
        r[M - 1] = -aW;

        for (int k = 0; k < M - 1; ++k)
            r[k] = twice (load (tuning.r[k] + at));

        alignas (32) double buffers[2][factor * Sides];
        const auto* const xs = interpolate (sample, buffers);
        auto* const ys = buffers[Stages % 2]; // the other one

        for (auto& state : t)
            state = state * rescale;

        // The long sum, and the first D. The states that were last to be ready come last.
        auto estimate = t[0], d = t[0], power = aW;

        for (int k = 1; k < M; ++k)
        {
            estimate = power * t[k] + estimate;
            power = power * aW;
            d = d * aW + t[k];
        }

        const auto minusFeedback = load (tuning.minusLoopFeedback + at);
        auto v = minusFeedback * L::lower (estimate) + minusFeedback * aM * L::upper (estimate);

#pragma GCC unroll 8
        for (int i = 0; i < factor; ++i)
        {
            const auto x = load (xs + i * Sides);
            const auto c = condition (x);

            const auto u = loop * c + v;
            const auto w = loopThrough * u - loopAmount * loopSum;
            loopSum = loopGain2 * u + (loopKept * loopSum - loopGain * loop1);
            loop1 = loopGain * u + loopKept * loop1;

            const auto lower = L::lower (d), upper = L::upper (d);
            const auto wM = aM * w + lower;
            const auto y = aM * wM + upper;
            v = fromInput * w + (fromLower * lower + fromUpper * upper);

            auto in = L::join (w, wM);
            auto next = r[0] * t[0];

            for (int k = 1; k < M; ++k)
                next = r[k] * t[k] + next;

            d = hW * in + next;

            for (auto& state : t)
            {
                const auto out = aW * in + state;
                state = in - aW * out;
                in = out;
            }

            storeVector (ys + i * Sides, wet * y + (conditioned * c + raw * x));
        }

        decimate (ys, buffers, sample);
    }

    //==============================================================================
    Kernels::Network& network;
    const V inputGain, inputScale, lowGain, lowGain2;
    const V loopGain, loopGain2, loopKept, smoothing;
    V loopAmount, loopThrough;
    W t[M];
    V high1, high2, low;
    V loop1, loopSum;
};

/** The table for the processor that the including source is compiled for. */
inline const Kernels kernels {
    {
        { { NetworkKernel<1, 3, 2>::run, NetworkKernel<1, 3, 4>::run, NetworkKernel<1, 3, 6>::run,
            NetworkKernel<1, 3, 8>::run },
          { NetworkKernel<1, 4, 2>::run, NetworkKernel<1, 4, 4>::run, NetworkKernel<1, 4, 6>::run,
            NetworkKernel<1, 4, 8>::run } },
        { { NetworkKernel<2, 3, 2>::run, NetworkKernel<2, 3, 4>::run, NetworkKernel<2, 3, 6>::run,
            NetworkKernel<2, 3, 8>::run },
          { NetworkKernel<2, 4, 2>::run, NetworkKernel<2, 4, 4>::run, NetworkKernel<2, 4, 6>::run,
            NetworkKernel<2, 4, 8>::run } },
    },
    warp,
    sine,
    hyperTriangle,
    frequency,
};

} // namespace
} // namespace quilvane
