// SPDX-License-Identifier: GPL-3.0-or-later

#include "PresetFolder.h"

#include <algorithm>
#include <initializer_list>

#include "Failure.h"
#include "content/PackageFile.h"
#include "support/BoundedXml.h"

namespace K7R::package
{

namespace
{

/** A file's bytes, which stay as they are, if they are an XML document. */
std::pair<Member, std::unique_ptr<juce::XmlElement>> readDocument (const juce::File& file, const juce::String& name)
{
    if (file.getSize() > maximumPackageMemberBytes)
        throw Failure (file.getFullPathName() + " is larger than a package takes");

    Member member { name, {} };

    if (! file.loadFileAsData (member.content))
        throw Failure ("cannot read " + file.getFullPathName());

    auto xml = parseBoundedXml (member.content.toString());

    if (xml == nullptr)
        throw Failure (file.getFullPathName() + " is not an XML document");

    return { std::move (member), std::move (xml) };
}

Member readManifest (const juce::File& file)
{
    if (! file.existsAsFile())
        throw Failure ("there is no manifest " + file.getFullPathName());

    auto [member, xml] = readDocument (file, PackageFile::manifestEntry);

    for (const auto* attribute : { "product", "name" })
        if (xml->getStringAttribute (attribute).isEmpty())
            throw Failure (file.getFullPathName() + " has no attribute \"" + attribute + "\"");

    return member;
}

Member readPreset (const juce::File& file)
{
    const auto name = file.getFileName();

    if (name.getNumBytesAsUTF8() > static_cast<size_t> (maximumZipNameBytes))
        throw Failure (file.getFullPathName() + " has too long a name");

    auto [member, xml] = readDocument (file, name);

    if (! xml->getTagName().equalsIgnoreCase ("Preset"))
        throw Failure (file.getFullPathName() + " is not a preset");

    return member;
}

} // namespace

std::vector<Member> readPresetFolder (const juce::File& folder)
{
    if (! folder.isDirectory())
        throw Failure ("there is no folder " + folder.getFullPathName());

    auto files = folder.findChildFiles (juce::File::findFiles, false, juce::String ("*") + presetExtension);

    // By code points, whatever the file system's order and the language.
    std::sort (files.begin(), files.end(),
               [] (const auto& a, const auto& b) { return a.getFileName().compare (b.getFileName()) < 0; });

    std::vector<Member> members { readManifest (folder.getChildFile (manifestFile)) };
    juce::StringArray names;

    for (const auto& file : files)
    {
        if (names.contains (file.getFileName(), true))
            throw Failure (file.getFullPathName() + " differs from another preset's name in case only");

        names.add (file.getFileName());
        members.push_back (readPreset (file));
    }

    if (names.isEmpty())
        throw Failure ("there are no presets in " + folder.getFullPathName());

    if (static_cast<int> (members.size()) > maximumPackageEntries)
        throw Failure ("there are more presets in " + folder.getFullPathName() + " than a package takes");

    return members;
}

} // namespace K7R::package
