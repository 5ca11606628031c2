// SPDX-License-Identifier: GPL-3.0-or-later

#include "dsp/SampleRateConstants.h"

#include <array>
#include <cmath>

namespace K7R
{

bool SampleRateConstants::update (double newRate)
{
    // Written so that NaN is refused as well.
    if (newRate == sampleRate || ! (newRate >= lowestRate && newRate <= highestRate))
        return false;

    const auto toFloat = [] (double x) { return static_cast<float> (x); };

    sampleRate = newRate;
    sampleRateF = toFloat (sampleRate);
    samplePeriod = 1.0 / sampleRate;
    samplePeriodF = toFloat (samplePeriod);
    halfPeriod = 0.5 / sampleRate;
    rateRatio = sampleRate * 2.2675736961451248e-5;
    rateRatioF = toFloat (rateRatio);
    periodRatio = 44100.0 / sampleRate;
    rateScale = 2.0 * (1.0 - std::pow (0.5, periodRatio));
    rateScaleF = toFloat (rateScale);
    growth = std::pow (2.0, periodRatio) - 1.0;
    growthF = static_cast<double> (toFloat (growth));

    lagBase = rateScale * 0.00010257588085804681 / (1.0 - std::exp (-0.00010258114212350273 / rateRatio));
    lagBaseF = toFloat (lagBase);
    lagBaseInverse = 1.0 / lagBase;
    lagBaseInverseF = toFloat (lagBaseInverse);
    lagScale = rateScale / lagBase;
    lagScaleF = toFloat (lagScale);

    rateScaleCubed = rateScale * rateScale * rateScale;
    rateScaleCubedF = toFloat (rateScaleCubed);
    nyquist = sampleRate * 0.5;
    nyquistF = toFloat (nyquist);

    smoothingStep = rateScale * 0.002;
    smoothingStepF = toFloat (smoothingStep);
    smoothingStep2 = rateScale * 0.002;
    smoothingStep2F = toFloat (smoothingStep2);
    fastStepF = toFloat (rateScale * 0.005);
    slowStepF = toFloat (rateScale * 0.0005);
    meterDecay = 1.0 - rateScale * 0.0001;
    meterDecayF = toFloat (meterDecay);

    samplesPerMsF = sampleRateF * 0.001f;
    samplesPerMs = sampleRate * 0.001;

    static constexpr std::array<double, 5> commonRates { 44100.0, 48000.0, 88200.0, 96000.0, 192000.0 };

    for (size_t i = 0; i < commonRates.size(); ++i)
        if (sampleRate == commonRates[i])
            rateIndex = static_cast<int> (i);

    return true;
}

} // namespace K7R
