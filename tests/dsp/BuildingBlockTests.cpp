// SPDX-License-Identifier: GPL-3.0-or-later

// The parts of the signal path on their own, held against what is known of them.

#include <complex>

#include <gtest/gtest.h>

#include "dsp/OversampleIIR.h"
#include "dsp/SampleRateConstants.h"
#include "dsp/phaser/QuilvaneLFO.h"
#include "dsp/phaser/QuilvaneOTA.h"
#include "support/Signals.h"

using namespace K7R;
using namespace quilvane;

namespace
{

SampleRateConstants constantsAt (double rate)
{
    SampleRateConstants constants;
    constants.update (44100.0);
    constants.update (rate);
    return constants;
}

/** The magnitude of a response at an angular frequency, in radians per sample. */
double magnitude (const std::vector<double>& impulseResponse, double omega)
{
    std::complex<double> sum;

    for (size_t i = 0; i < impulseResponse.size(); ++i)
        sum += impulseResponse[i] * std::polar (1.0, -omega * static_cast<double> (i));

    return std::abs (sum);
}

template <int Stages>
struct CountingOversampler : OversampleIIR::Base<double, Stages>
{
    void processOversampled (double&) noexcept override { ++calls; }

    int calls = 0;
};

} // namespace

//==============================================================================
TEST (SampleRateConstants, HaveTheirKnownValues)
{
    const auto base = constantsAt (44100.0);
    EXPECT_EQ (base.rateScale, 1.0);
    EXPECT_DOUBLE_EQ (base.lagScale, 1.0);
    EXPECT_EQ (base.smoothingStepF, 0.002f);
    EXPECT_EQ (base.meterDecayF, 0.9999f);
    EXPECT_EQ (base.fastStepF, 0.005f);
    EXPECT_EQ (base.slowStepF, 0.0005f);
    EXPECT_EQ (base.growth, 1.0);

    for (const auto& [rate, scale, index] :
         { std::tuple { 48000.0, 0.942065726224875, 1 }, std::tuple { 96000.0, 0.5453974606270446, 3 },
           std::tuple { 192000.0, 0.2943608005366696, 4 }, std::tuple { 50000.0, 0.914771, 0 } })
    {
        const auto constants = constantsAt (rate);
        EXPECT_NEAR (constants.rateScale, scale, rate == 50000.0 ? 1.0e-6 : 1.0e-15) << rate;
        EXPECT_EQ (constants.rateIndex, index) << rate;
        EXPECT_NEAR (constants.lagScale * constants.lagBase, constants.rateScale, 1.0e-15) << rate;
        EXPECT_EQ (constants.nyquistF, static_cast<float> (rate / 2.0));
    }

    auto constants = constantsAt (48000.0);
    EXPECT_FALSE (constants.update (48000.0));
    EXPECT_TRUE (constants.update (50000.0));
    EXPECT_EQ (constants.rateIndex, 1); // that of the rate before
}

//==============================================================================
TEST (HalfBandFilter, HasTheResponseThatDefinesTheSound)
{
    OversampleIIR::Interpolator<double> filter;
    std::vector<double> response;

    for (int i = 0; i < 2000; ++i)
        for (const auto sample : filter.step (i == 0 ? 1.0 : 0.0))
            response.push_back (sample);

    const auto decibelsAt = [&] (double fractionOfPi)
    { return signals::decibels (magnitude (response, fractionOfPi * signals::pi) / 2.0); };

    EXPECT_NEAR (decibelsAt (0.0), 0.0, 1.0e-9);

    for (double f = 0.0; f <= 0.45; f += 0.005)
        EXPECT_NEAR (decibelsAt (f), 0.0, 0.2) << f;

    for (const auto& [f, decibels] :
         { std::pair { 0.5, -3.01 }, std::pair { 0.55, -20.3 }, std::pair { 0.6, -19.3 }, std::pair { 0.7, -13.5 },
           std::pair { 0.75, -14.0 }, std::pair { 0.8, -15.2 }, std::pair { 0.9, -20.5 } })
        EXPECT_NEAR (decibelsAt (f), decibels, 0.06) << f;

    EXPECT_LT (decibelsAt (1.0), -200.0);
}

TEST (Oversampler, RunsItsProcessByTheFactorAndReturnsDcTimesTheFactor)
{
    const auto check = [] (auto oversampler, int factor)
    {
        EXPECT_EQ (oversampler.factor, factor);
        EXPECT_EQ (oversampler.gain, 1.0 / factor);

        double sample = 0.0;

        for (int i = 0; i < 2000; ++i)
        {
            sample = 1.0;
            oversampler.process (sample);
        }

        EXPECT_EQ (oversampler.calls, 2000 * factor);
        EXPECT_NEAR (sample, factor, 1.0e-9);
    };

    check (CountingOversampler<3>(), 8);
    check (CountingOversampler<4>(), 16);
}

TEST (Oversampler, IsFlatInTheLowerBandAndForgetsOnlyWhatIsNotFinite)
{
    CountingOversampler<3> oversampler;
    std::vector<double> response;

    for (int i = 0; i < 4000; ++i)
    {
        double sample = i == 0 ? 1.0 : 0.0;
        oversampler.process (sample);
        response.push_back (sample / 8.0);
    }

    // Within 0.4 dB for each of the three filters' ripple and what the stuffing folds back.
    for (double f = 0.0; f <= 0.35; f += 0.01)
        EXPECT_NEAR (signals::decibels (magnitude (response, f * signals::pi)), 0.0, 0.45) << f;

    CountingOversampler<3> first, second;

    for (int i = 0; i < 100; ++i)
    {
        double a = std::sin (i), b = a;
        first.process (a);
        second.process (b);
        second.recoverFilters();
        ASSERT_EQ (a, b);
    }

    double poison = std::nan ("");
    second.process (poison);
    second.recoverFilters();

    for (int i = 0; i < 100; ++i)
    {
        double sample = 1.0;
        second.process (sample);
        ASSERT_TRUE (std::isfinite (sample));
    }
}

//==============================================================================
TEST (Network, WithoutMixPassesItsInputExactlyInAnyState)
{
    const auto constants = constantsAt (44100.0);
    QuilvaneOTA network (constants, 8.0);
    network.setFeedback (0.95f);
    network.setMix (1.0f);
    network.reset();
    network.setFrequency (700.0);

    for (float input : signals::noise (500, 1))
    {
        auto sample = static_cast<double> (input);
        network.process (sample);
        EXPECT_NE (sample, static_cast<double> (input));
    }

    network.setMix (0.0f);
    network.reset();
    network.setFrequency (700.0);

    for (float input : signals::noise (500, 2))
    {
        auto sample = static_cast<double> (input);
        network.process (sample);
        EXPECT_EQ (sample, static_cast<double> (input));
    }
}

TEST (Network, TreatsOddStageCountsAsTwo)
{
    const auto constants = constantsAt (48000.0);
    const auto render = [&] (int stages)
    {
        QuilvaneOTA network (constants, 8.0);
        network.setStageCount (stages);
        network.setFeedback (0.5f);
        network.setMix (1.0f);
        network.reset();
        network.setFrequency (900.0);
        std::vector<double> output;

        for (float input : signals::noise (200, 3))
        {
            output.push_back (static_cast<double> (input));
            network.process (output.back());
        }

        return output;
    };

    EXPECT_EQ (render (5), render (2));
    EXPECT_EQ (render (0), render (2));
    EXPECT_NE (render (4), render (2));
}

TEST (Network, KeepsItsFixedSectionsTunedForTheRateOfConstruction)
{
    // The level of the wet sound near the corner of the two input high-passes, which is 41.6 Hz at 44100 Hz.
    const auto levelAt = [] (double hostRate, double hz)
    {
        auto constants = constantsAt (44100.0);
        QuilvaneOTA network (constants, 8.0);
        constants.update (hostRate);
        network.setMix (1.0f);
        network.setFeedback (0.0f);
        network.reset();
        network.setFrequency (0.0); // the all-passes invert, twice
        network.setStageCount (2);

        const auto rate = 8.0 * hostRate;
        const auto numSamples = static_cast<size_t> (rate);
        auto samples = signals::sine (numSamples, hz, rate);

        for (auto& sample : samples)
        {
            auto x = static_cast<double> (sample);
            network.process (x);
            sample = static_cast<float> (x);
        }

        return signals::decibels (signals::amplitudeAt (samples, numSamples / 2, numSamples / 2, hz, rate) / 0.5);
    };

    for (const auto& [hostRate, hz] :
         { std::pair { 44100.0, 42.0 }, std::pair { 88200.0, 84.0 }, std::pair { 96000.0, 92.0 } })
    {
        const auto corner = 41.6 * hostRate / 44100.0;
        EXPECT_NEAR (levelAt (hostRate, hz), -signals::decibels (1.0 + corner * corner / (hz * hz)), 0.02) << hostRate;
    }
}

//==============================================================================
TEST (Oscillator, HasTheShapeOfEachWaveform)
{
    const auto constants = constantsAt (44100.0);
    using Waveform = QuilvaneLFO::Waveform;

    struct Case
    {
        Waveform waveform;
        double atStart, atQuarter, atHalf, atThreeQuarters;
    };

    const auto root = std::sqrt (0.5);

    for (const auto& [waveform, start, quarter, half, threeQuarters] :
         { Case { Waveform::triangle, -1.0, 0.0, 1.0, 0.0 }, Case { Waveform::sine, -root, root, root, -root },
           Case { Waveform::rampUp, -1.0, -0.5, 0.0, 0.5 }, Case { Waveform::rampDown, 1.0, 0.5, 0.0, -0.5 },
           Case { Waveform::hyperTriangle, -1.0, 1.0 - 2.0 * std::pow (0.5, 1.5), 1.0,
                  1.0 - 2.0 * std::pow (0.5, 1.5) } })
    {
        // Slow, so that the lag is small; the phase that is read is the offset.
        for (const auto& [offset, expected] : { std::pair { 0.0, start }, std::pair { 0.5, quarter },
                                                std::pair { 1.0, half }, std::pair { 1.5, threeQuarters } })
        {
            QuilvaneLFO lfo (constants);
            lfo.prepare();
            lfo.setWaveform (waveform);
            lfo.setPhaseOffset (offset * signals::pi + 1.0e-9);
            float out = 0.0f;

            for (int i = 0; i < 4000; ++i)
                lfo.next (out);

            EXPECT_NEAR (static_cast<double> (out), expected, 1.0e-6) << static_cast<int> (waveform) << " " << offset;
        }
    }
}

TEST (Oscillator, DrawsOneRandomStepPerCycleTheSameInEveryOscillator)
{
    const auto constants = constantsAt (44100.0);
    QuilvaneLFO first (constants), second (constants);
    std::vector<float> steps;

    for (auto* lfo : { &first, &second })
    {
        lfo->prepare();
        lfo->setWaveform (QuilvaneLFO::Waveform::sampleAndHold);
        lfo->setRate (10.0);
    }

    for (int i = 0; i < 44100; ++i)
    {
        float a = 0.0f, b = 0.0f;
        first.next (a);
        second.next (b);
        ASSERT_EQ (a, b);
        ASSERT_LE (std::abs (a), 1.0f);

        if (i % 4410 == 4000)
            steps.push_back (a);
    }

    ASSERT_EQ (steps.size(), 10u);

    for (size_t i = 1; i < steps.size(); ++i)
        EXPECT_GT (std::abs (steps[i] - steps[i - 1]), 1.0e-4f) << i;
}

TEST (Oscillator, TakesItsRateFromHertzOrFromTempoAndNote)
{
    const auto constants = constantsAt (48000.0);
    QuilvaneLFO lfo (constants);
    lfo.setRate (3.5);
    EXPECT_EQ (lfo.getEffectiveRate(), 3.5);

    lfo.setSync (true);
    EXPECT_EQ (lfo.getEffectiveRate(), 0.0); // no tempo yet
    lfo.setTempo (120.0);
    lfo.setNoteRate (8);

    for (const auto& [scale, hz] :
         { std::pair { NoteValue::Scale::full, 2.0 }, std::pair { NoteValue::Scale::triplet, 3.0 },
           std::pair { NoteValue::Scale::dotted, 4.0 / 3.0 } })
    {
        lfo.setNoteScale (scale);
        EXPECT_NEAR (lfo.getEffectiveRate(), hz, 1.0e-12);
    }

    lfo.setNoteScale (NoteValue::Scale::full);
    lfo.setNoteRate (1);
    lfo.setTempo (60.0);
    EXPECT_DOUBLE_EQ (lfo.getEffectiveRate(), 0.0078125);
    lfo.setSync (false);
    EXPECT_EQ (lfo.getEffectiveRate(), 3.5);
}
