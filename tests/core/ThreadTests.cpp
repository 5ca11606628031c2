// SPDX-License-Identifier: GPL-3.0-or-later

// What hosts do at the same time, done at the same time; the thread sanitizer watches.

#include <atomic>
#include <thread>

#include <gtest/gtest.h>

#include "core/FrameworkIds.h"
#include "support/MessageLoop.h"
#include "support/PluginInTest.h"
#include "support/Signals.h"

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
