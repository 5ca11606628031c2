// SPDX-License-Identifier: GPL-3.0-or-later

#include "dsp/phaser/QuilvaneOTA.h"

namespace quilvane
{

using namespace K7R;

namespace
{

// Cut-offs of the fixed sections, in Hz.
constexpr double inputHighPassHz = 41.6;
constexpr double loopHighPassHz = 380.0;
constexpr double inputLowPassHz = 12000.0;

// What the feedback adds to the wet sum and to the loop's high-passes.
constexpr double wetMixWithoutFeedback = 0.5;
constexpr double wetMixPerFeedback = 0.1631578952074051;
constexpr double loopHighPassPerFeedback = 0.88888;

/** x^Exponent by squares, as the loop's gains are defined. */
template <size_t Exponent>
double power (double x)
{
    const auto x2 = x * x;

    if constexpr (Exponent == 2)
        return x2;

    const auto x4 = x2 * x2;

    if constexpr (Exponent == 4)
        return x4;

    return Exponent == 6 ? x4 * x2 : x4 * x4;
}

} // namespace

QuilvaneOTA::QuilvaneOTA (const SampleRateConstants& constants, double factor) :
    rateConstants (constants),
    oversampling (factor),
    smoothingBase (static_cast<double> (constants.smoothingStepF)),
    smoothingCoefficient (static_cast<double> (constants.rateScaleF) * smoothingBase)
{
    const auto period = static_cast<double> (rateConstants.samplePeriodF) * (1.0 / oversampling);

    for (auto* section : { &inputHighPass, &inputLowPass, &loopHighPass, &allpass })
        section->setPeriod (period);
}

void QuilvaneOTA::reset()
{
    // With the period of construction, on purpose.
    inputHighPass.setCutoff (inputHighPassHz);
    loopHighPass.setCutoff (loopHighPassHz);
    inputLowPass.setCutoff (inputLowPassHz);

    allpass.setPeriod (static_cast<double> (rateConstants.samplePeriodF) / oversampling);
    allpass.tune();
    states.allpass.fill (0.0);

    smoothingCoefficient = static_cast<double> (rateConstants.rateScaleF) * smoothingBase;
    current = target;
}

void QuilvaneOTA::recoverSections() noexcept
{
    const auto recover = [] (double& state)
    {
        if (! isUsableState (state))
            state = 0.0;
    };

    for (auto* state : { &states.inputHighPass1, &states.inputHighPass2, &states.inputLowPass, &states.loopHighPass1,
                         &states.loopHighPass2 })
        recover (*state);

    for (auto& state : states.allpass)
        recover (state);
}

void QuilvaneOTA::setFeedback (float feedback) noexcept
{
    target.feedback = static_cast<double> (feedback);
    target.wetMix = target.feedback * wetMixPerFeedback + wetMixWithoutFeedback;
    loopHighPassAmount = target.feedback * loopHighPassPerFeedback;
}

void QuilvaneOTA::setFrequency (double hz) noexcept
{
    setTuning (hz, allpass.cutoff == hz ? allpass.warped : allpass.warp (hz));
}

void QuilvaneOTA::setTuning (double hz, double warped) noexcept
{
    frequency = hz;
    allpass.setTuning (hz, warped);

    const auto invOnePlusG = 1.0 / (warped + 1.0);
    const auto allpassGain = invOnePlusG * warped;
    stateGain = invOnePlusG + invOnePlusG;
    allpassCoefficient = allpassGain + allpassGain - 1.0;
    loopFeedback = current.feedback; // that before this sample's step of the smoothing
}

void QuilvaneOTA::smooth() noexcept
{
    const auto step = [this] (double& value, double goal) { value -= (value - goal) * smoothingCoefficient; };

    step (current.mix, target.mix);
    step (current.feedback, target.feedback);
    step (current.wetMix, target.wetMix);
}

/** The chain of the first sections in its feedback loop. */
template <size_t NumStages>
double QuilvaneOTA::processLoop (double conditioned) noexcept
{
    // The estimate of the chain's output, which closes the loop without a delay. The first section's
    // state has the weight 1 and the last one's a^(N-1): the reverse of the true output's weights.
    auto estimate = states.allpass[NumStages - 1];

    for (auto i = NumStages - 1; i-- > 0;)
        estimate = states.allpass[i] + allpassCoefficient * estimate;

    estimate = estimate * stateGain * current.feedback;

    const auto loopGain = 1.0 / (1.0 - power<NumStages> (allpassCoefficient) * loopFeedback);
    const auto u = (conditioned - estimate) * loopGain;
    const auto highPassed =
        loopHighPass.highPass (loopHighPass.highPass (u, states.loopHighPass1), states.loopHighPass2);
    auto w = (highPassed - u) * loopHighPassAmount + u;

    for (size_t i = 0; i < NumStages; ++i)
        w = allpass.allPass (w, states.allpass[i]);

    return w;
}

void QuilvaneOTA::process (double& sample) noexcept
{
    const auto x = sample;
    const auto h1 = inputHighPass.highPass (x, states.inputHighPass1);
    const auto h2 = inputHighPass.highPass (h1, states.inputHighPass2);
    const auto c = inputLowPass.lowPass (h2, states.inputLowPass);

    const auto y = [&]
    {
        switch (stageCount)
        {
            case 4: return processLoop<4> (c);
            case 6: return processLoop<6> (c);
            case 8: return processLoop<8> (c);
            default: return processLoop<2> (c);
        }
    }();

    sample = ((y - c) * current.wetMix + c - x) * current.mix + x;
}

} // namespace quilvane
