// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <vector>

#include <juce_gui_basics/juce_gui_basics.h>

#include "content/BoundedZip.h"

namespace quilvane
{

class BasePlugin;
class GFXPanel;

/** A skin of 1000 x 620 pixels with strips of 101 frames takes 5 MiB. */
constexpr juce::int64 maximumSkinBytes = 64LL * 1024 * 1024;
constexpr int maximumSkinEntries = 2048;
constexpr juce::int64 maximumSkinImageBytes = 32LL * 1024 * 1024;

/** Of all images that are read, as files: each control that names one reads it anew. */
constexpr juce::int64 maximumSkinImageReads = 256LL * 1024 * 1024;

constexpr juce::int64 maximumSkinFontBytes = 8LL * 1024 * 1024;
constexpr juce::int64 maximumSkinFontReads = 64LL * 1024 * 1024;

/** Of all images that a panel holds, 4 bytes each; a skin of the size above holds 14 million. */
constexpr juce::int64 maximumSkinPixels = 48LL * 1024 * 1024;

/** What an image that can't be decoded counts for, because finding that out can take as long as decoding it. */
constexpr juce::int64 pixelsOfDamagedImage = maximumSkinPixels / 32;

constexpr int maximumSkinControls = 2000;
constexpr size_t maximumSkinFonts = 64;

/** A font file that a skin carries. */
struct SkinFont
{
    juce::String typefaceName;
    bool bold = false;
    juce::String fileName;
    juce::Typeface::Ptr typeface; // null until first asked for
};

/** The editor's look: one document that lays out a panel of controls, with the images and fonts that it names.

    A skin file, `.k7rskin`, is a ZIP archive of two members, named after the file: `<name>.skin`, which is a ZIP
    archive with the document "skin.xml" and its resources, and `<name>.md5`, the digest of that member in 32
    hexadecimal digits and nothing else. So a renamed file is no skin any more. The digest finds damage; it keeps
    nobody out, so all of a skin is taken for hostile: sizes, numbers and pixels are bounded by the constants below.

    Lives while a panel is built or a preview is read. Controls are given it while they read themselves and don't
    keep it. Every image is decoded afresh for each that asks for it. No failure is reported: what can't be found is
    an invalid image, a null font, or a null panel.

    For the message thread.
*/
class SkinFile
{
public:
    enum class Source
    {
        builtIn, // the program's own embedded files
        folder,  // an unpacked skin in a folder of its name
        file,    // `<name>.k7rskin`
        memory,  // the bytes of such a file
    };

    /** Opens nothing yet.
        @param skinsDirectory where folders and files lie */
    SkinFile (BasePlugin&, Source, const juce::String& skinName, const juce::File& skinsDirectory = {});

    /** A skin in memory, which has to outlive this object. */
    SkinFile (BasePlugin&, const juce::String& skinName, const void* data, size_t numBytes);

    SkinFile (const SkinFile&) = delete;
    SkinFile& operator= (const SkinFile&) = delete;

    /** The plug-in whose parameters and events the controls look up. */
    BasePlugin& getPlugin() const noexcept { return plugin; }
    const juce::String& getName() const noexcept { return name; }

    /** Reads the document and builds the panel "MainPanel" with all its controls.
        @returns null if the skin, or its document, can't be used */
    std::unique_ptr<GFXPanel> loadEditorPanel();

    /** Decodes an image, by the exact name of its member. */
    juce::Image getImage (const juce::String& resourceName);

    /** The skin's font of this name (without regard to case) and weight; null if it has none. */
    juce::Typeface::Ptr getTypeface (const juce::String& typefaceName, bool bold);

    /** Whether the document may have one more control; each asks once. */
    bool takeControl() noexcept { return controlsLeft-- > 0; }

    static constexpr const char* fileExtension = ".k7rskin";
    static constexpr const char* filePattern = "*.k7rskin";
    static constexpr const char* documentName = "skin.xml";
    static constexpr const char* skinsFolder = "Skins";
    static constexpr const char* thumbnailName = "Thumbnail.png";
    static constexpr const char* backgroundName = "Background.png";

private:
    void openArchives();
    std::unique_ptr<GFXPanel> parseDocument (const juce::XmlElement*);

    /** A resource or the document, whole; an empty block if it's missing or larger than it may be. */
    juce::MemoryBlock readResource (const juce::String& resourceName, juce::int64 maximumBytes);

    BasePlugin& plugin;
    const Source source;
    const juce::String name;
    const juce::File directory;
    const void* const memoryData = nullptr;
    const size_t memorySize = 0;

    // The content reads through the container, so it has to go first.
    bool archivesTried = false;
    std::unique_ptr<BoundedZip> containerArchive;
    std::unique_ptr<BoundedZip> contentArchive;

    std::vector<SkinFont> fonts;
    juce::int64 pixelsLeft = maximumSkinPixels;
    juce::int64 imageBytesLeft = maximumSkinImageReads;
    int controlsLeft = maximumSkinControls;
    juce::int64 fontBytesLeft = maximumSkinFontReads;
};

} // namespace quilvane
