// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include <juce_audio_processors/juce_audio_processors.h>

namespace quilvane
{
class BasePlugin;
class BasePluginEditor;
class PluginAudioProcessor;
} // namespace quilvane

namespace quilvane::host
{

/** The plug-in's own classes with their editor in an open window that no display shows, for pictures. It has the
    given data and a user without settings, and leaves no trace. For the message thread. */
class ShownPlugin
{
public:
    /** @param dataFolder with the folders "Skins" and "Presets"
        @param skinName empty for the one that a new user sees. Throws a Failure if there is no such skin, or if it
        can't be loaded. */
    ShownPlugin (const juce::File& dataFolder, const juce::String& skinName);
    ~ShownPlugin();

    BasePlugin& getPlugin();
    BasePluginEditor& getEditor();

    /** Plays so much of a noise through the plug-in, and lets the editor follow. */
    void play (double seconds);

    juce::Image takePicture();

private:
    const juce::TemporaryFile folder;
    std::unique_ptr<PluginAudioProcessor> processor;
    std::unique_ptr<juce::AudioProcessorEditor> window;
};

} // namespace quilvane::host
