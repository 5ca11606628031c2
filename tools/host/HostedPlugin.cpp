// SPDX-License-Identifier: GPL-3.0-or-later

#include "HostedPlugin.h"

#include <cstring>

#include "Failure.h"
#include "Options.h"
#include "OutputFile.h"
#include "ParameterText.h"

namespace K7R::host
{

namespace
{

constexpr auto pluginFileName = "Quilvane 2.so";
constexpr int longestName = 256;
constexpr int numChannels = 2;

// The head of a VST 2 bank file with a chunk; all numbers are big-endian.
constexpr auto bankMagic = "CcnK";
constexpr auto chunkMagic = "FBCh";
constexpr int chunkMagicOffset = 8;
constexpr int pluginIdOffset = 16;
constexpr int chunkSizeOffset = 156;
constexpr int bankHeadSize = 160;
constexpr juce::int64 largestState = 64 << 20;

juce::File findNearProgram()
{
    const auto program = juce::File::getSpecialLocation (juce::File::currentExecutableFile);
    juce::StringArray places { pluginFileName, juce::String ("dist/") + pluginFileName };

    for (const auto* configuration : { "Release", "RelWithDebInfo", "MinSizeRel", "Debug", "" })
        places.add (juce::File::addTrailingSeparator ("src/Quilvane_artefacts/" + juce::String (configuration)) + "VST/"
                    + pluginFileName);

    for (auto folder = program.getParentDirectory();; folder = folder.getParentDirectory())
    {
        for (const auto& place : places)
            if (auto file = folder.getChildFile (place); file.existsAsFile())
                return file;

        if (folder.isRoot())
            throw Failure (juce::String ("found no ") + pluginFileName
                           + " near the program: give it with --plugin or in QUILVANE_PLUGIN");
    }
}

bool hasMagic (const juce::MemoryBlock& data, int offset, const char* magic)
{
    return std::memcmp (static_cast<const char*> (data.getData()) + offset, magic, 4) == 0;
}

int readBigEndian (const juce::MemoryBlock& data, int offset)
{
    const auto* bytes = static_cast<const char*> (data.getData()) + offset;
    return static_cast<int> (juce::ByteOrder::bigEndianInt (bytes));
}

/** The instance takes any bytes without a word, so the head is looked at here. */
void checkState (const juce::MemoryBlock& data, int pluginId, const juce::String& fileName)
{
    const auto size = static_cast<juce::int64> (data.getSize());

    if (size < bankHeadSize || ! hasMagic (data, 0, bankMagic) || ! hasMagic (data, chunkMagicOffset, chunkMagic)
        || readBigEndian (data, chunkSizeOffset) < 0 || readBigEndian (data, chunkSizeOffset) > size - bankHeadSize)
        throw Failure (fileName + " is not a state of a plug-in");

    if (readBigEndian (data, pluginIdOffset) != pluginId)
        throw Failure (fileName + " is the state of another plug-in");
}

} // namespace

juce::File HostedPlugin::findFile (const Options& options)
{
    const auto fromEnvironment = juce::SystemStats::getEnvironmentVariable ("QUILVANE_PLUGIN", {});
    const auto given = options.getValue ("--plugin").value_or (fromEnvironment);
    auto file = given.isNotEmpty() ? resolveFile (given) : findNearProgram();

    if (! file.existsAsFile())
        throw Failure ("there is no plug-in " + file.getFullPathName());

    return file;
}

HostedPlugin::HostedPlugin (const juce::File& file, double sampleRate, int blockSize)
{
    juce::PluginDescription description;
    description.pluginFormatName = juce::VSTPluginFormat::getFormatName();
    description.fileOrIdentifier = file.getFullPathName();

    juce::VSTPluginFormat format;
    juce::String error;
    instance = format.createInstanceFromDescription (description, sampleRate, blockSize, error);

    if (instance == nullptr)
        throw Failure (file.getFullPathName() + " cannot be loaded as a VST 2 plug-in");

    if (instance->getTotalNumInputChannels() != numChannels || instance->getTotalNumOutputChannels() != numChannels)
        throw Failure (file.getFullPathName() + " is not a stereo effect");
}

HostedPlugin::~HostedPlugin()
{
    if (instance != nullptr)
        instance->releaseResources();
}

juce::AudioProcessorParameter& HostedPlugin::findParameter (const juce::String& name) const
{
    for (auto* parameter : instance->getParameters())
        if (parameter->getName (longestName).trim().equalsIgnoreCase (name.trim()))
            return *parameter;

    throw Failure ("the plug-in has no parameter \"" + name.trim() + "\"");
}

void HostedPlugin::set (const juce::String& name, const juce::String& text)
{
    auto& parameter = findParameter (name);
    setParameterByText (parameter, text);
    chosen.emplace_back (&parameter, parameter.getValue());
}

void HostedPlugin::loadPreset (const juce::XmlElement& preset)
{
    juce::XmlElement state ("PluginState");
    state.setAttribute ("application", instance->getPluginDescription().descriptiveName);
    state.createNewChildElement ("ParametersState")->addChildElement (new juce::XmlElement (preset));

    juce::MemoryBlock chunk;
    juce::AudioProcessor::copyXmlToBinary (state, chunk);

    if (! juce::VSTPluginFormat::setChunkData (instance.get(), chunk.getData(), static_cast<int> (chunk.getSize()),
                                               false))
        throw Failure ("the plug-in takes no presets");
}

void HostedPlugin::prepare (bool isOffline)
{
    instance->setNonRealtime (isOffline);
    instance->prepareToPlay (instance->getSampleRate(), instance->getBlockSize());

    for (const auto& [parameter, value] : chosen)
        parameter->setValue (value);
}

//==============================================================================
void HostedPlugin::loadState (const juce::File& file)
{
    juce::MemoryBlock data;

    if (! file.existsAsFile() || file.getSize() > largestState || ! file.loadFileAsData (data))
        throw Failure ("cannot read a state from " + file.getFullPathName());

    checkState (data, instance->getPluginDescription().uniqueId, file.getFullPathName());
    instance->setStateInformation (data.getData(), static_cast<int> (data.getSize()));
}

void HostedPlugin::saveState (const juce::File& file)
{
    juce::MemoryBlock data;
    instance->getStateInformation (data);

    OutputFile::write (file, [&] (juce::OutputStream& out) { return out.write (data.getData(), data.getSize()); });
}

} // namespace K7R::host
