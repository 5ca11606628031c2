// SPDX-License-Identifier: GPL-3.0-or-later

// What a listener hears of the whole plug-in, measured.

#include <complex>

#include <gtest/gtest.h>

#include "support/PluginInTest.h"
#include "support/Signals.h"

using namespace K7R;
using namespace quilvane;
using namespace quilvane::parameterIds;

namespace
{

constexpr double sampleRate = 48000.0;

/** The plug-in with both depths at 0, so that nothing moves. */
class Static : public PluginInTest
{
public:
    Static() : PluginInTest (sampleRate, 512) {}

    /** Lets the smoothed values arrive, then measures the left channel's impulse response. */
    std::vector<float> impulseResponse()
    {
        render (signals::noise (24000, 1, 0.1f));
        std::vector<float> rest (60000);
        render (rest); // until the gate closes

        rest.assign (32768, 0.0f);
        rest[0] = 1.0f;
        return render (rest);
    }
};

double magnitude (const std::vector<float>& response, double hz)
{
    std::complex<double> sum;

    for (size_t i = 0; i < response.size(); ++i)
        sum += static_cast<double> (response[i])
               * std::polar (1.0, -2.0 * signals::pi * hz * static_cast<double> (i) / sampleRate);

    return std::abs (sum);
}

/** The frequency between two bounds at which a response is least. */
double findNotch (const std::vector<float>& response, double low, double high)
{
    for (int round = 0; round < 4; ++round)
    {
        constexpr int steps = 16;
        double best = low, least = 1.0e9;

        for (int i = 0; i <= steps; ++i)
        {
            const auto hz = low * std::pow (high / low, static_cast<double> (i) / steps);

            if (const auto m = magnitude (response, hz); m < least)
            {
                least = m;
                best = hz;
            }
        }

        const auto ratio = std::pow (high / low, 1.5 / steps);
        low = best / ratio;
        high = best * ratio;
    }

    return std::sqrt (low * high);
}

double peakMagnitude (const std::vector<float>& response)
{
    double peak = 0.0;

    for (double hz = 30.0; hz < 15000.0; hz *= 1.02)
        peak = std::max (peak, magnitude (response, hz));

    return peak;
}

} // namespace

TEST (Sound, NotchesLieWhereTheStagesPutThem)
{
    // The note of the centre, and with it the frequency, follow from the normalised value.
    constexpr auto normalised = 0.42f;
    const auto note = 0.42 * 93.86314 + 31.349958;
    const auto centre = 13.75 * std::pow (2.0, (note - 9.0) / 12.0);

    for (int stages : { 2, 4, 6, 8 })
    {
        Static plugin;
        plugin.set (centerFrequency, normalised);
        plugin.set (stagesNumber, static_cast<float> (stages / 2 - 1) / 3.0f);
        const auto response = plugin.impulseResponse();

        // A chain of N sections turns the phase by -2 N atan (f / centre); the sum with the unturned signal
        // vanishes where that is an odd multiple of 180 degrees.
        for (int k = 0; k < stages / 2; ++k)
        {
            const auto expected = centre * std::tan ((2 * k + 1) * signals::pi / (2.0 * stages));
            const auto found = findNotch (response, expected / 1.2, expected * 1.2);
            EXPECT_NEAR (found / expected, 1.0, 0.004) << stages << " stages, notch " << k;
            EXPECT_LT (signals::decibels (magnitude (response, found)), -40.0) << stages << " stages, notch " << k;
        }

        // Between and beside them, the sound is at its level.
        EXPECT_NEAR (signals::decibels (peakMagnitude (response)), 0.0, 0.8) << stages;
    }
}

TEST (Sound, SweepsAtTheRateOfTheOscillator)
{
    constexpr size_t window = 96; // 2 ms

    struct Case
    {
        const char* sync;
        const char* rateText;
        const char* scale;
        double seconds;
    };

    for (const auto& [sync, rateText, scale, seconds] :
         { Case { "Off", "5", "Full", 0.2 }, Case { "Off", "2.5", "Full", 0.4 }, Case { "On", "5", "Full", 0.5 },
           Case { "On", "5", "Triplet", 1.0 / 3.0 }, Case { "On", "5", "Dotted", 0.75 } })
    {
        PluginInTest plugin (sampleRate, 480);
        plugin.playHead.fails = false;
        plugin.playHead.playing = true;
        plugin.setText (lfo1Sync, sync);
        plugin.setText (lfo1Rate, rateText);
        plugin.setText (lfo1NoteRate, "1/4");
        plugin.setText (lfo1NoteScale, scale);
        plugin.setText (lfo1Waveform, "Ramp Up");
        plugin.setText (lfo1Depth, "60");

        const auto output = plugin.render (signals::sine (5 * 48000, 1000.0, sampleRate));
        const std::vector<float> settled (output.begin() + 48000, output.end());
        const auto period = signals::findPeriod (signals::envelope (settled, window), 60, 450);
        EXPECT_NEAR (static_cast<double> (period * window) / sampleRate, seconds, 0.003)
            << sync << " " << rateText << scale;
    }
}

TEST (Sound, ReportsNoLatencyAndEndsInExactSilence)
{
    Static plugin;
    plugin.setText (fx, "0");
    const auto response = plugin.impulseResponse();

    // The filters' own delay is a few samples, and isn't reported.
    const auto largest = std::max_element (response.begin(), response.end(),
                                           [] (float a, float b) { return std::abs (a) < std::abs (b); });
    EXPECT_EQ (plugin.processor.getLatencySamples(), 0);
    EXPECT_LE (largest - response.begin(), 6);

    // The envelope falls from 1 to the threshold: 0.63 s after the last sample that is not silence, or
    // somewhat earlier at higher rates.
    for (double hostRate : { 44100.0, 48000.0, 192000.0 })
    {
        PluginInTest gated (hostRate, 512);
        auto input = signals::noise (static_cast<size_t> (hostRate), 1);
        const auto last = input.size() / 5;
        std::fill (input.begin() + static_cast<std::ptrdiff_t> (last) + 1, input.end(), 1.5e-5f);
        input[last] = 0.5f;
        const auto output = gated.render (input);

        auto lastSound = output.size();
        while (lastSound > 0 && output[lastSound - 1] == 0.0f)
            --lastSound;

        const auto seconds = static_cast<double> (lastSound - last) / hostRate;
        const auto decay = 1.0 - 0.0004 * 2.0 * (1.0 - std::pow (0.5, 44100.0 / hostRate));
        const auto expected = std::log (1.52587e-5) / std::log (decay) / hostRate;
        EXPECT_NEAR (seconds, expected, 2.0 / hostRate) << hostRate;
    }
}

TEST (Sound, GainsOfMixVolumeAndFeedbackAreStagedAsTheyRead)
{
    const auto levelAt1k = [] (const char* fxText, const char* volume, const char* feedbackText)
    {
        Static plugin;
        plugin.setText (fx, fxText);
        plugin.setText (outputVolume, volume);
        plugin.setText (feedback, feedbackText);
        return signals::decibels (magnitude (plugin.impulseResponse(), 1000.0));
    };

    const auto dry = levelAt1k ("0", "0", "0");
    EXPECT_NEAR (dry, 0.0, 0.1);
    EXPECT_NEAR (levelAt1k ("0", "12", "100") - dry, 12.0, 0.05);
    EXPECT_NEAR (levelAt1k ("0", "-20", "0") - dry, -20.0, 0.01);

    // Silence at the bottom.
    Static mute;
    mute.set (outputVolume, 0.0f);
    const auto silence = mute.impulseResponse();
    EXPECT_LT (signals::rms (silence, 0, silence.size()), 1.0e-12);

    // Half of the mix leaves half of the level in a notch.
    const auto notchLevel = [] (const char* fxText)
    {
        Static plugin;
        plugin.setText (stagesNumber, "2");
        plugin.set (centerFrequency, 0.42f);
        plugin.setText (fx, fxText);
        const auto response = plugin.impulseResponse();
        return signals::decibels (magnitude (response, findNotch (response, 300.0, 700.0)));
    };

    EXPECT_LT (notchLevel ("100"), -40.0);
    EXPECT_NEAR (notchLevel ("50"), -6.02, 0.3);
    EXPECT_NEAR (notchLevel ("0"), 0.0, 0.1);

    // Feedback sharpens: peaks rise with its amount, and stay bounded at its end.
    double before = 0.0;

    for (const auto* amount : { "0", "30", "60", "100" })
    {
        Static plugin;
        plugin.setText (stagesNumber, "6");
        plugin.setText (feedback, amount);
        const auto peak = signals::decibels (peakMagnitude (plugin.impulseResponse()));
        EXPECT_GT (peak, before - 0.6) << amount;
        EXPECT_LT (peak, 24.0) << amount;
        before = peak;
    }

    EXPECT_GT (before, 6.0);
}

TEST (Sound, StereoPhaseSweepsTheSidesAgainstEachOther)
{
    const auto correlation = [] (const char* degrees)
    {
        PluginInTest plugin (sampleRate, 512);
        plugin.setText (stereoPhaseId, degrees);
        plugin.setText (lfo1Waveform, "Triangle");
        plugin.setText (lfo1Rate, "4");
        plugin.setText (lfo1Depth, "25");
        plugin.setText (stagesNumber, "2");
        plugin.setText (centerFrequency, "500");
        auto left = signals::sine (4 * 48000, 2500.0, sampleRate);
        auto right = left;
        plugin.process (left, right);

        const auto a = signals::envelope (left, 480), b = signals::envelope (right, 480);
        double sumA = 0.0, sumB = 0.0, ab = 0.0, aa = 0.0, bb = 0.0;
        const auto first = size_t { 100 };

        for (size_t i = first; i < a.size(); ++i)
        {
            sumA += a[i];
            sumB += b[i];
        }

        const auto n = static_cast<double> (a.size() - first);

        for (size_t i = first; i < a.size(); ++i)
        {
            ab += (a[i] - sumA / n) * (b[i] - sumB / n);
            aa += (a[i] - sumA / n) * (a[i] - sumA / n);
            bb += (b[i] - sumB / n) * (b[i] - sumB / n);
        }

        return ab / std::sqrt (aa * bb);
    };

    EXPECT_EQ (correlation ("0"), 1.0);
    EXPECT_LT (correlation ("180"), -0.5);
}
