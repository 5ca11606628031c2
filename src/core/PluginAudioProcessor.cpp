// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/PluginAudioProcessor.h"

#include "core/AudioProcessorEditorWrapper.h"
#include "core/BasePlugin.h"
#include "core/PluginEditor.h"

namespace K7R
{

namespace
{

// The VST 2.4 host operation "GetCurrentProcessLevel", and its answer for an offline render.
constexpr juce::int32 getCurrentProcessLevel = 23;
constexpr juce::pointer_sized_int processLevelOffline = 4;

} // namespace

PluginAudioProcessor::PluginAudioProcessor() :
    AudioProcessor (BusesProperties()
                        .withInput ("Input", juce::AudioChannelSet::stereo())
                        .withOutput ("Output", juce::AudioChannelSet::stereo()))
{
}

PluginAudioProcessor::~PluginAudioProcessor()
{
    if (isBuilt)
        plugin->saveSettings();

    if (plugin != nullptr)
        plugin->deleteEditor();
}

void PluginAudioProcessor::setPlugin (std::unique_ptr<BasePlugin> newPlugin)
{
    plugin = std::move (newPlugin);
    plugin->setProcessor (this);
    plugin->initialiseEnvironment();
    plugin->createDspCore();
    plugin->initialiseContent();
    plugin->refreshLatency();
    plugin->startUpdates();
    isBuilt = true;
}

JUCE_BEGIN_IGNORE_WARNINGS_GCC_LIKE ("-Wdeprecated-declarations")

void PluginAudioProcessor::sendValueToHost (int hostIndex, float normalised)
{
    sendParamChangeMessageToListeners (hostIndex, normalised);
}

void PluginAudioProcessor::beginHostGesture (int hostIndex)
{
    beginParameterChangeGesture (hostIndex);
}

void PluginAudioProcessor::endHostGesture (int hostIndex)
{
    endParameterChangeGesture (hostIndex);
}

JUCE_END_IGNORE_WARNINGS_GCC_LIKE

//==============================================================================
const juce::String PluginAudioProcessor::getName() const
{
    return plugin->getProductName();
}

void PluginAudioProcessor::prepareToPlay (double sampleRate, int samplesPerBlock)
{
    plugin->prepareToPlay (sampleRate, samplesPerBlock);
}

void PluginAudioProcessor::releaseResources()
{
    plugin->releaseResources();
}

void PluginAudioProcessor::processBlock (juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi)
{
    updateNonRealtime();
    plugin->processAudio (buffer, midi, false);
}

void PluginAudioProcessor::processBlockBypassed (juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi)
{
    plugin->processAudio (buffer, midi, true);
}

bool PluginAudioProcessor::producesMidi() const
{
    return plugin->producesMidi();
}

juce::AudioProcessorEditor* PluginAudioProcessor::createEditor()
{
    if (auto* editor = plugin->getEditor())
        return new AudioProcessorEditorWrapper (*this, *editor);

    return new juce::GenericAudioProcessorEditor (*this);
}

//==============================================================================
int PluginAudioProcessor::getNumParameters()
{
    return plugin->getNumHostParameters();
}

const juce::String PluginAudioProcessor::getParameterName (int index)
{
    return plugin->getHostParameterName (index);
}

float PluginAudioProcessor::getParameter (int index)
{
    return plugin->getHostParameterValue (index);
}

const juce::String PluginAudioProcessor::getParameterText (int index)
{
    return plugin->getHostParameterText (index);
}

float PluginAudioProcessor::getParameterDefaultValue (int index)
{
    return plugin->getHostParameterDefault (index);
}

void PluginAudioProcessor::setParameter (int index, float value)
{
    plugin->setHostParameterValue (index, value);
}

bool PluginAudioProcessor::isParameterAutomatable (int index) const
{
    return juce::isPositiveAndBelow (index, plugin->getNumHostParameters());
}

bool PluginAudioProcessor::isMetaParameter (int index) const
{
    return plugin->isHostParameterMeta (index);
}

//==============================================================================
bool PluginAudioProcessor::isBusesLayoutSupported (const BusesLayout& layout) const
{
    return plugin == nullptr || plugin->isBusesLayoutSupported (layout);
}

void PluginAudioProcessor::getStateInformation (juce::MemoryBlock& destination)
{
    try
    {
        plugin->saveStateChunk (destination);
    }
    catch (...)
    {
        // Hosts expect no exceptions, and half a state is worse than none.
        destination.reset();
    }
}

void PluginAudioProcessor::setStateInformation (const void* data, int size)
{
    try
    {
        plugin->loadStateChunk (data, size);
    }
    catch (...)
    {
        // For want of memory. A value that has been restored by then stands.
    }
}

//==============================================================================
juce::pointer_sized_int PluginAudioProcessor::handleVstManufacturerSpecific (juce::int32, juce::pointer_sized_int,
                                                                             void*, float)
{
    return 0;
}

void PluginAudioProcessor::handleVstHostCallbackAvailable (std::function<VstHostCallbackType>&& callback)
{
    hostCallback = std::move (callback);
}

void PluginAudioProcessor::updateNonRealtime()
{
    // The client asks the host only when it resumes the plug-in; hosts change to offline rendering and
    // back without that.
    if (hostCallback != nullptr)
        setNonRealtime (hostCallback (getCurrentProcessLevel, 0, 0, nullptr, 0.0f) == processLevelOffline);
}

} // namespace K7R
