// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <utility>
#include <vector>

#include <juce_audio_processors/juce_audio_processors.h>

#include "Options.h"

namespace K7R::host
{

/** The plug-in, loaded from its file through the VST 2 interface like in any host.

    Created, changed and destroyed on the message thread. Every function throws a Failure if the plug-in
    doesn't do what is asked.
*/
class HostedPlugin
{
public:
    /** The plug-in's file: from the option "--plugin", else the environment's QUILVANE_PLUGIN, else beside
        this program or where a build leaves it. */
    static juce::File findFile (const Options&);

    /** Loads a plug-in that has to take and give two channels. */
    HostedPlugin (const juce::File&, double sampleRate, int blockSize);
    ~HostedPlugin();

    juce::AudioPluginInstance& getInstance() noexcept { return *instance; }

    /** The parameter of a name, in whatever case. */
    juce::AudioProcessorParameter& findParameter (const juce::String& name) const;

    /** Sets a parameter to what a text describes; see setParameterByText(). */
    void set (const juce::String& name, const juce::String& text);

    /** Loads a preset, an element "Preset" with its name, through the state that hosts restore. */
    void loadPreset (const juce::XmlElement&);

    /** Makes the plug-in ready for processing. A plug-in may choose values of its own for the mode, live or
        offline; what set() chose stands all the same. */
    void prepare (bool isOffline);

    //==============================================================================
    /** Loads a state that saveState() or another host wrote: a bank file whose chunk is the plug-in's own. */
    void loadState (const juce::File&);
    void saveState (const juce::File&);

private:
    std::unique_ptr<juce::AudioPluginInstance> instance;
    std::vector<std::pair<juce::AudioProcessorParameter*, float>> chosen;
};

} // namespace K7R::host
