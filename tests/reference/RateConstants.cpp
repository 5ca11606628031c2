// SPDX-License-Identifier: GPL-3.0-or-later

#include "RateConstants.h"

#include <cmath>

namespace reference
{
bool RateConstants::update (double rate)
{
    if (rate == sampleRate)
        return false;

    sampleRate = rate;
    sampleRateF = float (rate);
    samplePeriod = 1.0 / rate;
    samplePeriodF = float (samplePeriod);
    halfPeriod = 0.5 / rate;

    rateRatio = rate * 2.2675736961451248e-5;
    rateRatioF = float (rateRatio);
    periodRatio = 44100.0 / rate;

    rateScale = 2.0 * (1.0 - std::pow (0.5, 44100.0 / rate));
    rateScaleF = float (rateScale);

    lagBase = rateScale * 0.00010257588085804681 / (1.0 - std::exp (-0.00010258114212350273 / rateRatio));
    lagBaseF = float (lagBase);
    lagBaseInverse = 1.0 / lagBase;
    lagBaseInverseF = float (lagBaseInverse);
    lagScale = rateScale / lagBase;
    lagScaleF = float (lagScale);

    growth = std::pow (2.0, 44100.0 / rate) - 1.0;
    growthF = double (float (growth));

    rateScaleCubed = rateScale * rateScale * rateScale;
    rateScaleCubedF = float (rateScaleCubed);

    nyquist = rate * 0.5;
    nyquistF = float (nyquist);

    smoothingStep = rateScale * 0.002;
    smoothingStepF = float (smoothingStep);
    smoothingStep2 = rateScale * 0.002;
    smoothingStep2F = float (smoothingStep2);
    fastStepF = float (rateScale * 0.005);
    slowStepF = float (rateScale * 0.0005);

    meterDecay = 1.0 - rateScale * 0.0001;
    meterDecayF = float (meterDecay);

    samplesPerMsF = float (rate) * 0.001f;
    samplesPerMs = rate * 0.001;

    if (rate == 44100.0)
        rateIndex = 0;
    else if (rate == 48000.0)
        rateIndex = 1;
    else if (rate == 88200.0)
        rateIndex = 2;
    else if (rate == 96000.0)
        rateIndex = 3;
    else if (rate == 192000.0)
        rateIndex = 4;

    return true;
}
} // namespace reference
