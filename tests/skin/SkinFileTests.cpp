// SPDX-License-Identifier: GPL-3.0-or-later

// The skin as a file: archives, digests, documents, images and fonts, and what damage does to them.

#include <cstring>

#include "skin/files/BoundedImage.h"
#include "support/BoundedXml.h"
#include "support/SkinInTest.h"
#include "widgets/look/DefaultLookAndFeel.h"

using namespace K7R;
using namespace quilvane;
using namespace K7R::test;

namespace
{

const auto goodDocument = makeDocument ({}, "<size width=\"30\" height=\"20\"/>");

class SkinFiles : public SkinTest
{
protected:
    SkinFiles() : folder (juce::File::createTempFile ("skins")) { folder.createDirectory(); }
    ~SkinFiles() override { folder.deleteRecursively(); }

    bool loads (const juce::MemoryBlock& file, const juce::String& name = "Good")
    {
        return SkinFile (plugin(), name, file.getData(), file.getSize()).loadEditorPanel() != nullptr;
    }

    juce::Image loadImage (const juce::MemoryBlock& bytes, const juce::String& name = "image")
    {
        const auto file = makeSkinFile ("Good", makeZip ({ { "image", bytes } }));
        return SkinFile (plugin(), "Good", file.getData(), file.getSize()).getImage (name);
    }

    juce::File folder;
};

juce::MemoryBlock contentOf (const juce::String& document)
{
    return makeZip ({ { "skin.xml", textBytes (document) } }, 9);
}

/** A PNG file whose header claims a size. */
juce::MemoryBlock pngThatClaims (juce::uint32 width, juce::uint32 height)
{
    auto bytes = pngBytes (makeStrip (4, 4, 1));
    juce::uint32 size[] { juce::ByteOrder::swapIfLittleEndian (width), juce::ByteOrder::swapIfLittleEndian (height) };
    bytes.copyFrom (size, 16, sizeof (size));
    return bytes;
}

/** A GIF file of 4 x 2 pixels, the palette's colours twice, on a screen of any size. */
juce::MemoryBlock gif (juce::uint8 pictureWidth = 4, juce::uint8 codeSize = 2, juce::uint8 flags = 0)
{
    // Codes of 3 bits: clear, 0, 1, clear, 2, 3, and so on; the clears keep their length.
    const juce::uint8 codes[] { 4, 0, 1, 4, 2, 3, 4, 0, 1, 4, 2, 3, 5 };
    juce::uint8 packed[5] {};

    for (int i = 0; i < 13; ++i)
        for (int bit = 0; bit < 3; ++bit)
            packed[(i * 3 + bit) / 8] |= static_cast<juce::uint8> (((codes[i] >> bit) & 1) << ((i * 3 + bit) % 8));

    const juce::uint8 head[] { 'G',  'I', 'F', '8',   '9',      'a', 1, 0,   1, 0, 0x81, 0,   0,
                               0,    0,   0,   255,   0,        0,   0, 255, 0, 0, 0,    255, '!',
                               0xf9, 4,   1,   0,     0,        3,   0, ',', 0, 0, 0,    0,   pictureWidth,
                               0,    2,   0,   flags, codeSize, 5 };
    juce::MemoryBlock bytes (head, sizeof (head));
    bytes.append (packed, sizeof (packed));
    bytes.append ("\0;", 2);
    return bytes;
}

} // namespace

TEST_F (SkinFiles, CarryTheDigestOfTheirContent)
{
    const auto content = contentOf (goodDocument);
    const auto digest = juce::MD5 (content).toHexString();

    const struct
    {
        const char* what;
        SkinMembers members;
        bool isGood;
    } cases[] {
        { "as packed", { { "Good.skin", content }, { "Good.md5", textBytes (digest) } }, true },
        { "upper case", { { "Good.skin", content }, { "Good.md5", textBytes (digest.toUpperCase()) } }, true },
        { "line end", { { "Good.skin", content }, { "Good.md5", textBytes (digest + "\n") } }, false },
        { "wrong digest",
          { { "Good.skin", content }, { "Good.md5", textBytes (digest.replaceCharacters ("0123", "4567")) } },
          false },
        { "long digest",
          { { "Good.skin", content }, { "Good.md5", textBytes (digest.paddedRight (' ', 100)) } },
          false },
        { "no digest", { { "Good.skin", content } }, false },
        { "no content", { { "Good.md5", textBytes (digest) } }, false },
        { "renamed", { { "Other.skin", content }, { "Other.md5", textBytes (digest) } }, false },
        { "nothing", {}, false },
    };

    for (const auto& test : cases)
        for (const int level : { 0, 9 })
            EXPECT_EQ (loads (makeZip (test.members, level)), test.isGood) << test.what << ", level " << level;

    EXPECT_FALSE (loads (textBytes ("no archive")));
    EXPECT_FALSE (loads ({}));
    EXPECT_FALSE (loads (makeSkinFile ("Good", textBytes ("no archive"))));
}

TEST_F (SkinFiles, HaveADocumentWithAMainPanel)
{
    const struct
    {
        juce::String document;
        bool isGood;
    } cases[] {
        { goodDocument, true },
        { "<plugineditor><Panel name=\"mainPANEL\"/></plugineditor>", true },
        { "<PluginEditor><Fonts/><Panel name=\"Other\"/><Panel name=\"MainPanel\"/></PluginEditor>", true },
        { "<Editor><Panel name=\"MainPanel\"/></Editor>", false },
        { "<PluginEditor><Panel name=\"Other\"/></PluginEditor>", false },
        { "<PluginEditor><Panel/></PluginEditor>", false },
        { "<PluginEditor><Panel name=\"MainPanel\"></PluginEditor>", false },
        { "", false },
    };

    for (const auto& test : cases)
        EXPECT_EQ (loads (makeSkinFile ("Good", contentOf (test.document))), test.isGood) << test.document;

    // The first panel of the name wins.
    const auto chosen =
        buildDocument ("<PluginEditor><Panel name=\"MainPanel\"><size width=\"1\" height=\"2\"/></Panel>"
                       "<Panel name=\"MainPanel\"><size width=\"3\" height=\"4\"/></Panel></PluginEditor>");
    ASSERT_NE (chosen, nullptr);
    EXPECT_EQ (chosen->getBounds(), juce::Rectangle<int> (1, 2));
    EXPECT_EQ (chosen->getName(), "MainEditorPanel");
}

TEST_F (SkinFiles, LieInFoldersAndFiles)
{
    const auto document = makeDocument ({}, strip ("20x10x1", 1));
    const auto image = pngBytes (makeStrip (20, 10, 1));
    const auto file = makeSkinFile ("Packed", makeZip ({ { "skin.xml", textBytes (document) }, { "20x10x1", image } }));
    folder.getChildFile ("Packed.k7rskin").replaceWithData (file.getData(), file.getSize());
    folder.getChildFile ("Renamed.k7rskin").replaceWithData (file.getData(), file.getSize());
    folder.getChildFile ("Directory.k7rskin").createDirectory();
    folder.getChildFile ("Open").createDirectory();
    folder.getChildFile ("Open/skin.xml").replaceWithText (document);
    folder.getChildFile ("Open/20x10x1").replaceWithData (image.getData(), image.getSize());
    folder.getChildFile ("secret").replaceWithData (image.getData(), image.getSize());

    using Source = SkinFile::Source;
    const struct
    {
        Source source;
        juce::String name;
        int width; // 0 for a skin that can't be used
    } cases[] {
        { Source::file, "Packed", 20 }, { Source::file, "Renamed", 0 },   { Source::file, "Directory", 0 },
        { Source::file, "Missing", 0 }, { Source::file, "", 0 },          { Source::file, "Open/../Packed", 0 },
        { Source::folder, "Open", 20 }, { Source::folder, "Missing", 0 }, { Source::folder, "Packed", 0 },
        { Source::builtIn, "", 0 },
    };

    for (const auto& test : cases)
    {
        const auto built = SkinFile (plugin(), test.source, test.name, folder).loadEditorPanel();
        EXPECT_EQ (built != nullptr ? built->getWidth() : 0, test.width) << test.name;
    }

    SkinFile open (plugin(), Source::folder, "Open", folder);
    EXPECT_TRUE (open.getImage ("20x10x1").isValid());

    for (const auto* name : { "../secret", "", ".", "missing", "20X10X1" })
        EXPECT_FALSE (open.getImage (name).isValid()) << name;

    EXPECT_FALSE (open.getImage (folder.getChildFile ("secret").getFullPathName()).isValid());

    // A failed first attempt is the only one.
    SkinFile late (plugin(), Source::file, "Late", folder);
    EXPECT_FALSE (late.getImage ("20x10x1").isValid());
    const auto lateFile = makeSkinFile ("Late", makeZip ({ { "20x10x1", image } }));
    folder.getChildFile ("Late.k7rskin").replaceWithData (lateFile.getData(), lateFile.getSize());
    EXPECT_FALSE (late.getImage ("20x10x1").isValid());
    EXPECT_TRUE (SkinFile (plugin(), Source::file, "Late", folder).getImage ("20x10x1").isValid());
}

TEST_F (SkinFiles, GiveFontsByNameAndWeight)
{
    const juce::File fontFile (QUILVANE_FONT);
    juce::MemoryBlock font;
    ASSERT_TRUE (fontFile.loadFileAsData (font));
    auto broken = font;
    broken.setSize (200);

    const juce::String document = "<PluginEditor><Fonts>"
                                  "<font typeface=\"Face\" style=\"plain\" file=\"missing\"/>"
                                  "<font typeface=\"Face\" style=\"Bold\" file=\"plain.ttf\"/>"
                                  "<font typeface=\"Face\" style=\"bold\" file=\"bold.ttf\"/>"
                                  "<other typeface=\"Other\" file=\"plain.ttf\"/>"
                                  "<font typeface=\"Only Plain\" file=\"plain.ttf\"/>"
                                  "<font typeface=\"Broken\" file=\"broken.ttf\"/>"
                                  "<font typeface=\"Text\" file=\"skin.xml\"/>"
                                  "<font typeface=\"Nothing\"/></Fonts><Panel name=\"MainPanel\"/></PluginEditor>";
    const auto file = makeSkinFile ("Good", makeZip ({ { "skin.xml", textBytes (document) },
                                                       { "plain.ttf", font },
                                                       { "bold.ttf", font },
                                                       { "broken.ttf", broken } }));
    SkinFile skin (plugin(), "Good", file.getData(), file.getSize());
    EXPECT_EQ (skin.getTypeface ("Face", false), nullptr) << "no document was read";
    ASSERT_NE (skin.loadEditorPanel(), nullptr);

    const auto plain = skin.getTypeface ("fACE", false);
    const auto bold = skin.getTypeface ("Face", true);
    ASSERT_NE (plain, nullptr) << "the first entry has no file, and the next one is plain: only \"bold\" is bold";
    ASSERT_NE (bold, nullptr);
    EXPECT_NE (plain, bold);
    EXPECT_EQ (plain, skin.getTypeface ("Face", false)) << "each is made once";
    EXPECT_EQ (plain->getName(), "DejaVu Sans");
    EXPECT_EQ (plain->getStyle(), "Condensed");

    EXPECT_NE (skin.getTypeface ("Only Plain", false), nullptr);

    for (const auto& [name, isBold] :
         { std::pair ("Only Plain", true), std::pair ("Other", false), std::pair ("Broken", false),
           std::pair ("Text", false), std::pair ("Nothing", false), std::pair ("", false) })
        EXPECT_EQ (skin.getTypeface (name, isBold), nullptr) << name;
}

TEST_F (SkinFiles, DecodeImagesThatAreWhole)
{
    const auto png = loadImage (pngBytes (makeStrip (5, 3, 2)));
    EXPECT_EQ (png.getBounds(), juce::Rectangle<int> (5, 6));
    EXPECT_EQ (frameAt (png, 2, 4), 1);

    juce::MemoryOutputStream jpegStream;
    juce::JPEGImageFormat format;
    format.setQuality (1.0f);
    format.writeImageToStream (makeStrip (16, 16, 1), jpegStream);
    const auto jpegBytes = jpegStream.getMemoryBlock();
    const auto jpeg = loadImage (jpegBytes);
    ASSERT_EQ (jpeg.getBounds(), juce::Rectangle<int> (16, 16));
    EXPECT_NEAR (jpeg.getPixelAt (8, 8).getBlue(), frameColour (0).getBlue(), 6);

    const auto picture = loadImage (gif());
    ASSERT_EQ (picture.getBounds(), juce::Rectangle<int> (4, 2)) << "the picture's size, not the screen's";
    EXPECT_EQ (picture.getPixelAt (0, 0), juce::Colours::black);
    EXPECT_EQ (picture.getPixelAt (1, 1), juce::Colour (0xffff0000));
    EXPECT_EQ (picture.getPixelAt (2, 1), juce::Colour (0xff00ff00));
    EXPECT_TRUE (picture.getPixelAt (3, 0).isTransparent());

    const auto damaged = [] (juce::MemoryBlock bytes, size_t newSize)
    {
        bytes.setSize (newSize);
        return bytes;
    };

    const struct
    {
        const char* what;
        juce::MemoryBlock bytes;
    } failures[] {
        { "no image", textBytes ("no image, but a text of some length") },
        { "nothing", {} },
        { "half a PNG header", damaged (pngBytes (makeStrip (5, 3, 2)), 20) },
        { "a PNG of 60000 x 60000", pngThatClaims (60000, 60000) },
        { "a PNG of no width", pngThatClaims (0, 4) },
        { "a PNG of negative width", pngThatClaims (0xffffffff, 4) },
        { "half a JPEG", damaged (jpegBytes, jpegBytes.getSize() / 2) },
        { "a GIF of no width", gif (0) },
        { "a GIF whose codes end before its pixels", gif (5) },
    };

    for (const auto& test : failures)
        EXPECT_FALSE (loadImage (test.bytes).isValid()) << test.what;

    EXPECT_FALSE (loadImage (pngBytes (makeStrip (5, 3, 2)), "other").isValid());

    for (size_t length = 0; length < gif().getSize(); ++length)
        EXPECT_FALSE (loadImage (damaged (gif(), length)).isValid()) << "a GIF of " << length << " bytes";

    // Codes that lead out of the decoder's tables stop it.
    for (const int codeSize : { 0, 1, 7, 8, 9, 12, 31, 32, 255 })
        EXPECT_FALSE (
            loadImage (gif (200, static_cast<juce::uint8> (codeSize), codeSize % 2 == 0 ? 0x40 : 0)).isValid());
}

TEST_F (SkinFiles, DecodeAnImageOnceAndAreBoundInPixels)
{
    // 16 million pixels each, of one colour, which is little to store.
    constexpr int side = 4096;
    constexpr auto numFitting = static_cast<int> (maximumSkinPixels / (side * side));
    const auto large = pngBytes (makeStrip (side, side, 1));
    SkinMembers members { { "small", pngBytes (makeStrip (4, 4, 1)) } };

    for (int i = 0; i <= numFitting; ++i)
        members.emplace_back (juce::String (i), large);

    const auto file = makeSkinFile ("Good", makeZip (members));
    SkinFile skin (plugin(), "Good", file.getData(), file.getSize());

    for (int i = 0; i < numFitting; ++i)
    {
        const auto image = skin.getImage (juce::String (i));
        EXPECT_TRUE (image.isValid()) << i;
        EXPECT_EQ (image.getPixelData(), skin.getImage (juce::String (i)).getPixelData()) << "the same pixels";
    }

    EXPECT_FALSE (skin.getImage (juce::String (numFitting)).isValid()) << "there is no room";

    constexpr auto pixelsLeft = maximumSkinPixels - numFitting * juce::int64 (side) * side;
    EXPECT_EQ (skin.getImage ("small").isValid(), pixelsLeft >= 16);
}

TEST_F (SkinFiles, AreBoundInControlsDepthAndSizes)
{
    juce::String many;

    for (int i = 0; i < maximumSkinControls + 100; ++i)
        many << "<Knob/>";

    const auto crowded = buildDocument (makeDocument ({}, "<controls>" + many + "</controls>"));
    ASSERT_NE (crowded, nullptr);
    EXPECT_EQ (crowded->getNumChildComponents(), maximumSkinControls);

    const auto nest = [] (int depth)
    {
        return juce::String::repeatedString ("<Panel><controls>", depth) + "<Knob name=\"deep\"/>"
               + juce::String::repeatedString ("</controls></Panel>", depth);
    };

    auto nested = buildDocument (makeDocument ({}, "<controls>" + nest (20) + "</controls>"));
    ASSERT_NE (nested, nullptr);
    EXPECT_NE (find (*nested, "deep"), nullptr);
    EXPECT_EQ (buildDocument (makeDocument ({}, "<controls>" + nest (5000) + "</controls>")), nullptr);

    const auto huge = buildDocument (makeDocument (
        {}, "<size width=\"2147483647\" height=\"-5\"/><controls ofsX=\"2147483647\" ofsY=\"-2147483648\"><Animation "
            "name=\"it\"><size width=\"99999\" height=\"99999\"/><pos left=\"2147483647\" top=\"-2147483648\"/>"
            "</Animation></controls>"));
    ASSERT_NE (huge, nullptr);
    EXPECT_EQ (huge->getBounds(), juce::Rectangle<int> (maximumControlSize, 0));
    EXPECT_EQ (find (*huge, "it")->getBounds(), juce::Rectangle<int> (2 * maximumControlSize, -2 * maximumControlSize,
                                                                      maximumControlSize, maximumControlSize));

    // The panel may be covered 16 times by what a repaint shows of the controls, of those in panels, and of cells.
    const auto large = size (4096, 4096);
    build ("<Panel name=\"it\">" + size (100, 50) + "<controls>"
           + juce::String::repeatedString ("<Display>" + large + "</Display>", 20) + "</controls></Panel>"
           + juce::String::repeatedString ("<Knob>" + large + "</Knob>", 9) + "<NumericDisplay name=\"two more\">"
           + large + "</NumericDisplay><Knob>" + size (2, 2) + "</Knob>");
    EXPECT_EQ (component().getNumChildComponents(), 20);
    EXPECT_EQ (panel->getNumChildComponents(), 11);
    EXPECT_EQ (find (*panel, "two more"), nullptr);

    // A strip gives the size, within the same bounds.
    build ("<Animation name=\"wide\">" + strip ("5000x2x1", 1) + size (7, 8) + "</Animation>");
    EXPECT_EQ (component ("wide").getBounds(), juce::Rectangle<int> (7, 8));
}
