// SPDX-License-Identifier: GPL-3.0-or-later

#include <iostream>

#include <juce_gui_basics/juce_gui_basics.h>

#include "Commands.h"
#include "Failure.h"
#include "Options.h"
#include "SkinArchive.h"
#include "parameters/BoundedXml.h"

namespace quilvane::skin
{

namespace
{

constexpr juce::int64 maximumImagePixels = 32 * 1000 * 1000;

// The first chunk of a PNG file: where the picture's width and height stand.
constexpr size_t pngHeaderBytes = 24;
constexpr int pngWidthOffset = 16;
constexpr int pngHeightOffset = 20;

/** The attributes of all elements that may name an image. */
constexpr const char* imageAttributes[] { "resource",    "background", "firstDigit",
                                          "secondDigit", "thirdDigit", "fourthDigit" };

void checkImage (const juce::MemoryBlock& data, const juce::String& name)
{
    juce::MemoryInputStream stream (data, false);
    juce::PNGImageFormat png;

    if (data.getSize() < pngHeaderBytes || ! png.canUnderstand (stream))
        throw Failure ("the image \"" + name + "\" is not a PNG file");

    const auto* header = static_cast<const char*> (data.getData());
    const auto width = static_cast<juce::int64> (juce::ByteOrder::bigEndianInt (header + pngWidthOffset));
    const auto height = static_cast<juce::int64> (juce::ByteOrder::bigEndianInt (header + pngHeightOffset));

    // Asked before the decoder makes room for them.
    if (width < 1 || height < 1 || width > maximumImagePixels || height > maximumImagePixels
        || width * height > maximumImagePixels)
        throw Failure ("the image \"" + name + "\" is too large");

    stream.setPosition (0);

    if (! png.decodeImage (stream).isValid())
        throw Failure ("the image \"" + name + "\" is damaged");
}

void checkResources (const juce::XmlElement& element, BoundedZip& archive, juce::StringArray& known)
{
    for (const auto* attribute : imageAttributes)
    {
        const auto name = element.getStringAttribute (attribute);

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
    const auto index = archive->findEntry (documentName);

    if (index < 0)
        throw Failure (file.getFullPathName() + " has no " + documentName);

    const auto document = parseBoundedXml (readMember (*archive, index).toString());

    if (document == nullptr || ! document->getTagName().equalsIgnoreCase ("PluginEditor"))
        throw Failure ("the document of " + file.getFullPathName() + " is not that of a skin");

    juce::StringArray images;

    // What the list of skins shows of each of them.
    for (const auto* name : { "Background.png", "Thumbnail.png" })
    {
        juce::XmlElement listed ("gfx");
        listed.setAttribute ("resource", name);
        checkResources (listed, *archive, images);
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
