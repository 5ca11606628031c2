// SPDX-License-Identifier: GPL-3.0-or-later

// The settings that all instances of a user share.

#include "core/BasePlugin.h"
#include "core/FrameworkIds.h"
#include "core/PluginEditor.h"
#include "parameters/IntParameter.h"
#include "support/BoundedXml.h"
#include "support/SafeFile.h"

namespace K7R
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

bool isDefaultQuality (int id)
{
    return id == frameworkIds::defaultRealTimeQuality || id == frameworkIds::defaultOfflineQuality;
}

} // namespace

void BasePlugin::MapSetting::read (const juce::XmlElement& settings, const char* tag)
{
    if (const auto* xml = settings.getChildByName (tag))
    {
        isUsed = xml->getStringAttribute (inForceAttribute).equalsIgnoreCase ("yes");
        file = xml->getStringAttribute (fileAttribute);
    }
}

void BasePlugin::MapSetting::write (juce::XmlElement& settings, const char* tag) const
{
    auto* xml = settings.createNewChildElement (tag);
    xml->setAttribute (inForceAttribute, isUsed ? "yes" : "no");

    if (file.isNotEmpty())
        xml->setAttribute (fileAttribute, file);
}

//==============================================================================
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

bool BasePlugin::hasUnreadableSettings() const
{
    const auto file = getSettingsFile();
    return file.existsAsFile() && file.getSize() > 0 && readSettings() == nullptr;
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
        midiMapSetting.read (*xml, midiMapTag);
        hostMapSetting.read (*xml, hostMapTag);

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

std::unique_ptr<juce::XmlElement> BasePlugin::createSettings() const
{
    auto settings = std::make_unique<juce::XmlElement> (settingsTag);
    settings->setAttribute (applicationAttribute, getProductName());
    settings->createNewChildElement (presetsTag)->createNewChildElement (authorTag);
    midiMapSetting.write (*settings, midiMapTag);
    hostMapSetting.write (*settings, hostMapTag);

    if (qualityParameter != nullptr)
    {
        Preset defaults;

        for (const auto id : { frameworkIds::defaultRealTimeQuality, frameworkIds::defaultOfflineQuality })
            if (const auto* parameter = parameters->getParameter (id))
                defaults.addParameter (*parameter);

        settings->createNewChildElement (qualityTag)
            ->addChildElement (defaults.createXml (*parameters, false).release());
    }

    if (editor != nullptr)
        if (auto xml = editor->saveSettings())
            settings->addChildElement (xml.release());

    return settings;
}

void BasePlugin::saveSettings() const
{
    const auto text = createSettings()->toString();
    const auto file = getSettingsFile();

    if (text == settingsInPlaceOfFile)
        return;

    if (hasUnreadableSettings())
        renameFile (file, file.getSiblingFile (file.getFileName() + ".unreadable").getNonexistentSibling());

    // Two instances that close at once leave one whole file, whichever it is.
    replaceFileSafely (file, text);
}

//==============================================================================
BasePlugin::QualityParameters BasePlugin::getQualityParameters() const
{
    return { dynamic_cast<EnumParameter*> (realTimeQuality), dynamic_cast<EnumParameter*> (offlineQuality) };
}

BasePlugin::QualityParameters BasePlugin::getDefaultQualityParameters() const
{
    const auto find = [this] (int id) { return dynamic_cast<EnumParameter*> (parameters->getParameter (id)); };
    return { find (frameworkIds::defaultRealTimeQuality), find (frameworkIds::defaultOfflineQuality) };
}

} // namespace K7R
