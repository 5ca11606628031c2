// SPDX-License-Identifier: GPL-3.0-or-later

#include "content/PresetsPackageContent.h"

#include "support/BoundedXml.h"

namespace K7R
{

namespace
{

/** The extension of an entry's name, with its point. */
juce::String extensionOf (const juce::String& entryName)
{
    return entryName.fromLastOccurrenceOf (".", true, false);
}

/** The name of the item that an entry holds: without folders and extension. */
juce::String itemNameOf (const juce::String& entryName)
{
    return entryName.fromLastOccurrenceOf ("/", false, false).upToLastOccurrenceOf (".", false, false);
}

} // namespace

PresetsPackageContent::PresetsPackageContent (PresetHost& presetHost, const juce::String& sourceName,
                                              const juce::File& packageFile, const juce::String& presetExtension) :
    PresetsContent (presetHost, sourceName, presetExtension),
    package (packageFile)
{
}

std::vector<ContentSource::Listing> PresetsPackageContent::listItems() const
{
    std::vector<Listing> result;
    TagBudget budget;

    for (int i = 0; i < package.getNumEntries(); ++i)
    {
        const auto entryName = package.getEntryName (i);

        if (entryName == PackageFile::manifestEntry || package.isEntryTooLarge (i))
            continue;

        const auto stream = package.openEntry (i);

        if (stream == nullptr)
            break;

        if (extensionOf (entryName) != extension)
            continue;

        Preset header;
        readEntry (header, entryName, *stream, Preset::Extent::header);
        result.push_back ({ header.name, budget.take (header.tags) });
    }

    return result;
}

std::unique_ptr<Preset> PresetsPackageContent::readPreset (const juce::String& itemName) const
{
    const auto entryName = itemName + extension;
    const auto stream = package.openEntry (package.findEntry (entryName));

    if (stream == nullptr)
        return nullptr;

    auto preset = std::make_unique<Preset>();

    if (! readEntry (*preset, entryName, *stream, Preset::Extent::everything))
        return nullptr;

    if (preset->author.isEmpty())
        preset->author = package.getManifest().author;

    return preset;
}

bool PresetsPackageContent::readEntry (Preset& preset, const juce::String& entryName, juce::InputStream& stream,
                                       Preset::Extent extent) const
{
    const auto text = stream.readEntireStreamAsString();
    const auto xml = extent == Preset::Extent::header ? parseBoundedXmlHead (text) : parseBoundedXml (text);
    const auto isRead = preset.readXml (xml.get(), host.getPresetParameters(), extent);
    preset.name = itemNameOf (entryName);
    return isRead;
}

} // namespace K7R
