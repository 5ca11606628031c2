// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <memory>

#include <juce_audio_processors/juce_audio_processors.h>

namespace K7R
{

class BasePlugin;

/** The one class that the host's plug-in client talks to. It owns the plug-in and forwards every
    request to it.

    The parameters reach the host as a flat list of indexes, in the form that JUCE calls legacy: the
    user may assign them anew while the plug-in runs, which the managed form doesn't allow.
*/
class PluginAudioProcessor final : public juce::AudioProcessor, public juce::VSTCallbackHandler
{
public:
    /** With one stereo input bus and one stereo output bus, and no plug-in yet. */
    PluginAudioProcessor();
    ~PluginAudioProcessor() override;

    /** Takes the plug-in and runs it through the stages of its start-up. Once, before any other call;
        an exception leaves an object that can only be destroyed. */
    void setPlugin (std::unique_ptr<BasePlugin>);

    BasePlugin& getPlugin() noexcept { return *plugin; }

    /** Tells the host of a parameter's new value; on the thread of the change. */
    void sendValueToHost (int hostIndex, float normalised);

    // Bracket a user's gesture on a parameter.
    void beginHostGesture (int hostIndex);
    void endHostGesture (int hostIndex);

    //==============================================================================
    const juce::String getName() const override;
    void prepareToPlay (double sampleRate, int samplesPerBlock) override;
    void releaseResources() override;
    void processBlock (juce::AudioBuffer<float>&, juce::MidiBuffer&) override;

    /** Bypass isn't short-circuited: the effect runs, and is told. */
    void processBlockBypassed (juce::AudioBuffer<float>&, juce::MidiBuffer&) override;
    using juce::AudioProcessor::processBlock;
    using juce::AudioProcessor::processBlockBypassed;

    bool acceptsMidi() const override { return true; }
    bool producesMidi() const override;
    double getTailLengthSeconds() const override { return 0.0; }

    juce::AudioProcessorEditor* createEditor() override;
    bool hasEditor() const override { return true; }

    int getNumParameters() override;
    const juce::String getParameterName (int index) override;
    float getParameter (int index) override;
    const juce::String getParameterText (int index) override;
    float getParameterDefaultValue (int index) override;
    void setParameter (int index, float value) override;
    bool isParameterAutomatable (int index) const override;
    bool isMetaParameter (int index) const override;
    using juce::AudioProcessor::getParameterName;
    using juce::AudioProcessor::getParameterText;

    int getNumPrograms() override { return 1; }
    int getCurrentProgram() override { return 0; }
    void setCurrentProgram (int) override {}
    const juce::String getProgramName (int) override { return {}; }
    void changeProgramName (int, const juce::String&) override {}

    void getStateInformation (juce::MemoryBlock&) override;
    void setStateInformation (const void* data, int size) override;

    bool isBusesLayoutSupported (const BusesLayout&) const override;

    //==============================================================================
    // juce::VSTCallbackHandler
    juce::pointer_sized_int handleVstManufacturerSpecific (juce::int32, juce::pointer_sized_int, void*, float) override;
    void handleVstHostCallbackAvailable (std::function<VstHostCallbackType>&&) override;

private:
    void updateNonRealtime();

    std::unique_ptr<BasePlugin> plugin;
    bool isBuilt = false;
    std::function<VstHostCallbackType> hostCallback;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PluginAudioProcessor)
};

} // namespace K7R
