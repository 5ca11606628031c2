// SPDX-License-Identifier: GPL-3.0-or-later

#include <iostream>

#include "Commands.h"
#include "Failure.h"
#include "Options.h"
#include "PrintableText.h"
#include "SkinArchive.h"
#include "parameters/BoundedXml.h"
#include "skin/BoundedImage.h"
#include "skin/SkinFile.h"

namespace quilvane::skin
{

namespace
{

/** The attributes of all elements that may name an image. */
constexpr const char* imageAttributes[] { "resource",    "background", "firstDigit",
                                          "secondDigit", "thirdDigit", "fourthDigit" };

void checkImage (const juce::MemoryBlock& data, const juce::String& name)
{
    if (! decodeBoundedImage (data.getData(), data.getSize(), maximumSkinPixels).isValid())
        throw Failure ("the image \"" + name + "\" is damaged, too large, or none that the plug-in reads");
}

void checkResources (const juce::XmlElement& element, BoundedZip& archive, juce::StringArray& known)
{
    for (const auto* attribute : imageAttributes)
    {
        const auto& name = element.getStringAttribute (attribute);

        if (name.isEmpty() || known.contains (name))
            continue;

        const auto index = archive.findEntry (name);

        if (index < 0)
            throw Failure ("there is no member \"" + printable (name) + "\", which the document names");

        checkImage (readMember (archive, index), printable (name));
        known.add (name);
    }

    if (element.hasTagName ("font") && element.hasAttribute ("file")
        && archive.findEntry (element.getStringAttribute ("file")) < 0)
        throw Failure ("there is no font \"" + printable (element.getStringAttribute ("file")) + "\"");

    for (const auto* child : element.getChildIterator())
        checkResources (*child, archive, known);
}

void runVerify (const juce::ArgumentList& arguments)
{
    const Options options (arguments, {});
    const auto& names = options.requirePositional (1, 1, "one file, FILE.k7rskin");
    const auto file = resolveFile (names[0]);
    const auto archive = openSkin (file);
    const auto index = archive->findEntry (SkinFile::documentName);

    if (index < 0)
        throw Failure (file.getFullPathName() + " has no " + SkinFile::documentName);

    const auto document = parseBoundedXml (readMember (*archive, index).toString());

    if (document == nullptr || ! document->getTagName().equalsIgnoreCase ("PluginEditor"))
        throw Failure ("the document of " + file.getFullPathName() + " is not that of a skin");

    juce::StringArray images;

    // What lists of skins show; a skin may do without them.
    for (const auto* name : { SkinFile::backgroundName, SkinFile::thumbnailName })
        if (const auto preview = archive->findEntry (name); preview >= 0)
        {
            checkImage (readMember (*archive, preview), name);
            images.add (name);
        }

    checkResources (*document, *archive, images);
    std::cout << file.getFileName() << ": " << archive->getNumEntries() << " members, " << images.size()
              << " images; the digest is right" << std::endl;
}

} // namespace

juce::ConsoleApplication::Command makeVerifyCommand()
{
    return { "verify", "verify FILE.k7rskin", "Checks a skin's digest, document and images",
             "Opens the skin as the plug-in does, reads its document, and decodes each image that the document\n"
             "names.",
             runVerify };
}

} // namespace quilvane::skin
