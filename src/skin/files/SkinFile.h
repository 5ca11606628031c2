// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include <juce_gui_basics/juce_gui_basics.h>

#include "support/BoundedZip.h"

namespace K7R
{

class BasePlugin;
class GFXPanel;
class Parameter;
class SkinProblems;

/** A skin of 1000 x 620 pixels with strips of 101 frames takes 5 MiB. */
constexpr juce::int64 maximumSkinBytes = 64LL * 1024 * 1024;
constexpr int maximumSkinEntries = 2048;
constexpr ZipBounds skinContainerBounds { maximumSkinBytes, 16, maximumSkinBytes, maximumSkinBytes };
constexpr ZipBounds skinContentBounds { maximumSkinBytes, maximumSkinEntries, maximumSkinBytes, maximumSkinBytes };
constexpr juce::int64 maximumSkinImageBytes = 32LL * 1024 * 1024;

constexpr juce::int64 maximumSkinFontBytes = 8LL * 1024 * 1024;
constexpr juce::int64 maximumSkinFontReads = 64LL * 1024 * 1024;

/** Of all images that a panel holds, 4 bytes each; a skin of the size above holds 14 million. */
constexpr juce::int64 maximumSkinPixels = 48LL * 1024 * 1024;

/** What an image that can't be decoded counts for, because finding that out can take as long as decoding it. */
constexpr juce::int64 pixelsOfDamagedImage = maximumSkinPixels / 32;

/** A mixer's channel counts as one. The gallery of the tests, which has every control, takes 119. */
constexpr int maximumSkinControls = 2000;

/** How often controls may cover the main panel. One repaint paints them all. */
constexpr juce::int64 maximumSkinLayers = 16;

/** The same in pixels, for large panels. */
constexpr juce::int64 maximumSkinArea = 64LL * 1024 * 1024;

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
    keep it. An image is decoded once, and those who ask for it share its pixels. What can't be found is an invalid
    image, a null font, or a null panel; why, is told to a list of problems, if there is one.

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

    /** An image, by the exact name of its member. */
    juce::Image getImage (const juce::String& resourceName);

    /** The skin's font of this name (without regard to case) and weight; null if it has none. */
    juce::Typeface::Ptr getTypeface (const juce::String& typefaceName, bool bold);

    //==============================================================================
    // For what reads an element. All of these report what they don't find.

    /** The image that an attribute names; an invalid one if it names none, which is no problem. */
    juce::Image readImage (const juce::XmlElement&, const char* attribute);

    /** The parameter that an attribute names, or null. */
    Parameter* readParameter (const juce::XmlElement&, const char* attribute);

    /** The number of the event that an attribute names. */
    std::optional<int> readEvent (const juce::XmlElement&, const char* attribute);

    /** Whether the document may have one more control; each asks once.
        @param weight how many of the plain ones it counts for */
    bool takeControl (const juce::XmlElement&, int weight = 1);

    /** Tells of a panel's size, before its controls are built. The first one is the main panel's. */
    void enterPanel (juce::Rectangle<int> bounds);

    /** Whether the main panel may have so many more pixels painted; each control asks once. */
    bool takeArea (const juce::XmlElement&, juce::int64 pixels);

    //==============================================================================
    /** Gives the list that hears of all that can't be shown, before the panel is built; null, as at first, for none. */
    void setProblems (SkinProblems* list) noexcept { problems = list; }

    /** Adds a problem to the list, if there is one.
        @param element null for the skin as a whole */
    void report (const juce::XmlElement* element, const juce::String& text) const;

    /** How many of its images could be decoded so far. */
    int getNumImages() const;

    static constexpr const char* fileExtension = ".k7rskin";
    static constexpr const char* filePattern = "*.k7rskin";
    static constexpr const char* documentName = "skin.xml";
    static constexpr const char* skinsFolder = "Skins";
    static constexpr const char* thumbnailName = "Thumbnail.png";
    static constexpr const char* backgroundName = "Background.png";

private:
    /** An image that was asked for, or why there is none. */
    struct KnownImage
    {
        juce::Image image;
        juce::String fault;
    };

    void openArchives();
    std::unique_ptr<GFXPanel> parseDocument (const juce::XmlElement&);
    void readFonts (const juce::XmlElement& list);
    bool loadTypeface (SkinFont&);
    std::unique_ptr<GFXPanel> buildMainPanel (const juce::XmlElement&);

    const KnownImage& findImage (const juce::String& resourceName);
    KnownImage decodeImage (const juce::String& resourceName);

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

    SkinProblems* problems = nullptr;
    std::vector<SkinFont> fonts;
    std::map<juce::String, KnownImage> images;
    juce::int64 pixelsLeft = maximumSkinPixels;
    int controlsLeft = maximumSkinControls;
    std::optional<juce::int64> areaLeft; // once the main panel's size is known
    juce::int64 fontBytesLeft = maximumSkinFontReads;
};

} // namespace K7R
