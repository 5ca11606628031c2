// SPDX-License-Identifier: GPL-3.0-or-later

#include "EditorBench.h"

#include <cstdio>
#include <ctime>
#include <functional>
#include <malloc.h>
#include <vector>

#include "ShownPlugin.h"
#include "core/PluginAudioProcessor.h"
#include "editor/BasePluginEditor.h"
#include "support/MessageLoop.h"

namespace
{

using namespace K7R;
using host::ShownPlugin;

constexpr int repetitions = 7;
constexpr int watchedMs = 4000;
constexpr int blockSize = 480;
constexpr double blockMs = 10.0;

const juce::File& getData()
{
    static const juce::File data (QUILVANE_DATA_FOLDER);
    return data;
}

double medianMs (const std::function<double()>& measure)
{
    std::vector<double> times;

    for (int i = 0; i < repetitions; ++i)
        times.push_back (measure());

    std::sort (times.begin(), times.end());
    return times[times.size() / 2];
}

double elapsedMs (const std::function<void()>& work)
{
    const auto start = juce::Time::getMillisecondCounterHiRes();
    work();
    return juce::Time::getMillisecondCounterHiRes() - start;
}

double cpuMs (clockid_t clock)
{
    timespec time {};
    clock_gettime (clock, &time);
    return 1000.0 * static_cast<double> (time.tv_sec) + 1.0e-6 * static_cast<double> (time.tv_nsec);
}

void print (const char* label, double value)
{
    std::printf ("  %-50s %12.2f\n", label, value);
}

//==============================================================================
void printOpening (const juce::String& skin)
{
    const auto first = medianMs (
        [&]
        {
            ShownPlugin plugin (getData(), skin);
            return elapsedMs (
                [&]
                {
                    plugin.open();
                    plugin.takePicture();
                });
        });

    ShownPlugin plugin (getData(), skin);
    plugin.open();
    const auto again = medianMs (
        [&]
        {
            return elapsedMs (
                [&]
                {
                    plugin.open();
                    plugin.takePicture();
                });
        });

    print ((skin + ", opened and painted, ms").toRawUTF8(), first);
    print ((skin + ", opened again and painted, ms").toRawUTF8(), again);
}

void printSwitching (const juce::String& from, const juce::String& to)
{
    ShownPlugin plugin (getData(), from);
    plugin.open();
    auto& editor = plugin.getEditor();

    const auto switchTo = [&] (const juce::String& name)
    {
        editor.switchSkin (name);
        const auto* old = editor.getSkinPanel();
        runMessageLoopUntil ([&] { return editor.getSkinPanel() != old; });
        plugin.takePicture();
    };

    const auto time = medianMs (
        [&]
        {
            const auto ms = elapsedMs ([&] { switchTo (to); });
            switchTo (from);
            return ms;
        });

    print ((from + " to " + to + " and painted, ms").toRawUTF8(), time);
}

void printMemory (const juce::String& skin)
{
    ShownPlugin plugin (getData(), skin);
    const auto before = mallinfo2();
    plugin.open();
    const auto after = mallinfo2();
    print ((skin + ", heap of the open editor, MiB").toRawUTF8(),
           static_cast<double> (after.uordblks + after.hblkhd - before.uordblks - before.hblkhd) / (1024.0 * 1024.0));
}

/** The share of one core that the messages take which come by themselves, and all threads but this one.
    @param player where not null, plays sound, whose own time isn't counted */
double measureLoad (PluginAudioProcessor* player)
{
    juce::Random random (1);
    juce::AudioBuffer<float> buffer (2, blockSize);
    juce::MidiBuffer midi;
    double messagesMs = 0.0;

    const auto start = juce::Time::getMillisecondCounterHiRes();
    const auto otherThreadsMs = [] { return cpuMs (CLOCK_PROCESS_CPUTIME_ID) - cpuMs (CLOCK_THREAD_CPUTIME_ID); };
    const auto othersAtStart = otherThreadsMs();

    for (double next = start; next - start < watchedMs; next += blockMs)
    {
        while (juce::Time::getMillisecondCounterHiRes() < next)
        {
            const auto before = cpuMs (CLOCK_THREAD_CPUTIME_ID);

            if (juce::dispatchNextMessageOnSystemQueue (true))
                messagesMs += cpuMs (CLOCK_THREAD_CPUTIME_ID) - before;
            else
                juce::Thread::sleep (1);
        }

        if (player == nullptr)
            continue;

        // Louder and softer, so that the meters move.
        const auto gain = 0.5f + 0.45f * std::sin (static_cast<float> (next) * 0.004f);

        for (int channel = 0; channel < 2; ++channel)
            for (int i = 0; i < blockSize; ++i)
                buffer.setSample (channel, i, gain * (2.0f * random.nextFloat() - 1.0f));

        player->processBlock (buffer, midi);
    }

    return 100.0 * (messagesMs + otherThreadsMs() - othersAtStart) / (juce::Time::getMillisecondCounterHiRes() - start);
}

void printLoads (const juce::String& skin)
{
    ShownPlugin plugin (getData(), skin);
    plugin.getProcessor().releaseResources();
    plugin.open();
    plugin.getWindow().addToDesktop (juce::ComponentPeer::windowHasTitleBar);
    plugin.getWindow().setVisible (true);
    runMessageLoopFor (500);
    print ((skin + ", open at rest, % of a core").toRawUTF8(), measureLoad (nullptr));

    plugin.getProcessor().prepareToPlay (48000.0, blockSize);
    print ((skin + ", meters and lights moving, % of a core").toRawUTF8(), measureLoad (&plugin.getProcessor()));
}

/** Instances that do nothing, and no window. */
void printInstancesAtRest()
{
    constexpr int numInstances = 40;
    std::vector<std::unique_ptr<ShownPlugin>> plugins;

    for (int i = 0; i < numInstances; ++i)
        plugins.push_back (std::make_unique<ShownPlugin> (getData(), "Big"));

    print ((juce::String (numInstances) + " instances at rest without windows, % of a core").toRawUTF8(),
           measureLoad (nullptr));
}

} // namespace

void printEditorFigures()
{
    std::printf ("\nEditor\n");

    for (const auto* skin : { "Big", "Small" })
        printOpening (skin);

    printSwitching ("Big", "Small");
    printSwitching ("Small", "Big");

    for (const auto* skin : { "Big", "Small" })
        printMemory (skin);

    printInstancesAtRest();

    if (juce::SystemStats::getEnvironmentVariable ("DISPLAY", {}).isEmpty())
    {
        std::printf ("  (no display: the costs of an open window aren't measured)\n");
        return;
    }

    for (const auto* skin : { "Big", "Small" })
        printLoads (skin);
}
