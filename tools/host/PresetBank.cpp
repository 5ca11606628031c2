// SPDX-License-Identifier: GPL-3.0-or-later

#include "PresetBank.h"

#include "Failure.h"
#include "Options.h"
#include "PluginFolders.h"
#include "content/PackageFile.h"
#include "support/BoundedXml.h"

namespace K7R::host
{

namespace
{

constexpr const char* presetTag = "Preset";
constexpr const char* presetExtension = ".qvprs2";
constexpr const char* packagePattern = "*Factory*.k7rpkg";

juce::Array<juce::File> findFiles (const juce::File& folder, const juce::String& pattern)
{
    auto files = folder.findChildFiles (juce::File::findFiles, false, pattern);
    files.sort();
    return files;
}

} // namespace

PresetBank::PresetBank (const juce::File& pluginFile) :
    PresetBank (PluginFolders::getData (pluginFile), PluginFolders::getUser (pluginFile))
{
}

PresetBank::PresetBank (const juce::File& data, const juce::File& user)
{
    if (const auto packages = findFiles (data.getChildFile ("Presets"), packagePattern); ! packages.isEmpty())
        addPackage (packages.getFirst());

    for (const auto& file : findFiles (user.getChildFile ("UserStore/Presets"), juce::String ("*") + presetExtension))
        add (file.getFileNameWithoutExtension(), parseBoundedXml (file), true);
}

void PresetBank::addPackage (const juce::File& file)
{
    const PackageFile package (file);

    for (int i = 0; i < package.getNumEntries(); ++i)
        if (const auto name = package.getEntryName (i); name.endsWith (presetExtension))
            add (name.fromLastOccurrenceOf ("/", false, false).upToLastOccurrenceOf (".", false, false),
                 parseBoundedXml (package.readEntryText (i)), false);
}

void PresetBank::add (const juce::String& name, std::unique_ptr<juce::XmlElement> xml, bool isUsers)
{
    if (xml == nullptr || ! xml->hasTagName (presetTag))
        return;

    xml->setAttribute ("name", name);
    presets.push_back ({ { name, xml->getStringAttribute ("tags"), isUsers }, std::move (xml) });
}

std::vector<PresetBank::Entry> PresetBank::list() const
{
    std::vector<Entry> entries;

    for (const auto& preset : presets)
        entries.push_back (preset.entry);

    return entries;
}

std::shared_ptr<const juce::XmlElement> PresetBank::read (const juce::String& nameOrPath) const
{
    for (const auto& preset : presets)
        if (preset.entry.name.equalsIgnoreCase (nameOrPath))
            return preset.xml;

    if (! nameOrPath.endsWith (presetExtension))
        throw Failure ("there is no preset \"" + nameOrPath + "\"; the command \"presets\" lists them");

    const auto file = resolveFile (nameOrPath);
    auto xml = parseBoundedXml (file);

    if (xml == nullptr || ! xml->hasTagName (presetTag))
        throw Failure (file.getFullPathName() + " is no preset that can be read");

    xml->setAttribute ("name", file.getFileNameWithoutExtension());
    return xml;
}

} // namespace K7R::host
