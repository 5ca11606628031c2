// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/files/SkinFile.h"

#include <algorithm>
#include <utility>

#include <juce_cryptography/juce_cryptography.h>

#include "core/BasePlugin.h"
#include "skin/GFXPanel.h"
#include "skin/SkinProblems.h"
#include "skin/SkinVocabulary.h"
#include "skin/files/BoundedFont.h"
#include "skin/files/BoundedImage.h"
#include "support/BoundedXml.h"
#include "support/SafeFile.h"

namespace K7R
{

namespace
{

constexpr const char* rootTag = "PluginEditor";
constexpr const char* mainPanelName = "MainPanel";
constexpr const char* builtPanelName = "MainEditorPanel";
constexpr juce::int64 maximumDigestBytes = 64;
constexpr int hashReadBuffer = 65536; // bytes; MD5 asks for 512 at a time

juce::MemoryBlock readWhole (std::unique_ptr<juce::InputStream> stream)
{
    juce::MemoryBlock data;

    if (stream != nullptr)
        stream->readIntoMemoryBlock (data);

    return data;
}

/** Devices and pipes could block. */
bool isReadable (const juce::File& file, juce::int64 maximumBytes)
{
    return isRegularFile (file) && file.getSize() <= maximumBytes;
}

juce::MemoryBlock readFile (const juce::File& file, juce::int64 maximumBytes)
{
    juce::MemoryBlock data;

    if (isReadable (file, maximumBytes))
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
             file.getParentDirectory() == directory && isReadable (file, maximumSkinBytes))
        stream = file.createInputStream();

    if (stream == nullptr)
        return;

    containerArchive = BoundedZip::open (std::move (stream), skinContainerBounds);

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
        contentArchive = BoundedZip::open (std::move (content), skinContentBounds);
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
    const auto text = stream.readEntireStreamAsString();
    const auto root = parseBoundedXml (text);

    if (root == nullptr)
    {
        report (nullptr, document.isEmpty() ? "there is no document, or one of more than 4 MiB"
                                            : "the document isn't well-formed XML, or holds more than may be read");
        return nullptr;
    }

    if (problems != nullptr)
    {
        problems->setDocument (text, *root);
        reportUnknownNames (*root, *this);
    }

    return parseDocument (*root);
}

std::unique_ptr<GFXPanel> SkinFile::parseDocument (const juce::XmlElement& root)
{
    if (! root.getTagName().equalsIgnoreCase (rootTag))
    {
        report (&root, juce::String ("the document of a skin is a ") + rootTag);
        return nullptr;
    }

    if (const auto* list = root.getChildByName ("Fonts"))
        readFonts (*list);

    for (const auto* element : root.getChildWithTagNameIterator ("Panel"))
        if (element->getStringAttribute ("name").equalsIgnoreCase (mainPanelName))
            return buildMainPanel (*element);

    report (&root, juce::String ("there is no Panel with the name \"") + mainPanelName + "\"");
    return nullptr;
}

std::unique_ptr<GFXPanel> SkinFile::buildMainPanel (const juce::XmlElement& element)
{
    auto panel = std::make_unique<GFXPanel> (builtPanelName);
    panel->readFromXml (element, *this);

    if (panel->getBounds().isEmpty())
        report (&element, "the panel has neither an image nor a size, so the plug-in doesn't show the skin");

    return panel;
}

//==============================================================================
void SkinFile::readFonts (const juce::XmlElement& list)
{
    for (const auto* font : list.getChildWithTagNameIterator ("font"))
    {
        if (fonts.size() == maximumSkinFonts)
            return report (font, "there are more than " + juce::String (maximumSkinFonts) + " fonts");

        auto& added = fonts.emplace_back();
        added.typefaceName = font->getStringAttribute ("typeface");
        added.bold = font->getStringAttribute ("style") == "bold";
        added.fileName = font->getStringAttribute ("file");

        // Else it's read once it's asked for.
        if (problems != nullptr && ! loadTypeface (added))
            report (font, "there is no font \"" + added.fileName + "\" that can be read");
    }
}

bool SkinFile::loadTypeface (SkinFont& font)
{
    if (font.typeface == nullptr)
    {
        const auto data = readResource (font.fileName, juce::jmin (maximumSkinFontBytes, fontBytesLeft));
        fontBytesLeft -= static_cast<juce::int64> (data.getSize());
        font.typeface = createBoundedTypeface (data.getData(), data.getSize());
    }

    return font.typeface != nullptr;
}

juce::Typeface::Ptr SkinFile::getTypeface (const juce::String& typefaceName, bool bold)
{
    for (auto& font : fonts)
        if (font.bold == bold && font.typefaceName.equalsIgnoreCase (typefaceName) && loadTypeface (font))
            return font.typeface;

    return nullptr;
}

//==============================================================================
SkinFile::KnownImage SkinFile::decodeImage (const juce::String& resourceName)
{
    const auto data = readResource (resourceName, maximumSkinImageBytes);

    if (data.isEmpty())
        return { {}, "there is no image \"" + resourceName + "\", or one of more than 32 MiB" };

    auto image = decodeBoundedImage (data.getData(), data.getSize(), pixelsLeft);
    const auto hadRoomLeft = pixelsLeft;

    if (image.isValid())
    {
        pixelsLeft -= static_cast<juce::int64> (image.getWidth()) * image.getHeight();
        return { image, {} };
    }

    pixelsLeft = juce::jmax (juce::int64(), pixelsLeft - pixelsOfDamagedImage);

    const auto wouldFit = problems != nullptr && hadRoomLeft < maximumSkinPixels
                          && decodeBoundedImage (data.getData(), data.getSize(), maximumSkinPixels).isValid();
    return { {},
             wouldFit ? "the images before \"" + resourceName + "\" leave it no room: together they may have "
                            + juce::String (maximumSkinPixels) + " pixels"
                      : "the image \"" + resourceName + "\" is damaged, too large, or no PNG, JPEG or GIF" };
}

const SkinFile::KnownImage& SkinFile::findImage (const juce::String& resourceName)
{
    const auto known = images.find (resourceName);
    return known != images.end() ? known->second
                                 : images.emplace (resourceName, decodeImage (resourceName)).first->second;
}

juce::Image SkinFile::getImage (const juce::String& resourceName)
{
    return findImage (resourceName).image;
}

juce::Image SkinFile::readImage (const juce::XmlElement& element, const char* attribute)
{
    const auto& resourceName = element.getStringAttribute (attribute);

    if (resourceName.isEmpty())
        return {};

    const auto& known = findImage (resourceName);

    if (! known.image.isValid())
        report (&element, known.fault);

    return known.image;
}

int SkinFile::getNumImages() const
{
    return static_cast<int> (
        std::count_if (images.begin(), images.end(), [] (const auto& known) { return known.second.image.isValid(); }));
}

//==============================================================================
Parameter* SkinFile::readParameter (const juce::XmlElement& element, const char* attribute)
{
    const auto& wanted = element.getStringAttribute (attribute);
    auto* parameter = plugin.getParameters().getParameterByName (wanted);

    if (parameter == nullptr)
        report (&element, "there is no parameter \"" + wanted + "\"");

    return parameter;
}

std::optional<int> SkinFile::readEvent (const juce::XmlElement& element, const char* attribute)
{
    const auto& wanted = element.getStringAttribute (attribute);
    const auto uid = plugin.getEvents().findUid (wanted);

    if (! uid)
        report (&element, "there is no event \"" + wanted + "\"");

    return uid;
}

bool SkinFile::takeControl (const juce::XmlElement& element, int weight)
{
    if (controlsLeft >= weight)
    {
        controlsLeft -= weight;
        return true;
    }

    // The first one speaks for the rest.
    if (std::exchange (controlsLeft, -1) >= 0)
        report (&element, "there are more than " + juce::String (maximumSkinControls)
                              + " controls and channels; the rest isn't built");

    return false;
}

void SkinFile::enterPanel (juce::Rectangle<int> bounds)
{
    if (! areaLeft)
        areaLeft = juce::jmin (maximumSkinArea,
                               maximumSkinLayers * static_cast<juce::int64> (bounds.getWidth()) * bounds.getHeight());
}

bool SkinFile::takeArea (const juce::XmlElement& element, juce::int64 pixels)
{
    if (pixels > areaLeft.value_or (0))
    {
        report (&element, "the controls cover the panel more than " + juce::String (maximumSkinLayers)
                              + " times, or more than " + juce::String (maximumSkinArea)
                              + " pixels; this one isn't built");
        return false;
    }

    areaLeft = areaLeft.value_or (0) - pixels;
    return true;
}

void SkinFile::report (const juce::XmlElement* element, const juce::String& text) const
{
    if (problems != nullptr)
        problems->add (element, text);
}

} // namespace K7R
