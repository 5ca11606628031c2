// SPDX-License-Identifier: GPL-3.0-or-later

#include <iostream>

#include <juce_gui_basics/juce_gui_basics.h>

#include "AudioFiles.h"
#include "Commands.h"
#include "DemoSound.h"
#include "Failure.h"
#include "HostedPlugin.h"
#include "LivePlayer.h"
#include "Options.h"
#include "PluginFolders.h"
#include "PresetBank.h"

namespace K7R::host
{

namespace
{

constexpr double nominalRate = 48000.0;
constexpr int nominalBlock = 512;
constexpr double longestLoop = 600.0; // s of a file, which is held in memory

juce::AudioBuffer<float> readSound (const juce::File& file, double sampleRate)
{
    AudioInput input (file);
    input.setSampleRate (sampleRate);

    const auto length = juce::jmin (input.getLength(), static_cast<juce::int64> (longestLoop * sampleRate));
    juce::AudioBuffer<float> sound (2, juce::jmax (1, static_cast<int> (length)));
    input.read (sound);
    return sound;
}

/** A window around the plug-in's own, which ends the program when it's closed. */
class EditorWindow final : public juce::DocumentWindow, private juce::Timer
{
public:
    /** @param seconds until it closes by itself; 0 for never */
    EditorWindow (juce::AudioProcessorEditor* editor, const juce::String& title, double seconds) :
        juce::DocumentWindow (title, juce::Colours::black, juce::DocumentWindow::closeButton)
    {
        setUsingNativeTitleBar (true);
        setContentOwned (editor, true);
        centreWithSize (getWidth(), getHeight());
        setVisible (true);

        if (seconds > 0.0)
            startTimer (juce::roundToInt (seconds * 1000.0));
    }

    void closeButtonPressed() override { juce::MessageManager::getInstance()->stopDispatchLoop(); }

private:
    void timerCallback() override { closeButtonPressed(); }
};

void runEdit (const juce::ArgumentList& arguments)
{
    const Options options (arguments, { { "--plugin", Options::Kind::single },
                                        { "--preset", Options::Kind::single },
                                        { "--seconds", Options::Kind::single } });
    const auto& files = options.requirePositional (0, 1, "at most one audio file");
    const auto seconds = options.getNumber ("--seconds", { 0.0, longestAudio }, " seconds", 0.0);

    // Makes JUCE forgive the X server's complaints, as in any application with windows.
    juce::JUCEApplicationBase::createInstance = []() -> juce::JUCEApplicationBase* { return nullptr; };

    if (juce::Desktop::getInstance().getDisplays().displays.isEmpty())
        throw Failure ("there is no display to open a window on");

    if (! files.isEmpty())
        AudioInput (resolveFile (files[0])); // refused now rather than behind an open window

    const auto pluginFile = HostedPlugin::findFile (options);
    HostedPlugin plugin (pluginFile, nominalRate, nominalBlock);

    if (const auto name = options.getValue ("--preset"))
        plugin.loadPreset (*PresetBank (pluginFile).read (*name));

    const LivePlayer player (
        plugin.getInstance(), [&] (double rate)
        { return files.isEmpty() ? renderDemoSound (rate) : readSound (resolveFile (files[0]), rate); });

    std::cout << "Playing to " << player.getDeviceName() << "; close the window to end" << std::endl;

    EditorWindow window (plugin.getInstance().createEditorIfNeeded(), PluginFolders::product, seconds);
    juce::MessageManager::getInstance()->runDispatchLoop();
}

constexpr auto helpText =
    R"(Opens the plug-in's window and plays a sound in a loop through it, a short piece of the program's own or the
file given, to the system's audio if there is any. It needs a display.

  --preset NAME          loads a preset first, by its name or from a file
  --seconds NUMBER       closes the window by itself after so long
  --plugin FILE          the plug-in; else the one in QUILVANE_PLUGIN, else the one beside this program)";

} // namespace

juce::ConsoleApplication::Command makeEditCommand()
{
    return { "edit", "edit [AUDIO FILE] [options]", "Opens the plug-in's window and plays", helpText, runEdit };
}

} // namespace K7R::host
