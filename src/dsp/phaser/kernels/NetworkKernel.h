// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "dsp/phaser/kernels/HalfBandKernel.h"
#include "dsp/phaser/kernels/NetworkTuning.h"

// The network of QuilvaneOTA behind its oversampler, rearranged so that a processor with vectors is busy. It computes
// the same as QuilvaneOTA::process(), with other roundings: the two differ by some 1e-13 of full scale, up to 16 times
// 192 kHz.
//
// Lanes. The two sides are the same network with other coefficients, and are two lanes of one vector (V). The chain
// of N all-passes is cut in two halves of M = N / 2, the lower and the upper half of a vector of twice the width (W).
//
// One section. With a = 2 G - 1 and b = 1 - a, QuilvaneOTA's step is y = a x + b s, s' = (1 + a) x - a s. In the
// scaled state t = b s, y = a x + t and t' = (1 - a^2) x - a t = x - a y.
//
// A group of sections k = 0 ... M - 1. What it would put out without input at this step is P_k = t_k + a P_(k-1), after
// each section, so that with the input x its outputs are a^(k+1) x + P_k, and the group's own is a^M x + D, D being the
// last P. These P are kept in place of the states. They move by
//     P_k' = S_(k-1) - a S_k + (k + 1) a^k (1 - a^2) x, S_k = P_k + a S_(k-1), S_(-1) = 0,
// which waits for x in its last operation only. (From t_k' = a^k (1 - a^2) x + P_(k-1) - a P_k, put into the sum that
// P_k is.) The last one's first two terms are (1 - a^2) S_(M-2) - a P_(M-1).
//
// When a becomes c from one sample to the next, t is multiplied by the new b over the old one; with b = 2 / (1 + g) that
// is q = (1 + old g) / (1 + new g). Then P_k becomes q (P_k + (c - a) U_(k-1)), U_k = P_k + c U_(k-1), U_(-1) = 0.
//
// The two groups. With the chain's input w, the second one's input is w_M = a^M w + D_lower and the chain's output
// y = a^M w_M + D_upper, before any section has run: both groups run at once, and the next step needn't wait for them.
//
// The feedback's estimate. It is e = f (t_0 + a t_1 + ... + a^(N-1) t_(N-1)), f being the feedback. By the step before,
// t_k = w_k - a w_(k+1), where w_0 is the chain's input w and w_N its output y; so within one sample of the base rate,
// while a stands still, the sum collapses to e = f (w - a^N y), with the w and the y of the step before. With y from
// above that is
//     e = f (1 - a^2N) w - f a^N (a^M D_lower + D_upper).
// Only the first step of each sample of the base rate takes the long sum. Of one group, in the P before the change from
// a to c, that is q (c^(M-1) P_(M-1) + (1 - a c) (P_0 + c P_1 + ... + c^(M-2) P_(M-2))).
//
// The loop. Its input is u = l (i - e), l being the loop's gain and i the conditioned input; i - e takes the D and the w
// of the step before, the latter in the last operation. The two high-passes are h = k (x - s), s' = s + 2 G (x - s) with
// k = 1 - G. With the second one's state divided by k, s the sum of the two states and s_1 the first, the loop's output
// is
//     w = (1 - A + A k^2) u - A k^2 s, A being the amount, s' = (1 - 2 G) s - 2 G s_1 + 4 G u.
// The states are kept as s / 4 G and s_1 / 2. The input's filters are treated in the same way: their gain k^2 is taken
// out and put into what follows.
//
// Ahead. Neighbouring steps overlap as far as the processor looks ahead, which is less than a sample of the base rate.
// So the next sample is interpolated and conditioned between the steps of the present one.
//
// Between blocks the states stay as they are here: begin() brings them from QuilvaneOTA's form, end() back to it.
//
// The mix is linear in the chain's output, the conditioned and the raw input.

namespace quilvane
{
namespace
{

template <int Sides, int Stages, int NumSections>
class NetworkKernel
{
public:
    static void begin (Kernels::Network& network)
    {
        const Gains gains (network);

        for (int side = 0; side < Sides; ++side)
        {
            auto* const input = network.input + side;
            input[Sides] /= gains.inputK;
            input[2 * Sides] /= gains.inputScale;

            // A network that was never tuned has no scale, and nothing in its states.
            auto* const loop = network.loop + side;
            const auto sum = loop[0] + loop[Sides] / gains.loopK;
            loop[Sides] = gains.loopScale > 0.0 ? sum / gains.loopScale : 0.0;
            loop[0] *= 0.5;

            // With these the sections' states are what they are.
            network.lastA[side] = 0.0;
            network.lastOnePlusG[side] = 2.0;

            network.inputGain[side] = 2.0 * network.inputHighPassGain;
            network.lowGain[side] = network.inputLowPassGain;
            network.lowGain2[side] = 2.0 * network.inputLowPassGain;
            network.loopKept[side] = 1.0 - 2.0 * network.loopHighPassGain;
            network.minusLoopAmount[side] = -network.loopHighPassAmount * gains.loopK * gains.loopK * gains.loopScale;
        }

        network.inputScale = gains.inputScale;
        network.invInputScale = 1.0 / gains.inputScale;
        network.loopThrough = 1.0 - network.loopHighPassAmount + network.loopHighPassAmount * gains.loopK * gains.loopK;
    }

    static void end (Kernels::Network& network)
    {
        const Gains gains (network);

        for (int side = 0; side < Sides; ++side)
        {
            auto* const input = network.input + side;
            input[Sides] *= gains.inputK;
            input[2 * Sides] *= gains.inputScale;

            auto* const loop = network.loop + side;
            loop[0] *= 2.0;
            loop[Sides] = (loop[Sides] * gains.loopScale - loop[0]) * gains.loopK;

            const auto a = network.lastA[side], perState = network.lastOnePlusG[side] * 0.5; // 1 / b
            auto* const allpass = network.allpass + side;

            for (int k = NumSections; --k >= 0;)
            {
                const auto before = k % M == 0 ? 0.0 : allpass[(k - 1) * Sides];
                allpass[k * Sides] = (allpass[k * Sides] - a * before) * perState;
            }
        }
    }

    static void run (Kernels::Network& network, const double* warped, double* samples, int numSamples)
    {
        NetworkKernel kernel (network);
        Tuning tuning; // NOLINT(cppcoreguidelines-pro-type-member-init): filled as far as it is read
        Input inputs[2];
        const auto last = numSamples - 1;

        Tuner::tune (network, tuning, warped, numSamples);
        HalfBands::interpolate (network.up, samples, inputs[0].x);

        for (int i = 0; i < factor; ++i)
            kernel.condition (inputs[0], i);

        for (int i = 0; i < last; ++i)
            kernel.template process<true> (tuning, i, inputs[i % 2], inputs[(i + 1) % 2], samples + i * Sides);

        kernel.template process<false> (tuning, last, inputs[last % 2], inputs[0], samples + last * Sides);
        kernel.storeStates();
        L::store (network.lastA, L::load (tuning.a + last * Sides));
        L::store (network.lastOnePlusG, 1.0 + L::load (warped + last * Sides));
    }

private:
    using L = Lanes<Sides>;
    using V = typename L::V;
    using W = typename L::W;
    using Tuner = NetworkTuner<Sides, NumSections>;
    using Tuning = typename Tuner::Tuning;
    using HalfBands = HalfBandKernel<Sides, Stages>;

    static constexpr int M = Tuning::M;
    static constexpr int factor = HalfBands::factor;

    /** What the states are divided by. */
    struct Gains
    {
        QUILVANE_INLINE explicit Gains (const Kernels::Network& network) :
            inputK (1.0 - network.inputHighPassGain),
            inputScale (inputK * inputK),
            loopK (1.0 - network.loopHighPassGain),
            loopScale (4.0 * network.loopHighPassGain)
        {
        }

        const double inputK, inputScale, loopK, loopScale;
    };

    QUILVANE_INLINE explicit NetworkKernel (Kernels::Network& n) :
        network (n),
        inputGain (L::load (n.inputGain)),
        lowGain (L::load (n.lowGain)),
        lowGain2 (L::load (n.lowGain2)),
        loopKept (L::load (n.loopKept)),
        minusLoopAmount (L::load (n.minusLoopAmount))
    {
        for (int k = 0; k < M; ++k)
            p[k] = L::join (L::load (n.allpass + k * Sides), L::load (n.allpass + (k + M) * Sides));

        high1 = L::load (n.input);
        high2 = L::load (n.input + Sides);
        low = L::load (n.input + 2 * Sides);
        loop1 = L::load (n.loop);
        loopSum = L::load (n.loop + Sides);
    }

    QUILVANE_INLINE void storeStates()
    {
        for (int k = 0; k < M; ++k)
        {
            L::store (network.allpass + k * Sides, L::lower (p[k]));
            L::store (network.allpass + (k + M) * Sides, L::upper (p[k]));
        }

        L::store (network.input, high1);
        L::store (network.input + Sides, high2);
        L::store (network.input + 2 * Sides, low);
        L::store (network.loop, loop1);
        L::store (network.loop + Sides, loopSum);
    }

    //==============================================================================
    //==============================================================================
    /** One sample of the base rate at the high rate. */
    struct Input
    {
        alignas (32) double x[factor * Sides];           // interpolated
        alignas (32) double conditioned[factor * Sides]; // divided by the input's scale
    };

    /** One step of the input's filters. */
    QUILVANE_INLINE void condition (Input& input, int i)
    {
        const auto d1 = L::load (input.x + i * Sides) - high1;
        high1 = multiplyAdd (inputGain, d1, high1);
        const auto d2 = d1 - high2;
        high2 = multiplyAdd (inputGain, d2, high2);
        const auto d3 = d2 - low;
        L::store (input.conditioned + i * Sides, multiplyAdd (lowGain, d3, low));
        low = multiplyAdd (lowGain2, d3, low);
    }

    //==============================================================================
    /** The sum of a new sample's first estimate; of the states before retune(). */
    QUILVANE_INLINE V estimateFirst (const Tuning& tuning, size_t at, W a) const
    {
        auto estimate = L::twice (L::load (tuning.estimateLast + at)) * p[M - 1];

        if constexpr (M > 1)
        {
            auto others = p[M - 2];

            for (int k = M - 2; --k >= 0;)
                others = multiplyAdd (a, others, p[k]);

            estimate = multiplyAdd (L::twice (L::load (tuning.estimateOthers + at)), others, estimate);
        }

        return multiplyAdd (L::load (tuning.aM + at), L::upper (estimate), L::lower (estimate));
    }

    /** Takes a sample's tuning. */
    QUILVANE_INLINE void retune (W a, W rescale, W move)
    {
        auto others = p[0];
        p[0] = rescale * others;

        for (int k = 1; k < M; ++k)
        {
            const auto old = p[k];
            p[k] = multiplyAdd (move, others, rescale * old);
            others = multiplyAdd (a, others, old);
        }
    }

    /** One step of both groups. */
    QUILVANE_INLINE void runSections (W in, W minusA, W a, W rest, const W (&h)[M])
    {
        auto sum = p[0];
        p[0] = multiplyAdd (h[0], in, minusA * sum);

        for (int k = 1; k < M - 1; ++k)
        {
            const auto lastSum = sum;
            sum = multiplyAdd (a, sum, p[k]);
            p[k] = multiplyAdd (h[k], in, multiplyAdd (minusA, sum, lastSum));
        }

        if constexpr (M > 1)
            p[M - 1] = multiplyAdd (h[M - 1], in, multiplyAdd (rest, sum, minusA * p[M - 1]));
    }

    /** One sample at the base rate, in place; and the input of the next one, if there is one. */
    template <bool HasNext>
    QUILVANE_INLINE void process (const Tuning& tuning, int index, const Input& input, Input& next, double* sample)
    {
        const auto at = static_cast<size_t> (index) * Sides;
        const auto aM = L::load (tuning.aM + at), loop = L::load (tuning.loop + at);
        const auto through = L::load (tuning.through + at), loopFirst = L::load (tuning.loopFirst + at);
        const auto fromInput = L::load (tuning.fromInput + at);
        const auto fromLower = L::load (tuning.fromLower + at), fromUpper = L::load (tuning.fromUpper + at);
        const auto a = L::twice (L::load (tuning.a + at)), minusA = -a, rest = L::twice (L::load (tuning.rest + at));

        W h[M];

        for (int k = 0; k < M; ++k)
            h[k] = L::twice (L::load (tuning.h[k] + at));

        if constexpr (HasNext)
            HalfBands::interpolate (network.up, sample + Sides, next.x);

        auto u = L::load (input.conditioned) + estimateFirst (tuning, at, a);
        retune (a, L::twice (L::load (tuning.rescale + at)), L::twice (L::load (tuning.move + at)));

        alignas (32) double ys[factor * Sides];

#pragma GCC unroll 16
        for (int i = 0; i < factor; ++i)
        {
            const auto w = multiplyAdd (through, u, minusLoopAmount * loopSum);
            loopSum = multiplyAdd (loop, u, multiplyAdd (loopKept, loopSum, -loop1));
            loop1 = multiplyAdd (loopFirst, u, loopKept * loop1);

            const auto lower = L::lower (p[M - 1]), upper = L::upper (p[M - 1]);
            const auto wM = multiplyAdd (aM, w, lower);
            L::store (ys + i * Sides, multiplyAdd (aM, wM, upper));
            runSections (L::join (w, wM), minusA, a, rest, h);

            if constexpr (HasNext)
                condition (next, i);

            if (i < factor - 1)
            {
                const auto fed = multiplyAdd (fromLower, lower, L::load (input.conditioned + (i + 1) * Sides));
                u = multiplyAdd (fromInput, w, multiplyAdd (fromUpper, upper, fed));
            }
        }

        const auto wet = L::twice (L::load (tuning.wet + at)),
                   conditioned = L::twice (L::load (tuning.conditioned + at));
        const auto raw = L::twice (L::load (tuning.raw + at));

        const auto mixPair = [&] (int i)
        {
            const auto pair = 2 * i * Sides;
            const auto dry =
                multiplyAdd (conditioned, L::loadPair (input.conditioned + pair), raw * loadVector<W> (input.x + pair));
            return multiplyAdd (wet, L::loadPair (ys + pair), dry);
        };

        HalfBands::decimate (network.down, mixPair, sample);
    }

    //==============================================================================
    Kernels::Network& network;
    const V inputGain, lowGain, lowGain2, loopKept, minusLoopAmount;
    W p[M];
    V high1, high2, low;
    V loop1, loopSum;
};

template <int Sides, int Stages, int NumSections>
inline constexpr Kernels::NetworkFunctions functions { NetworkKernel<Sides, Stages, NumSections>::begin,
                                                       NetworkKernel<Sides, Stages, NumSections>::run,
                                                       NetworkKernel<Sides, Stages, NumSections>::end };

/** The table for the processor that the including source is compiled for. */
inline const Kernels kernels {
    {
        { { functions<1, 3, 2>, functions<1, 3, 4>, functions<1, 3, 6>, functions<1, 3, 8> },
          { functions<1, 4, 2>, functions<1, 4, 4>, functions<1, 4, 6>, functions<1, 4, 8> } },
        { { functions<2, 3, 2>, functions<2, 3, 4>, functions<2, 3, 6>, functions<2, 3, 8> },
          { functions<2, 4, 2>, functions<2, 4, 4>, functions<2, 4, 6>, functions<2, 4, 8> } },
    },
    warp,
    sine,
    hyperTriangle,
    frequency,
    lag,
};

} // namespace
} // namespace quilvane
