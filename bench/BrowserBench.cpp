// SPDX-License-Identifier: GPL-3.0-or-later

#include "BrowserBench.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <functional>
#include <thread>
#include <vector>

#include "ShownPlugin.h"
#include "browser/ContentBrowser.h"
#include "core/BasePlugin.h"
#include "core/FrameworkIds.h"
#include "core/PluginAudioProcessor.h"
#include "editor/BasePluginEditor.h"
#include "support/MessageLoop.h"
#include "support/Mouse.h"

namespace
{

using namespace K7R;
using host::ShownPlugin;

constexpr int numPresets = 10000;
constexpr int numTagged = 100;

void print (const char* label, double value)
{
    std::printf ("  %-48s %12.2f\n", label, value);
}

double elapsedMs (const std::function<void()>& work)
{
    const auto start = juce::Time::getMillisecondCounterHiRes();
    work();
    return juce::Time::getMillisecondCounterHiRes() - start;
}

void writePresets (BasePlugin& plugin)
{
    const auto folder = plugin.getDirectories().get (Directories::userPresets);

    for (int i = 0; i < numPresets; ++i)
    {
        const auto tags = juce::String (i % 2 == 0 ? "Modulation:Slow" : "Modulation:Fast")
                          + ";Spatialize:" + (i % 3 == 0 ? "Wide" : "Mono");
        folder.getChildFile ("Preset " + juce::String (i) + plugin.getPresetExtension())
            .replaceWithText ("<Preset application=\"Quilvane 2\" version=\"1.0\" tags=\"" + tags
                              + "\"><Parameters><param name=\"FX\" value=\"50\"/></Parameters></Preset>");
    }
}

juce::Component* findChild (juce::Component& parent, const std::function<bool (juce::Component&)>& matches)
{
    for (auto* child : parent.getChildren())
    {
        if (matches (*child))
            return child;

        if (auto* found = findChild (*child, matches))
            return found;
    }

    return nullptr;
}

/** Clicks what a person would, and waits until it's done and painted. */
double clickMs (ShownPlugin& plugin, const juce::String& buttonText)
{
    auto* button = findChild (plugin.getWindow(),
                              [&] (juce::Component& component)
                              {
                                  const auto* each = dynamic_cast<juce::TextButton*> (&component);
                                  return each != nullptr && each->isVisible() && each->getButtonText() == buttonText;
                              });

    return button == nullptr ? 0.0
                             : elapsedMs (
                                 [&]
                                 {
                                     Mouse (*button).click();
                                     runMessageLoopFor (0);
                                     plugin.getEditor().getBrowser()->getResults().flush();
                                     plugin.takePicture();
                                 });
}

double renameMs (ShownPlugin& plugin)
{
    auto& results = plugin.getEditor().getBrowser()->getResults();
    auto* item = results.getList().getResults().front().item;
    results.selectItem (item, false);
    results.startRenaming();

    auto* field = dynamic_cast<juce::TextEditor*> (
        findChild (results, [] (juce::Component& c) { return dynamic_cast<juce::TextEditor*> (&c) != nullptr; }));
    field->setText ("Zoom", false);

    return elapsedMs (
        [&]
        {
            field->keyPressed (juce::KeyPress (juce::KeyPress::returnKey));
            runMessageLoopUntil ([&] { return item->name == "Zoom"; });
            plugin.takePicture();
        });
}

double tagMs (ShownPlugin& plugin)
{
    auto& results = plugin.getEditor().getBrowser()->getResults();
    std::vector<BrowserContent::Key> keys;

    for (const auto& result : results.getList().getResults())
        if (static_cast<int> (keys.size()) < numTagged)
            keys.push_back (BrowserContent::keyOf (result.item));

    results.selectKeys (keys);
    runMessageLoopFor (50);
    return clickMs (plugin, "Wide");
}

/** Plays beside the message thread, and measures the block that took longest. */
class Player
{
public:
    explicit Player (ShownPlugin& plugin) :
        thread (
            [this, &processor = plugin.getProcessor()]
            {
                juce::AudioBuffer<float> buffer (2, blockSize);
                juce::MidiBuffer midi;
                juce::Random random (1);

                while (! isStopped)
                {
                    for (int channel = 0; channel < 2; ++channel)
                        for (int i = 0; i < blockSize; ++i)
                            buffer.setSample (channel, i, random.nextFloat() - 0.5f);

                    longest = std::max (longest, elapsedMs ([&] { processor.processBlock (buffer, midi); }));
                    juce::Thread::sleep (1);
                }
            })
    {
    }

    double stop()
    {
        isStopped = true;
        thread.join();
        return longest;
    }

private:
    static constexpr int blockSize = 480; // 10 ms at 48 kHz

    std::atomic<bool> isStopped { false };
    double longest = 0.0;
    std::thread thread;
};

double longestBlockMs (ShownPlugin& plugin, const std::function<void()>& onMessageThread)
{
    constexpr int watchedMs = 2000, pauseMs = 10;

    Player player (plugin);

    for (int time = 0; time < watchedMs; time += pauseMs)
    {
        onMessageThread();
        runMessageLoopFor (pauseMs);
    }

    return player.stop();
}

} // namespace

void printBrowserFigures()
{
    std::printf ("\nBrowser with %d user presets\n", numPresets);

    ShownPlugin plugin (juce::File (QUILVANE_DATA_FOLDER), "Big");
    writePresets (plugin.getPlugin());
    plugin.open();
    plugin.takePicture();

    const auto open = [&]
    {
        plugin.getEditor().presetEvent (eventIds::browsePresets);
        runMessageLoopFor (0);
        plugin.takePicture();
    };

    auto& editor = plugin.getEditor();
    print ("opened the first time, listed and painted, ms", elapsedMs (open));
    editor.getBrowser()->close (true);
    print ("opened again and painted, ms", elapsedMs (open));
    print ("one filter click, ms", clickMs (plugin, "Slow"));
    print ("the filter off again, ms", clickMs (plugin, "Slow"));

    auto& results = editor.getBrowser()->getResults();
    print ("one step down the list, loaded and painted, ms",
           elapsedMs (
               [&]
               {
                   results.keyPressed (juce::KeyPress (juce::KeyPress::downKey));
                   plugin.takePicture();
               }));

    print ("longest block of 10 ms while nothing happens, ms", longestBlockMs (plugin, [] {}));
    print ("longest block of 10 ms, 100 presets a second, ms",
           longestBlockMs (plugin, [&] { results.keyPressed (juce::KeyPress (juce::KeyPress::downKey)); }));

    editor.getBrowser()->setEditMode (true);
    runMessageLoopFor (50);
    print ("one rename, ms", renameMs (plugin));
    print ("one tag for 100 presets, written to disk, ms", tagMs (plugin));
    editor.getBrowser()->close (true);
}
