// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <utility>
#include <vector>

#include <juce_cryptography/juce_cryptography.h>
#include <juce_graphics/juce_graphics.h>

namespace K7R::test
{

// Skins in memory: archives, images, documents.

using SkinMembers = std::vector<std::pair<juce::String, juce::MemoryBlock>>;

inline juce::MemoryBlock textBytes (const juce::String& text)
{
    return { text.toRawUTF8(), text.getNumBytesAsUTF8() };
}

inline juce::MemoryBlock makeZip (const SkinMembers& members, int compressionLevel = 0)
{
    juce::ZipFile::Builder builder;

    for (const auto& [name, content] : members)
        builder.addEntry (new juce::MemoryInputStream (content, false), compressionLevel, name,
                          juce::Time (2000, 0, 1, 12, 0));

    juce::MemoryOutputStream out;
    builder.writeToStream (out, nullptr);
    return out.getMemoryBlock();
}

/** A skin file around a content archive. */
inline juce::MemoryBlock makeSkinFile (const juce::String& name, const juce::MemoryBlock& content)
{
    return makeZip ({ { name + ".skin", content }, { name + ".md5", textBytes (juce::MD5 (content).toHexString()) } });
}

/** A document whose main panel has these attributes and children. */
inline juce::String makeDocument (const juce::String& panelAttributes, const juce::String& panelContent)
{
    return "<PluginEditor><Panel name=\"MainPanel\" " + panelAttributes + ">" + panelContent
           + "</Panel></PluginEditor>";
}

inline juce::MemoryBlock pngBytes (const juce::Image& image)
{
    juce::MemoryOutputStream out;
    juce::PNGImageFormat().writeImageToStream (image, out);
    return out.getMemoryBlock();
}

/** The colour of a frame in the strips of makeStrip(): another one for each of 250. */
inline juce::Colour frameColour (int frame)
{
    return juce::Colour (static_cast<juce::uint8> (frame + 1), static_cast<juce::uint8> (frame * 37 + 11),
                         static_cast<juce::uint8> (255 - frame));
}

/** Frames of flat colours, from the top down. */
inline juce::Image makeStrip (int width, int frameHeight, int numFrames)
{
    juce::Image image (juce::Image::ARGB, width, frameHeight * numFrames, true);

    for (int i = 0; i < numFrames; ++i)
        image.clear ({ 0, i * frameHeight, width, frameHeight }, frameColour (i));

    return image;
}

} // namespace K7R::test
