// SPDX-License-Identifier: GPL-3.0-or-later

// The product against the plain statement of its network, sample by sample.

#include <gtest/gtest.h>

#include "core/FrameworkIds.h"
#include "dsp/phaser/QuilvaneCore.h"
#include "reference/ReferencePhaser.h"
#include "support/PluginInTest.h"
#include "support/Signals.h"

using namespace K7R;
using namespace quilvane;
using namespace quilvane::parameterIds;

namespace
{

// How far the outputs may lie apart, in units in the last place of float: what the network gives is rounded once, and
// so may be off by one. A gain behind that can make two of it, as a place is worth up to twice as much before.
constexpr int64_t allowedUlps = 1, allowedUlpsBehindGain = 2;

// Sanitizers slow the plain model down by an order of magnitude.
constexpr size_t lengthDivisor = QUILVANE_SANITIZED != 0 ? 8 : 1;

/** The plug-in and the plain model, fed with the same of everything. */
class Pair
{
public:
    Pair (double sampleRate, int blockSize, uint32_t seed) : plugin (sampleRate, blockSize), random (seed)
    {
        for (int id = 0; id <= processingQuality; ++id)
            tellModel (id);

        model.prepare (sampleRate);
    }

    void setText (int id, const juce::String& text)
    {
        plugin.setText (id, text);
        tellModel (id);
    }

    void setIndex (int id, int index)
    {
        plugin.parameter (id).setInt (index, true);
        tellModel (id);
    }

    void setQuality (const juce::String& name)
    {
        plugin.setText (frameworkIds::realTimeQuality, name);
        tellModel (processingQuality);
    }

    /** Renders one block of each, with the events that were asked for, and compares. */
    void renderBlock (std::vector<float> left, std::vector<float> right)
    {
        const auto bypassed = bypasses && random.nextInt (8) == 0;

        if (automates && random.nextInt (3) == 0)
        {
            const auto id = random.nextInt (numPresetParameters);
            plugin.set (id, random.nextFloat());
            tellModel (id);
        }

        if (hasTransport)
            moveTransport();

        juce::MidiBuffer midi;

        if (hasMidi)
            for (int i = random.nextInt (6); --i >= 0;)
                midi.addEvent (juce::MidiMessage::controllerEvent (1 + random.nextInt (16), random.nextInt (128),
                                                                   random.nextInt (128)),
                               random.nextInt (2 * static_cast<int> (left.size())));

        auto expectedLeft = left;
        auto expectedRight = right;
        const auto size = static_cast<int> (left.size());
        plugin.processBlock (left.data(), right.data(), size, midi, bypassed);

        {
            const juce::ScopedNoDenormals noDenormals;
            model.processStereo (expectedLeft.data(), expectedRight.data(), expectedLeft.data(), expectedRight.data(),
                                 size, bypassed);
        }

        for (size_t i = 0; i < left.size(); ++i)
        {
            isFinite = isFinite && std::isfinite (left[i]) && std::isfinite (right[i]);
            farthest = std::max ({ farthest, signals::ulpDistance (left[i], expectedLeft[i]),
                                   signals::ulpDistance (right[i], expectedRight[i]) });
        }

        loudest = std::max (loudest, *std::max_element (left.begin(), left.end()));

        const auto* core =
            dynamic_cast<QuilvaneCore*> (static_cast<Quilvane&> (plugin.processor.getPlugin()).getCore());
        EXPECT_EQ (core->getLFO1Value(), model.getLFO1Value());
        EXPECT_EQ (core->getLFO2Value(), model.getLFO2Value());
        EXPECT_EQ (core->getLeftMeter(), model.getLeftMeter());
        EXPECT_EQ (core->getRightMeter(), model.getRightMeter());
    }

    /** Renders noise of the given length, and then says whether the two agreed. */
    void renderNoise (size_t numSamples)
    {
        numSamples /= lengthDivisor;
        const auto block = static_cast<size_t> (plugin.block);

        for (size_t start = 0; start < numSamples; start += block)
        {
            auto left = signals::noise (block, static_cast<uint32_t> (start + 1));
            auto right = signals::noise (block, static_cast<uint32_t> (start + 77));

            for (size_t i = 0; i < block; ++i)
            {
                if (start + i <= numSamples / 8 || start + i >= numSamples * 3 / 4 + 5)
                    continue;

                // Quiet, but not 0: a side at rest gives 0.
                if (leftFallsSilent || bothFallSilent)
                    left[i] = 1.0e-6f;

                if (bothFallSilent)
                    right[i] = 1.0e-6f;
            }

            renderBlock (std::move (left), std::move (right));
        }

        EXPECT_TRUE (isFinite);
        EXPECT_LE (farthest, automates ? allowedUlpsBehindGain : allowedUlps);
        EXPECT_GT (loudest, 0.01f);
    }

    bool automates = false;
    bool bypasses = false;
    bool hasMidi = false;
    bool hasTransport = false;
    bool leftFallsSilent = false;
    bool bothFallSilent = false;

    int64_t farthest = 0;
    bool isFinite = true;
    PluginInTest plugin;

private:
    void tellModel (int id)
    {
        const auto& p = plugin.parameter (id);
        model.parameterChanged (id, { p.getFloat(), p.getNormalised(), p.getInt(), p.getBool() });
    }

    void moveTransport()
    {
        auto& head = plugin.playHead;
        head.fails = random.nextInt (5) == 0;
        head.playing = random.nextInt (4) != 0;

        if (random.nextInt (6) == 0)
            head.bpm = 40.0 + 200.0 * random.nextDouble();

        if (random.nextInt (10) == 0)
            head.ppq = 1000.0 * random.nextDouble() - 20.0;

        if (head.fails)
            return;

        model.tempoChanged (head.bpm);

        if (head.playing)
            model.songPositionChanged (head.ppq);
    }

    reference::ReferencePhaser model;
    juce::Random random;
    float loudest = 0.0f;
};

void makeLively (Pair& pair)
{
    pair.setText (lfo1Depth, "40");
    pair.setText (lfo2Depth, "15");
    pair.setText (lfo1Rate, "1.7");
    pair.setText (lfo2Rate, "11");
    pair.setText (stereoPhaseId, "75");
    pair.setText (feedback, "65");
    pair.setText (stagesNumber, "6");
    pair.setText (fx, "80");
    pair.setText (outputVolume, "0"); // a gain of exactly 1
}

} // namespace

TEST (AgainstTheReference, EverythingAtOnceAtEveryRateQualityAndBlockSize)
{
    const int blockSizes[] { 1, 7, 64, 512, 4096 };
    int turn = 0;

    for (double rate : { 44100.0, 48000.0, 88200.0, 96000.0, 192000.0 })
    {
        for (const auto* quality : { "Normal", "High" })
        {
            for (int i = 0; i < 2; ++i, ++turn)
            {
                const auto blockSize = blockSizes[turn % 5];
                SCOPED_TRACE (testing::Message() << rate << " Hz, " << quality << ", blocks of " << blockSize);

                Pair pair (rate, blockSize, static_cast<uint32_t> (turn + 1));
                makeLively (pair);
                pair.setQuality (quality);
                pair.automates = pair.bypasses = pair.hasMidi = pair.hasTransport = true;
                pair.renderNoise (40960);
            }
        }
    }
}

TEST (AgainstTheReference, EveryWaveform)
{
    for (int waveform = 0; waveform < 7; ++waveform)
    {
        SCOPED_TRACE (waveform);
        Pair pair (48000.0, 64, 1);
        makeLively (pair);
        pair.setIndex (lfo1Waveform, waveform);
        pair.setIndex (lfo2Waveform, 6 - waveform);
        pair.setText (lfo2Rate, "19");
        pair.renderNoise (30000);
    }
}

TEST (AgainstTheReference, EveryStageCountWithAndWithoutFeedback)
{
    for (const auto* stages : { "2", "4", "6", "8" })
    {
        for (const auto* amount : { "0", "100" })
        {
            SCOPED_TRACE (testing::Message() << stages << " stages, feedback " << amount);
            Pair pair (44100.0, 512, 2);
            makeLively (pair);
            pair.setText (stagesNumber, stages);
            pair.setText (feedback, amount);
            pair.renderNoise (20000);

            // Stages that come back bring the states that they had.
            pair.setText (stagesNumber, "8");
            pair.renderNoise (20000);
        }
    }
}

TEST (AgainstTheReference, EveryNoteValueAndScale)
{
    for (int note = 0; note < 11; ++note)
    {
        for (const auto* scale : { "Triplet", "Dotted", "Full" })
        {
            SCOPED_TRACE (testing::Message() << "note " << note << " " << scale);
            Pair pair (48000.0, 512, static_cast<uint32_t> (note + 1));
            makeLively (pair);

            for (int id : { lfo1Sync, lfo2Sync })
                pair.setText (id, "On");

            pair.setIndex (lfo1NoteRate, note);
            pair.setText (lfo1NoteScale, scale);
            pair.setIndex (lfo2NoteRate, 10 - note);
            pair.setText (lfo2NoteScale, scale);
            pair.hasTransport = true;
            pair.renderNoise (8192);
        }
    }
}

TEST (AgainstTheReference, SidesThatFallSilentAndWake)
{
    // Within a block, and with small ones while there are values ahead.
    for (const auto& [both, blockSize] :
         { std::pair (false, 512), std::pair (true, 512), std::pair (false, 7), std::pair (true, 7) })
    {
        SCOPED_TRACE (testing::Message() << (both ? "both" : "left") << ", blocks of " << blockSize);
        Pair pair (44100.0, blockSize, 3);
        makeLively (pair);
        pair.leftFallsSilent = ! both;
        pair.bothFallSilent = both;
        pair.renderNoise (60000 * lengthDivisor);
    }
}

TEST (Core, TakesBuffersThatAreTheSame)
{
    // Which buffer inLeft, inRight, outLeft and outRight are.
    struct Arrangement
    {
        const char* name;
        std::array<int, 4> buffers;
    };

    constexpr Arrangement arrangements[] { { "in place", { 0, 1, 0, 1 } },
                                           { "swapped", { 0, 1, 1, 0 } },
                                           { "one input", { 0, 0, 2, 3 } },
                                           { "one input, in place", { 0, 0, 0, 1 } },
                                           { "one input, in place on the right", { 0, 0, 1, 0 } } };

    for (const auto& arrangement : arrangements)
    {
        SCOPED_TRACE (arrangement.name);
        const auto& buffers = arrangement.buffers;
        PluginInTest apart (48000.0, 512), shared (48000.0, 512);

        for (int block = 0; block < 400 / static_cast<int> (lengthDivisor); ++block)
        {
            const auto size = static_cast<size_t> (1 + (block * 37) % 400);

            // First one side is silent until its gate closes, then the other.
            std::array<std::vector<float>, 4> memory;

            for (size_t i = 0; i < memory.size(); ++i)
                memory[i] = i < 2 && (block / 200 + static_cast<int> (i)) % 2 == 0
                                ? std::vector<float> (size)
                                : signals::noise (size, static_cast<uint32_t> (4 * block) + static_cast<uint32_t> (i));

            const auto inLeft = memory[static_cast<size_t> (buffers[0])];
            const auto inRight = memory[static_cast<size_t> (buffers[1])];
            std::vector<float> left (size, 7.0f), right (size, 7.0f); // all of it has to be written

            const auto process = [&] (PluginInTest& plugin, const float* a, const float* b, float* c, float* d)
            {
                const juce::ScopedNoDenormals noDenormals;
                static_cast<Quilvane&> (plugin.processor.getPlugin())
                    .getCore()
                    ->processStereo (a, b, c, d, static_cast<int> (size), block % 50 == 49);
            };

            const auto at = [&] (size_t i) { return memory[static_cast<size_t> (buffers[i])].data(); };
            process (apart, inLeft.data(), inRight.data(), left.data(), right.data());
            process (shared, at (0), at (1), at (2), at (3));

            ASSERT_TRUE (std::equal (left.begin(), left.end(), at (2)));
            ASSERT_TRUE (std::equal (right.begin(), right.end(), at (3)));
        }
    }
}

TEST (AgainstTheReference, ExtremesOfFrequencyAndQualitySwitches)
{
    Pair pair (48000.0, 64, 4);
    makeLively (pair);
    pair.setText (lfo1Depth, "100");
    pair.setText (lfo2Depth, "100");

    for (const auto* centre : { "12000", "50", "5000" })
    {
        pair.setText (centerFrequency, centre);

        for (const auto* quality : { "High", "Normal", "High" })
        {
            pair.setQuality (quality);
            pair.renderNoise (6400);
        }
    }
}

TEST (AgainstTheReference, TheLongRun)
{
    // Ten minutes of music would show no more: the states are forgotten within a second, the phases are compared bit
    // for bit after each block.
    Pair pair (48000.0, 512, 5);
    makeLively (pair);
    pair.automates = pair.hasTransport = true;
    pair.renderNoise (20 * 48000);
}
