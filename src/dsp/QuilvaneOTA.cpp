// SPDX-License-Identifier: GPL-3.0-or-later

#include "dsp/QuilvaneOTA.h"

namespace quilvane
{

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

} // namespace

QuilvaneOTA::QuilvaneOTA (const SampleRateConstants& constants, double factor) :
    rateConstants (constants),
    oversampling (factor),
    smoothingBase (static_cast<double> (constants.smoothingStepF)),
    smoothingCoefficient (static_cast<double> (constants.rateScaleF) * smoothingBase)
{
    const auto period = static_cast<double> (rateConstants.samplePeriodF) * (1.0 / oversampling);

    for (auto* section : { &inputHighPass1, &inputHighPass2, &loopHighPass1, &loopHighPass2, &inputLowPass })
        section->setPeriod (period);

    for (auto& section : allpass)
        section.setPeriod (period);
}

void QuilvaneOTA::reset()
{
    // With the period of construction, on purpose.
    inputHighPass1.setCutoff (inputHighPassHz);
    inputHighPass2.setCutoff (inputHighPassHz);
    loopHighPass1.setCutoff (loopHighPassHz);
    loopHighPass2.setCutoff (loopHighPassHz);
    inputLowPass.setCutoff (inputLowPassHz);

    const auto period = static_cast<double> (rateConstants.samplePeriodF) / oversampling;

    for (auto& section : allpass)
    {
        section.setPeriod (period);
        section.state = 0.0;
        section.tune();
    }

    smoothingCoefficient = static_cast<double> (rateConstants.rateScaleF) * smoothingBase;
    current = target;
}

void QuilvaneOTA::recoverSections() noexcept
{
    for (auto* section : { &inputHighPass1, &inputHighPass2, &loopHighPass1, &loopHighPass2, &inputLowPass })
        if (! isUsableState (section->state))
            section->state = 0.0;

    for (auto& section : allpass)
        if (! isUsableState (section.state))
            section.state = 0.0;
}

void QuilvaneOTA::setFeedback (float feedback) noexcept
{
    target.feedback = static_cast<double> (feedback);
    target.wetMix = target.feedback * wetMixPerFeedback + wetMixWithoutFeedback;
    loopHighPassAmount = target.feedback * loopHighPassPerFeedback;
}

void QuilvaneOTA::setFrequency (double hz) noexcept
{
    frequency = hz;

    auto& first = allpass.front();
    first.setCutoff (hz);

    for (auto& section : allpass)
        section.coefficient = first.coefficient;

    const auto g = first.warped;
    const auto invOnePlusG = 1.0 / (g + 1.0);
    const auto allpassGain = invOnePlusG * g;
    stateGain = invOnePlusG + invOnePlusG;
    allpassCoefficient = allpassGain + allpassGain - 1.0;

    const auto a2 = allpassCoefficient * allpassCoefficient;
    const auto a4 = a2 * a2;
    const auto a6 = a4 * a2;
    const auto a8 = a4 * a4;
    loopGain2 = 1.0 / (1.0 - a2 * current.feedback);
    loopGain4 = 1.0 / (1.0 - a4 * current.feedback);
    loopGain6 = 1.0 / (1.0 - a6 * current.feedback);
    loopGain8 = 1.0 / (1.0 - a8 * current.feedback);
}

void QuilvaneOTA::smooth() noexcept
{
    const auto step = [this] (double& value, double goal) { value -= (value - goal) * smoothingCoefficient; };

    step (current.mix, target.mix);
    step (current.feedback, target.feedback);
    step (current.wetMix, target.wetMix);
}

template <size_t NumStages>
double QuilvaneOTA::processLoop (double conditioned, double loopGain) noexcept
{
    // The estimate of the chain's output, which closes the loop without a delay. The first section's
    // state has the weight 1 and the last one's a^(N-1): the reverse of the true output's weights.
    auto estimate = allpass[NumStages - 1].state;

    for (auto i = NumStages - 1; i-- > 0;)
        estimate = allpass[i].state + allpassCoefficient * estimate;

    estimate = estimate * stateGain * current.feedback;

    const auto u = (conditioned - estimate) * loopGain;
    const auto highPassed = loopHighPass2.highPass (loopHighPass1.highPass (u));
    auto w = (highPassed - u) * loopHighPassAmount + u;

    for (size_t i = 0; i < NumStages; ++i)
        w = allpass[i].allPass (w);

    return w;
}

void QuilvaneOTA::process (double& sample) noexcept
{
    const auto x = sample;
    const auto c = inputLowPass.lowPass (inputHighPass2.highPass (inputHighPass1.highPass (x)));

    const auto y = [&]
    {
        switch (stageCount)
        {
            case 4: return processLoop<4> (c, loopGain4);
            case 6: return processLoop<6> (c, loopGain6);
            case 8: return processLoop<8> (c, loopGain8);
            default: return processLoop<2> (c, loopGain2);
        }
    }();

    sample = ((y - c) * current.wetMix + c - x) * current.mix + x;
}

} // namespace quilvane
