// SPDX-License-Identifier: GPL-3.0-or-later

// What hosts do at the same time, done at the same time; the thread sanitizer watches.

#include <atomic>
#include <thread>

#include <gtest/gtest.h>

#include "core/FrameworkIds.h"
#include "support/MessageLoop.h"
#include "support/PluginInTest.h"
#include "support/Signals.h"

using namespace K7R;
using namespace quilvane;

TEST (Threads, OfAHostMayDoEverythingAtOnce)
{
    struct Listener : Parameter::Listener
    {
        void parameterChanged (Parameter&) override { ++calls; }
        int calls = 0;
    };

    PluginInTest plugin (48000.0, 128);
    plugin.playHead.fails = false;
    plugin.playHead.playing = true;
    plugin.setText (parameterIds::lfo1Sync, "On");
    plugin.parameter (frameworkIds::offlineQuality).setInt (1, true);

    Listener listener;
    plugin.parameter (parameterIds::feedback).addAsyncListener (&listener);

    std::atomic<bool> ends { false };
    std::atomic<bool> isFinite { true };

    std::thread audio (
        [&]
        {
            juce::MidiBuffer midi;

            for (int block = 0; ! ends; ++block)
            {
                auto left = signals::noise (128, static_cast<uint32_t> (block));
                auto right = left;
                plugin.processor.setNonRealtime (block % 20 >= 10);
                plugin.processBlock (left.data(), right.data(), 128, midi, block % 7 == 0);

                for (auto sample : left)
                    if (! std::isfinite (sample))
                        isFinite = false;
            }
        });

    std::thread automation (
        [&]
        {
            for (int i = 0; ! ends; ++i)
            {
                plugin.set (i % 18, static_cast<float> (i % 101) / 100.0f);
                plugin.processor.getPlugin().getHostParameterText (i % 18);
            }
        });

    std::thread state (
        [&]
        {
            juce::MemoryBlock chunk;

            while (! ends)
            {
                plugin.processor.getStateInformation (chunk);
                plugin.processor.setStateInformation (chunk.getData(), static_cast<int> (chunk.getSize()));
            }
        });

    const auto map = juce::parseXML ("<HostParametersMap name='Quilvane 2'><assign hostParam='3' pluginParam='FX'/>"
                                     "<assign hostParam='16' pluginParam='Feedback'/></HostParametersMap>");

    for (int i = 0; i < 40; ++i)
    {
        runMessageLoopFor (10);
        plugin.processor.getPlugin().loadHostMapXml (*map);
        plugin.parameter (parameterIds::centerFrequency).setNormalised (static_cast<float> (i) / 40.0f, true);
        plugin.setText (frameworkIds::realTimeQuality, i % 2 == 0 ? "High" : "Normal");
    }

    ends = true;

    for (auto* thread : { &audio, &automation, &state })
        thread->join();

    EXPECT_TRUE (isFinite);
    EXPECT_GT (listener.calls, 0);
    plugin.parameter (parameterIds::feedback).removeAsyncListener (&listener);
}

TEST (Threads, LearnAndTakeBackWhileControllersMove)
{
    constexpr int numTurns = 4000;

    PluginInTest plugin (48000.0, 64);
    auto& map = plugin.processor.getPlugin().getMidiControlMap();
    auto& learned = plugin.parameter (parameterIds::feedback);
    map.assign (plugin.parameter (parameterIds::fx), 10);
    map.assign (plugin.parameter (parameterIds::lfo1Depth), 11);
    const auto before = map.takeSnapshot();
    std::atomic<bool> ends { false };

    std::thread audio (
        [&]
        {
            std::vector<float> left (64), right (64);

            for (int block = 0; ! ends; ++block)
            {
                juce::MidiBuffer midi;

                for (int i = 0; i < 8; ++i)
                    midi.addEvent (juce::MidiMessage::controllerEvent (1, 10 + (block + i) % 3, block % 128), 8 * i);

                plugin.processBlock (left.data(), right.data(), 64, midi);
            }
        });

    int numLearned = 0, numLost = 0, numNotBack = 0;

    for (int turn = 0; turn < numTurns; ++turn)
    {
        map.startLearn (learned);

        for (int wait = 0; wait < turn % 50; ++wait)
            std::this_thread::yield();

        if (turn % 2 == 0)
        {
            map.cancelLearn();
            numNotBack += map.takeSnapshot().entries != before.entries ? 1 : 0;
        }
        else
        {
            // The learned controller took the place of one entry at most.
            map.stopLearn();
            const auto kept = map.takeSnapshot();
            const auto place = map.getController (learned);
            numLearned += place != MidiControlMap::noController ? 1 : 0;

            for (const auto controller : { 10, 11 })
                if (place != controller
                    && kept.entries[static_cast<size_t> (controller)]
                           != before.entries[static_cast<size_t> (controller)])
                    ++numLost;
        }

        map.restore (before);
    }

    ends = true;
    audio.join();
    EXPECT_GT (numLearned, 0);
    EXPECT_EQ (numLost, 0) << "a displaced parameter was forgotten";
    EXPECT_EQ (numNotBack, 0) << "something of a cancelled learn stayed";
}

TEST (Threads, AMapThatIsLoadedAgainIsNeverEmptyOnTheWay)
{
    PluginInTest plugin (48000.0, 128);
    auto& base = plugin.processor.getPlugin();
    std::atomic<bool> ends { false };
    std::atomic<int> misses { 0 }, looks { 0 };

    std::thread automation (
        [&]
        {
            for (; ! ends; ++looks)
                if (base.getHostParameterName (0) != "LFO 1 Sync" || base.getHostParameterName (16) != "FX")
                    ++misses;
        });

    for (int i = 0; i < 300 || looks < 1000; ++i)
        base.resetHostMap();

    ends = true;
    automation.join();
    EXPECT_EQ (misses, 0);
}
