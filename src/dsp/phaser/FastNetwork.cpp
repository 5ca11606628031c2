// SPDX-License-Identifier: GPL-3.0-or-later

#include "dsp/phaser/FastNetwork.h"

#include <algorithm>
#include <iterator>

namespace quilvane
{

using namespace K7R;

template <typename Network>
typename FastNetwork<Network>::Pointers FastNetwork<Network>::getHeld() noexcept
{
    return { &networks[held.left ? 0 : 1], held.count() == 2 ? &networks[1] : nullptr };
}

template <typename Network>
template <typename Function>
void FastNetwork<Network>::forEachState (Function&& function) noexcept
{
    const auto sides = getHeld();
    const auto hand = [&] (auto&& select, double* place)
    {
        for (auto* side : sides)
            if (side != nullptr)
                function (select (*side), *place++);

        return place;
    };

    using States = QuilvaneOTA::States;
    using Smoothed = QuilvaneOTA::Smoothed;

    const auto handState = [&] (double States::*value, double* place)
    {
        return hand ([=] (Network& n) -> double& { return n.states.*value; }, place);
    };

    handState (&States::inputLowPass,
               handState (&States::inputHighPass2, handState (&States::inputHighPass1, state.input)));
    handState (&States::loopHighPass2, handState (&States::loopHighPass1, state.loop));

    auto* allpassState = state.allpass;

    for (size_t i = 0; i < static_cast<size_t> (sides[0]->getStageCount()); ++i)
        allpassState = hand ([=] (Network& n) -> double& { return n.states.allpass[i]; }, allpassState);

    const auto handSmoothed = [&] (double Smoothed::*value, double* place)
    {
        hand ([=] (Network& n) -> double& { return n.current.*value; }, place);
    };

    handSmoothed (&Smoothed::mix, state.mix);
    handSmoothed (&Smoothed::feedback, state.feedback);
    handSmoothed (&Smoothed::wetMix, state.wetMix);

    auto* up = state.up;
    auto* down = state.down;

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

template <typename Network>
void FastNetwork<Network>::take (Sides sides) noexcept
{
    held = sides;
    const auto& first = *getHeld()[0];

    state.inputHighPassGain = first.inputHighPass.coefficient;
    state.inputLowPassGain = first.inputLowPass.coefficient;
    state.loopHighPassGain = first.loopHighPass.coefficient;
    state.loopHighPassAmount = first.loopHighPassAmount;
    state.mixTarget = first.target.mix;
    state.feedbackTarget = first.target.feedback;
    state.wetMixTarget = first.target.wetMix;
    state.smoothingCoefficient = first.smoothingCoefficient;
    forEachState ([] (double value, double& place) { place = value; });

    const auto stages = first.filters.up.size() - 3;
    functions = &kernels.networks[sides.count() - 1][stages][first.getStageCount() / 2 - 1];
    functions->begin (state);

    allpass = first.allpass;
    isWarpFast = static_cast<double> (QuilvaneOTA::maximumFrequency) * TPTOnePole::twoPi * allpass.halfPeriod
                 <= Kernels::warpLimit;
}

template <typename Network>
void FastNetwork<Network>::putBack() noexcept
{
    if (held == Sides {})
        return;

    functions->end (state);
    forEachState ([] (double& value, double place) { value = place; });

    const auto sides = getHeld();

    for (size_t i = 0; i < held.count(); ++i)
        sides[i]->setTuning (lastHz[i], lastWarped[i]);

    held = {};
}

template <typename Network>
void FastNetwork<Network>::process (Sides sides, const float* hz, double* samples, int numSamples) noexcept
{
    if (held != sides)
    {
        putBack();
        take (sides);
    }

    const auto numSides = sides.count(), count = static_cast<size_t> (numSamples) * numSides;
    alignas (32) double warped[Kernels::maximumSides * maximumSamples];

    if (isWarpFast)
        kernels.warp (hz, TPTOnePole::twoPi * allpass.halfPeriod, allpass.twoOverPeriod * allpass.halfPeriod, warped,
                      (count + 3) / 4 * 4);
    else
    {
        auto* const end = std::transform (hz, hz + count, warped,
                                          [this] (float f) { return allpass.warp (static_cast<double> (f)); });
        std::fill_n (end, (4 - count % 4) % 4, 0.0);
    }

    functions->run (state, warped, samples, numSamples);

    for (size_t i = 0; i < numSides; ++i)
    {
        const auto last = count - numSides + i;
        lastHz[i] = static_cast<double> (hz[last]);
        lastWarped[i] = warped[last];
    }
}

template <typename Network>
void FastNetwork<Network>::recover (size_t side) noexcept
{
    // In the kernels' form: the way to the networks and back would round the other side's states.
    const auto stride = held.count(), lane = stride == 2 ? side : 0;

    const auto clear = [=] (auto& values)
    {
        for (auto i = lane; i < std::size (values); i += stride)
            if (! isUsableState (values[i]))
                values[i] = 0.0;
    };

    clear (state.input);
    clear (state.loop);
    clear (state.allpass);
    clear (state.up);
    clear (state.down);
}

template class FastNetwork<QuilvaneOTA_Normal>;
template class FastNetwork<QuilvaneOTA_High>;

} // namespace quilvane
