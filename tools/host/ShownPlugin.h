// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <memory>

#include <juce_audio_processors/juce_audio_processors.h>

namespace K7R
{
class BasePlugin;
class BasePluginEditor;
class PluginAudioProcessor;
} // namespace K7R

namespace K7R::host
{

/** The plug-in's own classes with their editor in a window that needs no display, for pictures and for figures. It
    has the given data and a user without settings, and leaves no trace. For the message thread. */
class ShownPlugin
{
public:
    /** @param dataFolder with the folders "Skins" and "Presets"
        @param skinName empty for the one that a new user sees. Throws a Failure if there is no such skin. */
    ShownPlugin (const juce::File& dataFolder, const juce::String& skinName);
    ~ShownPlugin();

    /** Opens the window, as hosts do, or opens it again. Throws a Failure if the skin can't be loaded. */
    void open();
    void close();

    PluginAudioProcessor& getProcessor() { return *processor; }
    BasePlugin& getPlugin();
    BasePluginEditor& getEditor();
    juce::Component& getWindow() { return *window; }

    /** Plays so much of a noise through the plug-in, calls a function on the message thread, and lets the editor
        follow. Once in a program. */
    void play (double seconds, const std::function<void()>& then = {});

    juce::Image takePicture();

private:
    const juce::TemporaryFile folder;
    const juce::String wantedSkin;
    std::unique_ptr<PluginAudioProcessor> processor;
    std::unique_ptr<juce::AudioProcessorEditor> window;
};

} // namespace K7R::host
