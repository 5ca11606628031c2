// SPDX-License-Identifier: GPL-3.0-or-later

// How a host's block reaches the core: channels, MIDI, tempo and position.

#include <limits>
#include <sstream>

#include <gtest/gtest.h>

#include "effect/GlassRailEffectCore.h"
#include "support/PluginInTest.h"
#include "support/TestEffect.h"

using namespace K7R;
using namespace quilvane;

namespace
{

/** Writes down every call, and adds one to each sample. */
class RecordingCore final : public GlassRailEffectCore
{
public:
    RecordingCore (const SampleRateConstants& constants, std::ostringstream& stream) :
        GlassRailEffectCore (constants),
        log (stream)
    {
    }

    void prepare (bool rateChanged) override { log << (rateChanged ? "prepare! " : "prepare "); }
    void tempoChanged (double bpm) override { log << "tempo " << bpm << " "; }
    void songPositionChanged (double ppq) override { log << "position " << ppq << " "; }

    void processStereo (const float* inLeft, const float* inRight, float* outLeft, float* outRight, int numSamples,
                        bool bypassed) override
    {
        log << numSamples << (bypassed ? "b " : " ");

        for (int i = 0; i < numSamples; ++i)
        {
            const auto left = inLeft[i];
            const auto right = inRight[i];
            outLeft[i] = left + 1.0f;
            outRight[i] = right + 1.0f;
        }
    }

    void processMono (float*, int numSamples, bool) override { log << "mono " << numSamples << " "; }

private:
    std::ostringstream& log;
};

class RecordingEffect final : public TestEffect
{
public:
    explicit RecordingEffect (std::ostringstream& stream) : log (stream) {}

protected:
    std::unique_ptr<GlassRailEffectCore> makeCore() override
    {
        return std::make_unique<RecordingCore> (getRateConstants(), log);
    }

    bool usesTransport() const override { return true; }
    void tempoChanged() override { log << "new tempo "; }

    void handleController (const juce::MidiMessage& message) override
    {
        log << "cc" << message.getControllerNumber() << " ";
    }

private:
    std::ostringstream& log;
};

class EffectFrame : public testing::Test
{
protected:
    EffectFrame() { takeLog(); }

    std::string takeLog()
    {
        auto text = log.str();
        log.str ({});
        return text;
    }

    static juce::MidiBuffer controllers (std::initializer_list<std::pair<int, int>> positionsAndNumbers)
    {
        juce::MidiBuffer midi;

        for (const auto& [position, number] : positionsAndNumbers)
            midi.addEvent (juce::MidiMessage::controllerEvent (1, number, 64), position);

        return midi;
    }

    std::string process (int numSamples, juce::MidiBuffer midi = {}, bool bypassed = false)
    {
        std::vector<float> left (static_cast<size_t> (numSamples) + 1), right (left.size());
        plugin.processBlock (left.data(), right.data(), numSamples, midi, bypassed);

        for (int i = 0; i < numSamples; ++i)
            EXPECT_EQ (left[static_cast<size_t> (i)] + right[static_cast<size_t> (i)], 2.0f) << i;

        return takeLog();
    }

    std::ostringstream log;
    PluginInTest plugin { 48000.0, 512, std::make_unique<RecordingEffect> (log) };
};

} // namespace

TEST_F (EffectFrame, BlocksAreCutAtEventsAndControllersComeBetweenTheirSamples)
{
    EXPECT_EQ (process (100), "100 ");
    EXPECT_EQ (process (100, controllers ({ { 30, 1 }, { 70, 2 } })), "30 cc1 40 cc2 30 ");
    EXPECT_EQ (process (100, controllers ({ { 0, 1 } })), "cc1 100 ");
    EXPECT_EQ (process (100, controllers ({ { 50, 1 }, { 50, 2 } })), "50 cc1 cc2 50 ");
    EXPECT_EQ (process (100, controllers ({ { 99, 1 } }), true), "99b cc1 1b ");
    EXPECT_EQ (process (100, controllers ({ { -1, 1 } })), "100 ");

    // Other messages cut the block as well, and are dropped; so is a controller cut short.
    juce::MidiBuffer others;
    others.addEvent (juce::MidiMessage::noteOn (1, 60, 1.0f), 40);
    const juce::uint8 cutShort[] { 0xb0, 7 };
    others.addEvent (cutShort, 2, 60);
    EXPECT_EQ (process (100, others), "40 20 40 ");
}

TEST_F (EffectFrame, EventsBeyondTheBlockWaitForTheirOwn)
{
    EXPECT_EQ (process (100, controllers ({ { 100, 1 }, { 299, 2 } })), "100 ");
    EXPECT_EQ (process (100, controllers ({ { 0, 3 } })), "cc1 cc3 100 ");
    EXPECT_EQ (process (0), "");
    EXPECT_EQ (process (100), "99 cc2 1 ");
    EXPECT_EQ (process (0, controllers ({ { 5, 4 } })), "");
    EXPECT_EQ (process (100), "5 cc4 95 ");

    process (100, controllers ({ { 150, 5 } }));
    plugin.prepare();
    EXPECT_EQ (takeLog(), "prepare ");
    EXPECT_EQ (process (100), "100 ");
}

TEST_F (EffectFrame, AFloodOfEventsIsBoundedAndTheLaterOnesAreDropped)
{
    juce::MidiBuffer flood;

    for (int i = 0; i < 5000; ++i)
        flood.addEvent (juce::MidiMessage::controllerEvent (1, 1, 1), 100000);

    EXPECT_EQ (process (100, flood), "100 ");
    EXPECT_EQ (process (100, controllers ({ { 50, 1 } })), "100 ");

    // Events for the far future aren't kept at all.
    plugin.prepare();
    takeLog();
    juce::MidiBuffer future;

    for (int i = 0; i < 5000; ++i)
        future.addEvent (juce::MidiMessage::controllerEvent (1, 1, 1), std::numeric_limits<int>::max() - i);

    EXPECT_EQ (process (100, future), "100 ");
    EXPECT_EQ (process (100, controllers ({ { 50, 1 } })), "50 cc1 50 ");
}

TEST_F (EffectFrame, TempoAndPositionComeBeforeTheBlock)
{
    auto& head = plugin.playHead;
    head.fails = false;
    head.bpm = 90.0;
    head.ppq = 3.5;
    EXPECT_EQ (process (10), "new tempo tempo 90 10 ");
    EXPECT_EQ (process (10), "tempo 90 10 ");

    head.playing = true;
    EXPECT_EQ (process (0), "tempo 90 position 3.5 ");

    head.fails = true;
    EXPECT_EQ (process (10), "10 ");

    head.fails = false;
    head.tellsTempo = false;
    head.ppq = 4.0;
    EXPECT_EQ (process (0), "tempo 90 position 4 ");

    head.tellsTempo = true;

    for (double nonsense : { -1.0, 1.0e9, std::numeric_limits<double>::infinity(), std::nan ("") })
    {
        head.bpm = nonsense;
        head.ppq = std::isfinite (nonsense) ? 4.0 : nonsense;
        EXPECT_EQ (process (0), std::isfinite (nonsense) ? "tempo 90 position 4 " : "tempo 90 ");
    }

    head.bpm = 90.0;
    head.ppq = 1.0e308;
    EXPECT_EQ (process (0), "tempo 90 ");
}

TEST_F (EffectFrame, PrepareTellsOfANewRateOnly)
{
    plugin.prepare();
    EXPECT_EQ (takeLog(), "prepare ");
    plugin.rate = 96000.0;
    plugin.prepare();
    EXPECT_EQ (takeLog(), "prepare! ");

    for (double nonsense : { 0.0, -48000.0, 1.0, 1.0e12, std::nan ("") })
    {
        plugin.processor.prepareToPlay (nonsense, 512);
        EXPECT_EQ (takeLog(), "prepare ");
    }

    EXPECT_EQ (plugin.processor.getPlugin().getRateConstants().sampleRate, 96000.0);

    // The first time always, also at the rate that the constants are built for.
    std::ostringstream other;
    const PluginInTest first (44100.0, 512, std::make_unique<RecordingEffect> (other));
    EXPECT_EQ (other.str(), "prepare! ");
}

TEST_F (EffectFrame, AMonoInputFeedsBothSidesAndMonoOutputIsLeftAlone)
{
    using Layout = juce::AudioProcessor::BusesLayout;
    const auto layout = [] (const juce::AudioChannelSet& in, const juce::AudioChannelSet& out)
    {
        Layout result;
        result.inputBuses.add (in);
        result.outputBuses.add (out);
        return result;
    };

    const auto mono = juce::AudioChannelSet::mono();
    const auto stereo = juce::AudioChannelSet::stereo();

    ASSERT_TRUE (plugin.processor.setBusesLayout (layout (mono, stereo)));
    std::vector<float> left { 1.0f, 2.0f, 3.0f }, right { 9.0f, 9.0f, 9.0f };
    juce::MidiBuffer midi;
    plugin.processBlock (left.data(), right.data(), 3, midi);
    EXPECT_EQ (left, (std::vector<float> { 2.0f, 3.0f, 4.0f }));
    EXPECT_EQ (right, left);

    takeLog();
    ASSERT_TRUE (plugin.processor.setBusesLayout (layout (mono, mono)));
    plugin.processBlock (left.data(), right.data(), 3, midi);
    EXPECT_EQ (takeLog(), "mono 3 ");

    // The phaser itself is never mono, and no effect takes other sets.
    PluginInTest phaser;
    EXPECT_TRUE (phaser.processor.checkBusesLayoutSupported (layout (stereo, stereo)));
    EXPECT_TRUE (phaser.processor.checkBusesLayoutSupported (layout (mono, stereo)));
    EXPECT_FALSE (phaser.processor.checkBusesLayoutSupported (layout (mono, mono)));
    EXPECT_FALSE (phaser.processor.checkBusesLayoutSupported (layout (stereo, mono)));
    EXPECT_FALSE (phaser.processor.checkBusesLayoutSupported (layout (juce::AudioChannelSet::disabled(), stereo)));
    EXPECT_FALSE (phaser.processor.checkBusesLayoutSupported (layout (juce::AudioChannelSet::create5point1(), stereo)));
}
