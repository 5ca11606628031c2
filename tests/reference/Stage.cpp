// SPDX-License-Identifier: GPL-3.0-or-later

#include "Stage.h"

#include <cmath>

namespace reference
{
namespace
{
// 2 pi rounded to float and widened again: the sound depends on this value in every cut-off of the stage.
constexpr double twoPiOfFloat = 6.2831854820251465;

void takeCutoff (Section& section, double hz)
{
    if (section.cutoff != hz)
    {
        section.cutoff = hz;
        section.tune();
    }
}
} // namespace

Section::Section (const RateConstants& constants, double oversamplingFactor) :
    rateConstants (&constants),
    oversampling (oversamplingFactor)
{
    setPeriod (double (constants.samplePeriodF) * (1.0 / oversampling));
}

void Section::setPeriod (double seconds)
{
    period = seconds;
    twoOverPeriod = 2.0 / period;
    halfPeriod = period * 0.5;
}

void Section::tune()
{
    warped = std::tan (cutoff * twoPiOfFloat * halfPeriod) * twoOverPeriod * halfPeriod;
    coefficient = warped / (warped + 1.0);
}

double Section::lowPass (double input)
{
    const double v = (input - state) * coefficient;
    const double lp = state + v;
    state = lp + v;
    return lp;
}

double Section::highPass (double input)
{
    const double lp = lowPass (input);
    return input - lp;
}

double Section::allPass (double input)
{
    const double lp = lowPass (input);
    return lp - (input - lp);
}

Stage::Stage (const RateConstants& constants, double oversamplingFactor) :
    rateConstants (&constants),
    smoothingBase (double (constants.smoothingStepF)),
    smoothingCoefficient (double (constants.rateScaleF) * smoothingBase),
    inputHighPass1 (constants, oversamplingFactor),
    inputHighPass2 (constants, oversamplingFactor),
    loopHighPass1 (constants, oversamplingFactor),
    loopHighPass2 (constants, oversamplingFactor),
    inputLowPass (constants, oversamplingFactor),
    allpass { Section (constants, oversamplingFactor), Section (constants, oversamplingFactor),
              Section (constants, oversamplingFactor), Section (constants, oversamplingFactor),
              Section (constants, oversamplingFactor), Section (constants, oversamplingFactor),
              Section (constants, oversamplingFactor), Section (constants, oversamplingFactor) }
{
}

void Stage::reset()
{
    takeCutoff (inputHighPass1, 41.6);
    takeCutoff (inputHighPass2, 41.6);
    takeCutoff (loopHighPass1, 380.0);
    takeCutoff (loopHighPass2, 380.0);
    takeCutoff (inputLowPass, 12000.0);

    for (auto& section : allpass)
    {
        section.setPeriod (double (rateConstants->samplePeriodF) / section.oversampling);
        section.state = 0.0;
        section.tune();
    }

    smoothingCoefficient = double (rateConstants->rateScaleF) * smoothingBase;

    mix = mixTarget;
    feedback = feedbackTarget;
    wetMix = wetMixTarget;
    spare = spareTarget;
}

void Stage::setFrequency (double hz)
{
    frequency = hz;
    takeCutoff (allpass[0], hz);

    for (int i = 1; i < 8; ++i)
        allpass[i].coefficient = allpass[0].coefficient;

    g = allpass[0].warped;
    invOnePlusG = 1.0 / (g + 1.0);
    stateGain = invOnePlusG + invOnePlusG;
    allpassGain = invOnePlusG * g;
    allpassCoefficient = allpassGain + allpassGain - 1.0;

    const double a = allpassCoefficient;
    const double a2 = a * a;
    const double a4 = a2 * a2;
    const double a6 = a4 * a2;
    const double a8 = a4 * a4;

    loopGain2 = 1.0 / (1.0 - a2 * feedback);
    loopGain4 = 1.0 / (1.0 - a4 * feedback);
    loopGain6 = 1.0 / (1.0 - a6 * feedback);
    loopGain8 = 1.0 / (1.0 - a8 * feedback);
}

void Stage::advanceSmoothing()
{
    mix = mix - (mix - mixTarget) * smoothingCoefficient;
    feedback = feedback - (feedback - feedbackTarget) * smoothingCoefficient;
    wetMix = wetMix - (wetMix - wetMixTarget) * smoothingCoefficient;
    spare = spare - (spare - spareTarget) * smoothingCoefficient;
}

void Stage::process (double& sample)
{
    const double x = sample;

    const double h1 = inputHighPass1.highPass (x);
    const double h2 = inputHighPass2.highPass (h1);
    const double c = inputLowPass.lowPass (h2);

    const double e = estimateFeedback();
    const double u = (c - e) * loopGain();

    const double w0 = loopHighPass1.highPass (u);
    const double w1 = loopHighPass2.highPass (w0);
    double w = (w1 - u) * loopHighPassAmount + u;

    const int count = sectionsInUse();

    for (int i = 0; i < count; ++i)
        w = allpass[i].allPass (w);

    const double y = w;
    sample = ((y - c) * wetMix + c - x) * mix + x;
}

int Stage::sectionsInUse() const
{
    return stageCount == 4 || stageCount == 6 || stageCount == 8 ? stageCount : 2;
}

double Stage::loopGain() const
{
    switch (sectionsInUse())
    {
        case 4: return loopGain4;
        case 6: return loopGain6;
        case 8: return loopGain8;
        default: return loopGain2;
    }
}

double Stage::estimateFeedback() const
{
    // The weight 1 belongs to the first section and the highest power to the last, which is the reverse of the
    // chain's own weights. The sound depends on it.
    const int last = sectionsInUse() - 1;
    double sum = allpass[last].state;

    for (int i = last - 1; i >= 0; --i)
        sum = allpass[i].state + allpassCoefficient * sum;

    return sum * stateGain * feedback;
}
} // namespace reference
