// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>

#include "dsp/OversampleIIR.h"
#include "dsp/SampleRateConstants.h"
#include "dsp/TPTOnePole.h"

namespace quilvane
{

/** One channel of the phaser's network, at the oversampled rate and in double precision.

    Input conditioning (two high-passes and a low-pass), then up to eight first-order all-pass
    sections of one cut-off inside a feedback loop that is closed through an estimate of the chain's
    output, then the mix. Every operation is linear; there is no saturation. Values that are not
    finite stay in the states until recoverSections().

    The five fixed sections keep the tuning that they get for the rate at construction, whatever the
    rate later is: that is the sound. Driven by FastNetwork under the core's lock.

    This is the statement of the network. Blocks of sound are run by FastNetwork, which does the same on the same
    state; the two can take turns at any sample.
*/
class QuilvaneOTA
{
public:
    static constexpr size_t maximumStages = 8;
    static constexpr float maximumFrequency = 12543.854f; // Hz, MIDI note 127

    /** @param oversampling the factor at which process() will be called */
    QuilvaneOTA (const K7R::SampleRateConstants&, double oversampling);

    /** After a change of the sample rate: retunes the all-pass sections and clears their states, and
        lets the smoothed values jump to their targets. */
    void reset();

    /** Clears unusable states of sections; leaves the others alone. */
    void recoverSections() noexcept;

    /** Any number but 4, 6 or 8 counts as 2. Sections left out keep their states. */
    void setStageCount (int sections) noexcept
    {
        stageCount = sections == 4 || sections == 6 || sections == 8 ? sections : 2;
    }

    int getStageCount() const noexcept { return stageCount; }

    /** @param mix of the whole effect, from 0 (input) to 1 */
    void setMix (float mix) noexcept { target.mix = static_cast<double> (mix); }

    /** @param feedback the loop's gain, from 0 to 0.95. It also raises the share of the all-passes in
        the wet sum, and the amount of the loop's high-passes, which steps without smoothing. */
    void setFeedback (float feedback) noexcept;

    //==============================================================================
    /** Tunes the all-passes, from 0 to maximumFrequency; once per sample of the base rate. */
    void setFrequency (double hz) noexcept;

    /** One step of the smoothed values; once per sample of the base rate, after setFrequency(). */
    void smooth() noexcept;

    /** One sample at the oversampled rate, in place. */
    void process (double& sample) noexcept;

    double getFrequency() const noexcept { return frequency; }

private:
    template <typename Network>
    friend class FastNetwork;

    /** The integrators of all sections. */
    struct States
    {
        double inputHighPass1 = 0.0, inputHighPass2 = 0.0, inputLowPass = 0.0;
        double loopHighPass1 = 0.0, loopHighPass2 = 0.0;
        std::array<double, maximumStages> allpass {};
    };

    struct Smoothed
    {
        double mix = 0.0;
        double feedback = 0.0;
        double wetMix = 0.0; // of the conditioned input and the all-passes
    };

    /** Takes a frequency whose prewarped gain is known. */
    void setTuning (double hz, double warped) noexcept;

    template <size_t NumStages>
    double processLoop (double conditioned) noexcept;

    const K7R::SampleRateConstants& rateConstants;
    const double oversampling;

    States states;
    Smoothed current, target;
    double smoothingBase;
    double smoothingCoefficient;

    K7R::TPTOnePole inputHighPass, inputLowPass, loopHighPass; // the high-passes come in pairs
    K7R::TPTOnePole allpass;

    int stageCount = 2;
    double frequency = 1000.0; // Hz
    double loopHighPassAmount = 1.0;

    double stateGain = 0.0;          // b = 2 / (g + 1)
    double allpassCoefficient = 0.0; // a = 2 G - 1
    double loopFeedback = 0.0;       // the feedback that the loop's gain was made for
};

//==============================================================================
/** The network behind an oversampler of its factor. */
template <int OversamplingStages>
class OversampledOTA final : public K7R::OversampleIIR::Base<double, OversamplingStages>, public QuilvaneOTA
{
public:
    using Oversampler = K7R::OversampleIIR::Base<double, OversamplingStages>;

    explicit OversampledOTA (const K7R::SampleRateConstants& constants) :
        QuilvaneOTA (constants, static_cast<double> (Oversampler::factor))
    {
    }

    /** One sample at the base rate, at unit gain. */
    double processBaseRate (double sample) noexcept
    {
        Oversampler::process (sample);
        return sample * Oversampler::gain;
    }

    /** Clears what input that was no sound left in the filters. Other histories are kept. */
    void recover() noexcept
    {
        Oversampler::recoverFilters();
        recoverSections();
    }

private:
    void processOversampled (double& sample) noexcept override { QuilvaneOTA::process (sample); }
};

using QuilvaneOTA_Normal = OversampledOTA<3>;
using QuilvaneOTA_High = OversampledOTA<4>;

} // namespace quilvane
