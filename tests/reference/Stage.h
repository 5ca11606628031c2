// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "RateConstants.h"

#include <cstdint>

namespace reference
{
/** A first-order section with a trapezoidal integrator, in double. Each of the three steps runs one sample. */
struct Section
{
    /** Takes the period of the present rate divided by the factor; the cut-off stays 0 and nothing is tuned. */
    Section (const RateConstants& constants, double oversamplingFactor);

    /** Sets `period`, in seconds per oversampled sample, and what follows from it. Doesn't retune. */
    void setPeriod (double seconds);

    /** Computes `warped` and `coefficient` from `cutoff` and the period. */
    void tune();

    double lowPass (double input);
    double highPass (double input);
    double allPass (double input);

    const RateConstants* rateConstants;
    double cutoff = 0.0; // Hz
    double oversampling = 1.0;
    double period = 0.0;
    double twoOverPeriod = 0.0;
    double halfPeriod = 0.0;
    double coefficient = 0.0; // G = g / (g + 1)
    double warped = 0.0;      // g
    double state = 0.0;
};

/** One channel of the filter network at the oversampled rate, in double throughout.

    Per base-rate sample: setFrequency(), then advanceSmoothing(), then process() for each oversampled sample.
*/
struct Stage
{
    /** @param oversamplingFactor  8.0 or 16.0 */
    Stage (const RateConstants& constants, double oversamplingFactor);

    /** Follows a new sample rate: tunes the fixed sections, clears the all-passes, puts the smoothed values on target.

        The fixed sections keep the period of the rate that the stage was built at, and their states.
    */
    void reset();

    /** Tunes all eight all-passes to a cut-off in Hz and computes the gains of the loop from `feedback` as it stands. */
    void setFrequency (double hz);

    /** One base-rate step of the four smoothed values. */
    void advanceSmoothing();

    /** Runs one oversampled sample in place. */
    void process (double& sample);

    const RateConstants* rateConstants;

    double mix = 0.0;
    double feedback = 0.0;
    double wetMix = 0.0;
    double spare = 0.0;

    double mixTarget = 0.0;
    double feedbackTarget = 0.0;
    double wetMixTarget = 0.0;
    double spareTarget = 0.0;

    double smoothingBase;
    double smoothingCoefficient;

    Section inputHighPass1, inputHighPass2;
    Section loopHighPass1, loopHighPass2;
    Section inputLowPass;
    Section allpass[8];

    std::int32_t stageCount = 2;
    double frequency = 1000.0;
    double loopHighPassAmount = 1.0;

    double g = 0.0;
    double invOnePlusG = 0.0;
    double stateGain = 0.0;          // b = 2 / (g + 1)
    double allpassGain = 0.0;        // G = g / (g + 1)
    double allpassCoefficient = 0.0; // a = 2G - 1
    double loopGain2 = 0.0;
    double loopGain4 = 0.0;
    double loopGain6 = 0.0;
    double loopGain8 = 0.0;

private:
    int sectionsInUse() const;
    double loopGain() const;
    double estimateFeedback() const;
};
} // namespace reference
