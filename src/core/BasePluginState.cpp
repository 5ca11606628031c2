// SPDX-License-Identifier: GPL-3.0-or-later

// What a plug-in leaves with its host, and how it takes it back; presets.

#include "content/PresetsDirectoryContent.h"
#include "content/PresetsPackageContent.h"
#include "core/BasePlugin.h"
#include "core/FrameworkIds.h"
#include "core/PluginEditor.h"
#include "support/BoundedXml.h"

namespace K7R
{

namespace
{

constexpr const char* stateTag = "PluginState";
constexpr const char* applicationAttribute = "application";
constexpr const char* qualityTag = "ProcessingQuality";
constexpr const char* parametersTag = "ParametersState";
constexpr const char* presetTag = "Preset";
constexpr const char* midiMapTag = "MidiControlMap";
constexpr const char* factoryPattern = "*Factory*.k7rpkg";

// The chunk: magic, length of the text, the text in UTF-8, a zero byte; numbers are little-endian.
constexpr juce::uint32 chunkMagic = 0x21324356; // "VC2!"
constexpr int chunkHeaderBytes = 8;

/** The text of a chunk; one that promises more than there is gives what there is. */
juce::String textOfChunk (const void* data, int size)
{
    if (data == nullptr || size <= chunkHeaderBytes || juce::ByteOrder::littleEndianInt (data) != chunkMagic)
        return {};

    const auto* bytes = static_cast<const char*> (data);
    const auto length = static_cast<int> (juce::ByteOrder::littleEndianInt (bytes + 4));

    const auto available = juce::jmin (length, size - chunkHeaderBytes);

    if (available <= 0 || available > maximumXmlBytes
        || ! juce::CharPointer_UTF8::isValidString (bytes + chunkHeaderBytes, available))
        return {};

    return juce::String::fromUTF8 (bytes + chunkHeaderBytes, available);
}

const juce::XmlElement* findPreset (const juce::XmlElement& state, const char* parentTag)
{
    const auto* parent = state.getChildByName (parentTag);
    return parent != nullptr ? parent->getChildByName (presetTag) : nullptr;
}

bool isQualityOfInstance (int id)
{
    return id == frameworkIds::realTimeQuality || id == frameworkIds::offlineQuality;
}

} // namespace

//==============================================================================
void BasePlugin::saveStateChunk (juce::MemoryBlock& destination) const
{
    const auto text = createState()->toString (juce::XmlElement::TextFormat().singleLine().withoutHeader());
    const auto length = text.getNumBytesAsUTF8();

    juce::MemoryOutputStream stream (destination, false);
    stream.writeInt (static_cast<int> (chunkMagic));
    stream.writeInt (static_cast<int> (length));
    stream.write (text.toRawUTF8(), length + 1);
}

void BasePlugin::loadStateChunk (const void* data, int size)
{
    if (const auto xml = parseBoundedXml (textOfChunk (data, size)))
        restoreState (*xml);
}

bool BasePlugin::isValidStateXml (const juce::XmlElement& xml) const
{
    return xml.getTagName().equalsIgnoreCase (stateTag)
           && xml.getStringAttribute (applicationAttribute).equalsIgnoreCase (getProductName());
}

std::unique_ptr<juce::XmlElement> BasePlugin::createState() const
{
    auto state = std::make_unique<juce::XmlElement> (stateTag);
    state->setAttribute (applicationAttribute, getProductName());

    const auto addPreset = [&] (const char* parentTag, const Preset& preset)
    { state->createNewChildElement (parentTag)->addChildElement (preset.createXml (*parameters, true).release()); };

    if (qualityParameter != nullptr)
    {
        Preset qualities;
        qualities.addParameter (*realTimeQuality);
        qualities.addParameter (*offlineQuality);
        addPreset (qualityTag, qualities);
    }

    Preset values;
    fillPreset (values);
    addPreset (parametersTag, values);

    state->addChildElement (midiControlMap.createXml().release());

    if (editor != nullptr)
        if (auto xml = editor->saveState())
            state->addChildElement (xml.release());

    return state;
}

void BasePlugin::restoreState (const juce::XmlElement& state)
{
    if (! isValidStateXml (state))
        return;

    restoreQualities (findPreset (state, qualityTag));

    if (const auto* xml = findPreset (state, parametersTag))
    {
        Preset preset;
        preset.readXml (xml, *parameters);
        loadPreset (preset);
        presetSession.stateRestored();
    }

    midiControlMap.loadFromXml (state.getChildByName (midiMapTag));

    if (editor != nullptr)
        editor->loadState (state);
}

void BasePlugin::restoreQualities (const juce::XmlElement* xml)
{
    Preset qualities;
    qualities.readXml (xml, *parameters);

    for (const auto& entry : qualities.getEntries())
        if (isQualityOfInstance (entry.id))
            parameters->setValueString (entry.id, entry.value);
}

//==============================================================================
void BasePlugin::loadContent()
{
    presetSession.begin();

    const auto packages = directories.get (Directories::appData)
                              .getChildFile ("Presets")
                              .findChildFiles (juce::File::findFiles, false, factoryPattern);

    if (! packages.isEmpty())
    {
        factoryPresets =
            std::make_unique<PresetsPackageContent> (*this, "Factory", packages.getFirst(), getPresetExtension());

        if (getDefaultPresetName().isNotEmpty())
            factoryPresets->loadItem (getDefaultPresetName());
    }

    presetSession.keepCurrent();

    directories.add (Directories::userPresets, directories.get (Directories::userStore).getChildFile ("Presets"), true);
    userPresets = std::make_unique<PresetsDirectoryContent> (*this, "User", directories.get (Directories::userPresets),
                                                             getPresetExtension());
}

void BasePlugin::loadPreset (const Preset& preset)
{
    presetSession.load (preset);
    presetApplied();
}

void BasePlugin::restorePresets (const PresetSession::Snapshot& snapshot)
{
    if (! presetSession.isOutdated (snapshot))
        return;

    presetSession.restore (snapshot);
    presetApplied();
}

} // namespace K7R
