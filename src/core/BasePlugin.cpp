// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/BasePlugin.h"

#include <array>
#include <utility>

#include "core/FrameworkIds.h"
#include "core/PluginAudioProcessor.h"
#include "core/PluginEditor.h"
#include "parameters/FloatParameter.h"
#include "parameters/IntParameter.h"
#include "parameters/StringParameter.h"
#include "support/BoundedXml.h"

namespace K7R
{

namespace
{

constexpr double constructionRate = 44100.0; // Hz
constexpr int numDebugParameters = 12;

} // namespace

BasePlugin::BasePlugin (std::unique_ptr<ParameterManager> manager, EmbeddedTextLoader embeddedTexts) :
    loadEmbeddedText (std::move (embeddedTexts)),
    parameters (std::move (manager)),
    midiControlMap (*parameters),
    presetSession (*parameters)
{
    rateConstants.update (constructionRate);

    parameters->loadFromXml (parseBoundedXml (loadEmbeddedText ("parameters.xml")).get());
    parameters->addParameter (std::make_unique<StringParameter> (frameworkIds::presetName, "Preset Name", "Init"));
    addQualityParameters();

    if (const auto xml = parseBoundedXml (loadEmbeddedText ("events.xml")))
        events.loadFromXml (*xml);

    addFixedEvents();
    pluginFile = juce::File::getSpecialLocation (juce::File::currentExecutableFile).getFullPathName();
}

BasePlugin::~BasePlugin() = default;

void BasePlugin::addQualityParameters()
{
    qualityParameter = dynamic_cast<EnumParameter*> (parameters->getParameterByName ("Processing Quality"));

    if (qualityParameter == nullptr)
        return;

    const auto addClone = [this] (int id, const juce::String& name)
    {
        parameters->addParameter (qualityParameter->clone (id, name));
        return parameters->getParameter (id);
    };

    realTimeQuality = addClone (frameworkIds::realTimeQuality, "Real-time Processing Quality");
    offlineQuality = addClone (frameworkIds::offlineQuality, "Offline Processing Quality");
    addClone (frameworkIds::defaultRealTimeQuality, "Default Real-time Processing Quality");
    addClone (frameworkIds::defaultOfflineQuality, "Default Offline Processing Quality");

    // A table that takes these names for itself has no qualities.
    if (dynamic_cast<EnumParameter*> (realTimeQuality) == nullptr
        || dynamic_cast<EnumParameter*> (offlineQuality) == nullptr)
        qualityParameter = nullptr;
}

void BasePlugin::addFixedEvents()
{
    static constexpr std::array<std::pair<int, const char*>, 13> fixedEvents { {
        { eventIds::options, "Options" },
        { eventIds::about, "About" },
        { eventIds::selectNextPreset, "Select Next Preset" },
        { eventIds::selectPreviousPreset, "Select Previous Preset" },
        { eventIds::browsePresets, "Browse Presets" },
        { eventIds::savePreset, "Save Preset" },
        { eventIds::savePresetAs, "Save preset as" },
        { eventIds::copyCurrentPreset, "Copy current preset" },
        { eventIds::pasteCopiedPreset, "Paste copied preset" },
        { eventIds::storeCurrentPreset, "Store current preset" },
        { eventIds::toggleMidiLearn, "Toggle Midi Learn" },
        { eventIds::restoreDefaultPreset, "Restore Default Preset" },
        { eventIds::restoreCurrentPreset, "Restore Current Preset" },
    } };

    for (const auto& [uid, name] : fixedEvents)
        events.addEvent (name, uid);
}

void BasePlugin::addDebugParametersAndEvents()
{
    for (int i = 0; i < numDebugParameters; ++i)
    {
        const juce::String number (i);
        parameters->addParameter (std::make_unique<FloatParameter> (frameworkIds::firstDebugParameter + i,
                                                                    "Debug Parameter " + number, 0.0f, 1.0f, 0.0f));
        events.addEvent ("Debug Event " + number, eventIds::firstDebugEvent + i);
    }
}

//==============================================================================
void BasePlugin::initialiseEnvironment()
{
    directories.resolve (*this);

    assignHostParameters();

    if (usesDebugParameters())
        addDebugParametersAndEvents();

    for (const auto& parameter : parameters->getParameters())
        parameter->addListener (this);

    loadSettings();
    midiControlMap.setName (getProductName());

    if (const auto map = midiMapSetting.get(); map.isUsed)
        midiControlMap.loadFromFile (map.file);

    if (const auto map = hostMapSetting.get(); map.isUsed)
        loadHostMap (map.file);
    else
        loadEmbeddedHostMap();
}

void BasePlugin::initialiseContent()
{
    presetSession.setNumParameters (getNumPresetParameters());

    if (hasPresets())
        loadContent();

    // After the default preset: a host's defaults are its values.
    parameters->captureDefaults();

    editor = createEditor();

    // All listeners and the core take the values that stand.
    const PresetSession::ScopedLoad load (presetSession);
    parameters->notifyAll();
    resetPresetBaseline();
}

void BasePlugin::startUpdates()
{
    parameters->startUpdates();

    if (editor != nullptr)
        startEditor();

    if (hasUnreadableSettings())
        settingsInPlaceOfFile = createSettings()->toString();
}

//==============================================================================
void BasePlugin::prepare (bool, bool) {}

void BasePlugin::prepareToPlay (double sampleRate, int samplesPerBlock)
{
    const auto oldBlockSize = std::exchange (blockSize, samplesPerBlock);
    const auto rateIsNew = updateSampleRate (sampleRate);
    const auto isFirst = ! std::exchange (prepared, true);

    offline = processor->isNonRealtime();
    active = true;

    applyQualityForMode();
    refreshLatency();
    prepare (rateIsNew || isFirst, oldBlockSize != samplesPerBlock);
}

void BasePlugin::releaseResources()
{
    active = false;
    release();
}

void BasePlugin::processAudio (juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi, bool bypassed)
{
    // Hosts may begin to render offline with no new prepareToPlay.
    if (! bypassed)
    {
        const auto isOffline = processor->isNonRealtime();

        if (offline.exchange (isOffline) != isOffline)
            applyQualityForMode();
    }

    callback = { &buffer,
                 &midi,
                 processor->getTotalNumInputChannels(),
                 processor->getTotalNumOutputChannels(),
                 processor->getPlayHead(),
                 bypassed };

    const juce::ScopedNoDenormals noDenormals;
    process (callback);
}

void BasePlugin::applyQualityForMode()
{
    if (qualityParameter != nullptr)
        qualityParameter->copyFrom (offline ? *offlineQuality : *realTimeQuality, true);
}

void BasePlugin::refreshLatency()
{
    // Tells the host if it differs.
    if (processor != nullptr)
        processor->setLatencySamples (getLatencySamples());
}

//==============================================================================
void BasePlugin::parameterChanged (Parameter& parameter)
{
    if (&parameter == qualityParameter)
        refreshLatency();
    else if (parameter.getId() == frameworkIds::realTimeQuality)
        applyQualityForMode();

    const auto hostIndex = getHostIndex (parameter);

    if (hostIndex != HostParameterMap::unmapped && ! hostMap.isSetByHost (hostIndex) && processor != nullptr)
        processor->sendValueToHost (hostIndex, parameter.getNormalised());
}

void BasePlugin::parameterGestureBegan (Parameter& parameter)
{
    const auto hostIndex = getHostIndex (parameter);

    if (hostIndex != HostParameterMap::unmapped && processor != nullptr)
        processor->beginHostGesture (hostIndex);
}

void BasePlugin::parameterGestureEnded (Parameter& parameter)
{
    const auto hostIndex = getHostIndex (parameter);

    if (hostIndex != HostParameterMap::unmapped && processor != nullptr)
        processor->endHostGesture (hostIndex);
}

std::unique_ptr<PluginEditor> BasePlugin::createEditor()
{
    return nullptr;
}

void BasePlugin::deleteEditor()
{
    editor.reset();
}

void BasePlugin::resetParameter (Parameter& parameter)
{
    // A text has no number to go back to.
    if (dynamic_cast<StringParameter*> (&parameter) != nullptr)
        return;

    parameter.beginGesture();

    // Through its normalised value, 240 Hz would be a little less.
    if (const auto* original = parameters->getDefault (parameter.getId()))
        parameter.copyFrom (*original, true);

    parameter.endGesture();
}

} // namespace K7R
