// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/SkinFile.h"

#include <juce_cryptography/juce_cryptography.h>

#include "core/BasePlugin.h"
#include "parameters/BoundedXml.h"
#include "skin/BoundedFont.h"
#include "skin/BoundedImage.h"
#include "skin/GFXPanel.h"

namespace quilvane
{

namespace
{

constexpr const char* rootTag = "PluginEditor";
constexpr const char* mainPanelName = "MainPanel";
constexpr const char* builtPanelName = "MainEditorPanel";
constexpr juce::int64 maximumDigestBytes = 64;
constexpr int hashReadBuffer = 65536; // bytes; MD5 asks for 512 at a time

constexpr ZipBounds containerBounds { maximumSkinBytes, 16, maximumSkinBytes, maximumSkinBytes };
constexpr ZipBounds contentBounds { maximumSkinBytes, maximumSkinEntries, maximumSkinBytes, maximumSkinBytes };

juce::MemoryBlock readWhole (std::unique_ptr<juce::InputStream> stream)
{
    juce::MemoryBlock data;

    if (stream != nullptr)
        stream->readIntoMemoryBlock (data);

    return data;
}

/** Devices and pipes, which could block, have no size. */
bool isRegular (const juce::File& file, juce::int64 maximumBytes)
{
    return file.existsAsFile() && file.getSize() > 0 && file.getSize() <= maximumBytes;
}

juce::MemoryBlock readFile (const juce::File& file, juce::int64 maximumBytes)
{
    juce::MemoryBlock data;

    if (isRegular (file, maximumBytes))
        file.loadFileAsData (data);

    return data;
}

} // namespace

SkinFile::SkinFile (BasePlugin& owner, Source kind, const juce::String& skinName, const juce::File& skinsDirectory) :
    plugin (owner),
    source (kind),
    name (skinName),
    directory (skinsDirectory)
{
}

SkinFile::SkinFile (BasePlugin& owner, const juce::String& skinName, const void* data, size_t numBytes) :
    plugin (owner),
    source (Source::memory),
    name (skinName),
    memoryData (data),
    memorySize (numBytes)
{
}

//==============================================================================
void SkinFile::openArchives()
{
    // Good or bad, the first attempt is the only one.
    if (std::exchange (archivesTried, true))
        return;

    std::unique_ptr<juce::InputStream> stream;

    if (source == Source::memory)
        stream = std::make_unique<juce::MemoryInputStream> (memoryData, memorySize, false);
    else if (const auto file = directory.getChildFile (name + fileExtension);
             file.getParentDirectory() == directory && isRegular (file, maximumSkinBytes))
        stream = file.createInputStream();

    if (stream == nullptr)
        return;

    containerArchive = BoundedZip::open (std::move (stream), containerBounds);

    if (containerArchive == nullptr)
        return;

    const auto digest =
        readWhole (containerArchive->openEntry (containerArchive->findEntry (name + ".md5"), maximumDigestBytes))
            .toString();
    const auto index = containerArchive->findEntry (name + ".skin");
    auto content = containerArchive->openStoredEntry (index);

    if (content == nullptr)
        content = containerArchive->openEntry (index, maximumSkinBytes);

    if (content == nullptr)
        return;

    juce::BufferedInputStream buffered (*content, hashReadBuffer);

    if (juce::MD5 (buffered).toHexString().equalsIgnoreCase (digest))
        contentArchive = BoundedZip::open (std::move (content), contentBounds);
}

juce::MemoryBlock SkinFile::readResource (const juce::String& resourceName, juce::int64 maximumBytes)
{
    if (resourceName.isEmpty())
        return {};

    if (source == Source::builtIn)
    {
        const auto file = plugin.getEmbeddedFile (resourceName);
        return file.numBytes <= static_cast<size_t> (maximumBytes) ? juce::MemoryBlock (file.data, file.numBytes)
                                                                   : juce::MemoryBlock();
    }

    if (source == Source::folder)
    {
        const auto folder = directory.getChildFile (name);
        const auto file = folder.getChildFile (resourceName);
        return file.isAChildOf (folder) ? readFile (file, maximumBytes) : juce::MemoryBlock();
    }

    openArchives();

    if (contentArchive == nullptr)
        return {};

    return readWhole (contentArchive->openEntry (contentArchive->findEntry (resourceName), maximumBytes));
}

//==============================================================================
std::unique_ptr<GFXPanel> SkinFile::loadEditorPanel()
{
    const auto document = readResource (documentName, maximumXmlBytes);
    juce::MemoryInputStream stream (document, false);
    return parseDocument (parseBoundedXml (stream.readEntireStreamAsString()).get());
}

std::unique_ptr<GFXPanel> SkinFile::parseDocument (const juce::XmlElement* root)
{
    if (root == nullptr || ! root->getTagName().equalsIgnoreCase (rootTag))
        return nullptr;

    if (const auto* list = root->getChildByName ("Fonts"))
        for (const auto* font : list->getChildWithTagNameIterator ("font"))
            if (fonts.size() < maximumSkinFonts)
                fonts.push_back ({ font->getStringAttribute ("typeface"), font->getStringAttribute ("style") == "bold",
                                   font->getStringAttribute ("file"), nullptr });

    for (const auto* element : root->getChildWithTagNameIterator ("Panel"))
    {
        if (! element->getStringAttribute ("name").equalsIgnoreCase (mainPanelName))
            continue;

        auto panel = std::make_unique<GFXPanel> (builtPanelName);
        panel->readFromXml (*element, *this);
        return panel;
    }

    return nullptr;
}

juce::Image SkinFile::getImage (const juce::String& resourceName)
{
    const auto data = readResource (resourceName, juce::jmin (maximumSkinImageBytes, imageBytesLeft));
    imageBytesLeft -= static_cast<juce::int64> (data.getSize());

    auto image = decodeBoundedImage (data.getData(), data.getSize(), pixelsLeft);

    if (image.isValid())
        pixelsLeft -= static_cast<juce::int64> (image.getWidth()) * image.getHeight();
    else if (! data.isEmpty())
        pixelsLeft = juce::jmax (juce::int64(), pixelsLeft - pixelsOfDamagedImage);

    return image;
}

juce::Typeface::Ptr SkinFile::getTypeface (const juce::String& typefaceName, bool bold)
{
    for (auto& font : fonts)
    {
        if (font.bold != bold || ! font.typefaceName.equalsIgnoreCase (typefaceName))
            continue;

        if (font.typeface == nullptr)
        {
            const auto data = readResource (font.fileName, juce::jmin (maximumSkinFontBytes, fontBytesLeft));
            fontBytesLeft -= static_cast<juce::int64> (data.getSize());

            font.typeface = createBoundedTypeface (data.getData(), data.getSize());
        }

        if (font.typeface != nullptr)
            return font.typeface;
    }

    return nullptr;
}

} // namespace quilvane
