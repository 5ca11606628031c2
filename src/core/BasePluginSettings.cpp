// SPDX-License-Identifier: GPL-3.0-or-later

// The settings that all instances of a user share.

#include "core/BasePlugin.h"
#include "core/FrameworkIds.h"
#include "core/PluginEditor.h"
#include "parameters/BoundedXml.h"
#include "parameters/IntParameter.h"
#include "parameters/SafeFile.h"

namespace quilvane
{

namespace
{

constexpr const char* settingsTag = "UserSettings";
constexpr const char* applicationAttribute = "application";
constexpr const char* presetsTag = "Presets";
constexpr const char* authorTag = "Author";
constexpr const char* midiMapTag = "MidiControlMap";
constexpr const char* hostMapTag = "HostParametersMap";
constexpr const char* inForceAttribute = "default";
constexpr const char* fileAttribute = "file";
constexpr const char* qualityTag = "DefaultProcessingQuality";
constexpr const char* presetTag = "Preset";

void readMapSetting (const juce::XmlElement& settings, const char* tag, bool& inForce, juce::String& file)
{
    if (const auto* xml = settings.getChildByName (tag))
    {
        inForce = xml->getStringAttribute (inForceAttribute).equalsIgnoreCase ("yes");
        file = xml->getStringAttribute (fileAttribute);
    }
}

void writeMapSetting (juce::XmlElement& settings, const char* tag, bool inForce, const juce::String& file)
{
    auto* xml = settings.createNewChildElement (tag);
    xml->setAttribute (inForceAttribute, inForce ? "yes" : "no");

    if (file.isNotEmpty())
        xml->setAttribute (fileAttribute, file);
}

bool isDefaultQuality (int id)
{
    return id == frameworkIds::defaultRealTimeQuality || id == frameworkIds::defaultOfflineQuality;
}

} // namespace

juce::File BasePlugin::getSettingsFile() const
{
    return directories.get (Directories::userData).getChildFile (getProductName() + ".ini");
}

std::unique_ptr<juce::XmlElement> BasePlugin::readSettings() const
{
    auto xml = parseBoundedXml (getSettingsFile());

    if (xml != nullptr && xml->getTagName().equalsIgnoreCase (settingsTag)
        && xml->getStringAttribute (applicationAttribute).equalsIgnoreCase (getProductName()))
        return xml;

    return nullptr;
}

void BasePlugin::startEditor()
{
    if (const auto xml = readSettings())
        editor->loadSettings (*xml);

    editor->start();
}

void BasePlugin::loadSettings()
{
    if (const auto xml = readSettings())
    {
        readMapSetting (*xml, midiMapTag, useMidiMapFile, midiMapFile);
        readMapSetting (*xml, hostMapTag, useHostMapFile, hostMapFile);

        if (const auto* quality = xml->getChildByName (qualityTag))
        {
            Preset defaults;
            defaults.readXml (quality->getChildByName (presetTag), *parameters);

            for (const auto& entry : defaults.getEntries())
                if (isDefaultQuality (entry.id))
                    parameters->setValueString (entry.id, entry.value);
        }
    }

    if (qualityParameter != nullptr)
    {
        parameters->copyValue (frameworkIds::realTimeQuality, frameworkIds::defaultRealTimeQuality);
        parameters->copyValue (frameworkIds::offlineQuality, frameworkIds::defaultOfflineQuality);
    }
}

void BasePlugin::saveSettings() const
{
    juce::XmlElement settings (settingsTag);
    settings.setAttribute (applicationAttribute, getProductName());
    settings.createNewChildElement (presetsTag)->createNewChildElement (authorTag);
    writeMapSetting (settings, midiMapTag, useMidiMapFile, midiMapFile);
    writeMapSetting (settings, hostMapTag, useHostMapFile, hostMapFile);

    if (qualityParameter != nullptr)
    {
        Preset defaults;

        for (const auto id : { frameworkIds::defaultRealTimeQuality, frameworkIds::defaultOfflineQuality })
            if (const auto* parameter = parameters->getParameter (id))
                defaults.addParameter (*parameter);

        settings.createNewChildElement (qualityTag)
            ->addChildElement (defaults.createXml (*parameters, false).release());
    }

    if (editor != nullptr)
        if (auto xml = editor->saveSettings())
            settings.addChildElement (xml.release());

    // Two instances that close at once leave one whole file, whichever it is.
    replaceFileSafely (getSettingsFile(), settings);
}

//==============================================================================
BasePlugin::DefaultMidiMap BasePlugin::getDefaultMidiMap() const
{
    return { Directories::fileFromSetting (midiMapFile), useMidiMapFile };
}

void BasePlugin::setDefaultMidiMap (const DefaultMidiMap& map)
{
    midiMapFile = map.file.getFullPathName();
    useMidiMapFile = map.isUsed;
}

BasePlugin::QualityParameters BasePlugin::getQualityParameters() const
{
    return { dynamic_cast<EnumParameter*> (realTimeQuality), dynamic_cast<EnumParameter*> (offlineQuality) };
}

BasePlugin::QualityParameters BasePlugin::getDefaultQualityParameters() const
{
    const auto find = [this] (int id) { return dynamic_cast<EnumParameter*> (parameters->getParameter (id)); };
    return { find (frameworkIds::defaultRealTimeQuality), find (frameworkIds::defaultOfflineQuality) };
}

} // namespace quilvane
