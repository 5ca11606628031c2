// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace K7R
{

/** Everything that signal processing derives from the sample rate.

    One record per plug-in, owned by its BasePlugin; every DSP object points at it and none copies
    the rate. It is written while no audio runs (construction, prepareToPlay) and read without a
    lock.

    `rateScale` makes one-pole steps that were tuned at 44100 Hz keep their time constant
    (approximately) at other rates; the step constants are such steps, per sample.
*/
struct SampleRateConstants
{
    /** Rates outside this range (Hz) are refused. From about 3.1 kHz down, the highest sweep frequency would
        pass the oversampled Nyquist frequency; above the upper end, no host has a use for it. */
    static constexpr double lowestRate = 4000.0;
    static constexpr double highestRate = 10.0e6;

    /** Recomputes everything for a rate in Hz.
        @returns false, with nothing touched, if the rate is the present one or cannot be processed */
    bool update (double newRate);

    double sampleRate = -1.0; // Hz
    float sampleRateF = 0.0f;
    double samplePeriod = 0.0; // s
    float samplePeriodF = 0.0f;
    double halfPeriod = 0.0;
    double rateRatio = 0.0; // to 44100 Hz
    float rateRatioF = 0.0f;
    double rateScale = 0.0; // 1 at 44100 Hz
    double lagScale = 0.0;  // 1 at 44100 Hz
    float rateScaleF = 0.0f;
    float lagScaleF = 0.0f;
    double periodRatio = 0.0; // to that of 44100 Hz
    double growth = 0.0;
    double growthF = 0.0; // rounded through float
    double lagBase = 0.0;
    float lagBaseF = 0.0f;
    double lagBaseInverse = 0.0;
    float lagBaseInverseF = 0.0f;
    double rateScaleCubed = 0.0;
    float rateScaleCubedF = 0.0f;
    double nyquist = 0.0; // Hz
    float nyquistF = 0.0f;
    double smoothingStep = 0.0; // parameter smoothing
    float smoothingStepF = 0.0f;
    float fastStepF = 0.0f;
    double meterDecay = 0.0; // factor per sample
    float meterDecayF = 0.0f;
    float slowStepF = 0.0f;
    float samplesPerMsF = 0.0f;
    double samplesPerMs = 0.0;
    double smoothingStep2 = 0.0;
    float smoothingStep2F = 0.0f;
    int rateIndex = 0; // 0 to 4 for 44100, 48000, 88200, 96000, 192000 Hz; else that of the rate before
};

} // namespace K7R
