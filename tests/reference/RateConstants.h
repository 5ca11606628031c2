// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>

namespace reference
{
/** Every constant that the network derives from the sample rate, with the types that the network reads them in.

    A name that ends in F is the form that was rounded to float.
*/
struct RateConstants
{
    /** Recomputes all fields for a rate in Hz. Returns false, having touched nothing, if it equals the present one. */
    bool update (double rate);

    double sampleRate = -1.0;
    float sampleRateF = 0.0f;
    double samplePeriod = 0.0;
    float samplePeriodF = 0.0f;
    double halfPeriod = 0.0;
    double rateRatio = 0.0;
    float rateRatioF = 0.0f;
    double rateScale = 0.0;
    double lagScale = 0.0;
    float rateScaleF = 0.0f;
    float lagScaleF = 0.0f;
    double periodRatio = 0.0;
    double growth = 0.0;
    double growthF = 0.0; // held as a double that has been through float
    double lagBase = 0.0;
    float lagBaseF = 0.0f;
    double lagBaseInverse = 0.0;
    float lagBaseInverseF = 0.0f;
    double rateScaleCubed = 0.0;
    float rateScaleCubedF = 0.0f;
    double nyquist = 0.0;
    float nyquistF = 0.0f;
    double smoothingStep = 0.0;
    float smoothingStepF = 0.0f;
    float fastStepF = 0.0f;
    double meterDecay = 0.0;
    float meterDecayF = 0.0f;
    float slowStepF = 0.0f;
    float samplesPerMsF = 0.0f;
    double samplesPerMs = 0.0;
    double smoothingStep2 = 0.0;
    float smoothingStep2F = 0.0f;
    std::int32_t rateIndex = 0; // 0 to 4 for 44100, 48000, 88200, 96000, 192000 Hz; other rates leave it as it was
};
} // namespace reference
