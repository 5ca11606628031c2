// SPDX-License-Identifier: GPL-3.0-or-later

#include "dsp/FastNetwork.h"

#include <algorithm>

namespace quilvane
{

template <typename Network, size_t NumSides, typename Function>
void FastNetwork::forEachState (Network* const (&sides)[NumSides], Kernels::Network& kernel,
                                Function&& function) noexcept
{
    const auto hand = [&] (auto&& select, double* place)
    {
        if constexpr (NumSides == 2)
            function (select (*sides[0]), select (*sides[1]), place);
        else
            function (select (*sides[0]), place);

        return place + NumSides;
    };

    using States = QuilvaneOTA::States;
    using Smoothed = QuilvaneOTA::Smoothed;

    const auto handState = [&] (double States::*state, double* place)
    {
        return hand ([=] (Network& n) -> double& { return n.states.*state; }, place);
    };

    handState (&States::inputLowPass,
               handState (&States::inputHighPass2, handState (&States::inputHighPass1, kernel.input)));
    handState (&States::loopHighPass2, handState (&States::loopHighPass1, kernel.loop));

    auto* allpass = kernel.allpass;

    for (size_t i = 0; i < static_cast<size_t> (sides[0]->getStageCount()); ++i)
        allpass = hand ([=] (Network& n) -> double& { return n.states.allpass[i]; }, allpass);

    const auto handSmoothed = [&] (double Smoothed::*value, double* place)
    {
        hand ([=] (Network& n) -> double& { return n.current.*value; }, place);
    };

    handSmoothed (&Smoothed::mix, kernel.mix);
    handSmoothed (&Smoothed::feedback, kernel.feedback);
    handSmoothed (&Smoothed::wetMix, kernel.wetMix);

    auto* up = kernel.up;
    auto* down = kernel.down;

    for (size_t i = 0; i < sides[0]->filters.up.size(); ++i)
    {
        up = hand ([=] (Network& n) -> double& { return n.filters.up[i].x; }, up);
        up = hand ([=] (Network& n) -> double& { return n.filters.up[i].yA; }, up);
        up = hand ([=] (Network& n) -> double& { return n.filters.up[i].yB; }, up);
        down = hand ([=] (Network& n) -> double& { return n.filters.down[i].first; }, down);
        down = hand ([=] (Network& n) -> double& { return n.filters.down[i].second; }, down);
        down = hand ([=] (Network& n) -> double& { return n.filters.down[i].yB; }, down);
        down = hand ([=] (Network& n) -> double& { return n.filters.down[i].yA; }, down);
    }
}

template <typename Network, size_t NumSides>
void FastNetwork::run (const Kernels& kernels, Network* const (&sides)[NumSides], const float* hz, double* samples,
                       int numSamples) noexcept
{
    const auto& first = *sides[0];
    const auto count = static_cast<size_t> (numSamples) * NumSides;

    alignas (32) double warped[2 * maximumSamples];
    const auto scale = TPTOnePole::twoPi * first.allpass.halfPeriod;

    if (static_cast<double> (QuilvaneOTA::maximumFrequency) * scale <= Kernels::warpLimit)
        kernels.warp (hz, scale, first.allpass.twoOverPeriod * first.allpass.halfPeriod, warped, (count + 3) / 4 * 4);
    else
    {
        auto* const end = std::transform (hz, hz + count, warped,
                                          [&] (float f) { return first.allpass.warp (static_cast<double> (f)); });
        std::fill_n (end, (4 - count % 4) % 4, 0.0);
    }

    Kernels::Network kernel; // NOLINT(cppcoreguidelines-pro-type-member-init): filled as far as it's read
    kernel.inputHighPassGain = first.inputHighPass.coefficient;
    kernel.inputLowPassGain = first.inputLowPass.coefficient;
    kernel.loopHighPassGain = first.loopHighPass.coefficient;
    kernel.loopHighPassAmount = first.loopHighPassAmount;
    kernel.mixTarget = first.target.mix;
    kernel.feedbackTarget = first.target.feedback;
    kernel.wetMixTarget = first.target.wetMix;
    kernel.smoothingCoefficient = first.smoothingCoefficient;

    if constexpr (NumSides == 2)
        forEachState (sides, kernel, [] (double a, double b, double* place) { Kernels::storePair (place, a, b); });
    else
        forEachState (sides, kernel, [] (double value, double* place) { *place = value; });

    const auto stages = first.filters.up.size() - 3;
    kernels.networks[NumSides - 1][stages][first.getStageCount() / 2 - 1](kernel, warped, samples, numSamples);

    if constexpr (NumSides == 2)
        forEachState (sides, kernel, [] (double& a, double& b, const double* place) { a = place[0], b = place[1]; });
    else
        forEachState (sides, kernel, [] (double& value, const double* place) { value = *place; });

    for (size_t side = 0; side < NumSides; ++side)
    {
        const auto last = count - NumSides + side;
        sides[side]->setTuning (static_cast<double> (hz[last]), warped[last]);
    }
}

using Normal = QuilvaneOTA_Normal;
using High = QuilvaneOTA_High;

template void FastNetwork::run (const Kernels&, Normal* const (&)[1], const float*, double*, int) noexcept;
template void FastNetwork::run (const Kernels&, Normal* const (&)[2], const float*, double*, int) noexcept;
template void FastNetwork::run (const Kernels&, High* const (&)[1], const float*, double*, int) noexcept;
template void FastNetwork::run (const Kernels&, High* const (&)[2], const float*, double*, int) noexcept;

} // namespace quilvane
