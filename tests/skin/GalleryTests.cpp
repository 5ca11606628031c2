// SPDX-License-Identifier: GPL-3.0-or-later

// Every control in every style, painted as the gallery's pictures show it.
//
// With QUILVANE_UPDATE_REFERENCES in the environment the pictures are made anew, and with them those of the
// reference for people who make skins.

#include <cstdlib>

#include "skin/composite/ImageComboBox.h"
#include "skin/composite/ImageMidiKeyboard.h"
#include "skin/composite/ModulationMatrixComponent.h"
#include "skin/displays/GFXAnimation.h"
#include "support/BoundedXml.h"
#include "support/GalleryImages.h"
#include "support/InMemoryModulation.h"
#include "support/SkinInTest.h"
#include "support/TestDesktop.h"
#include "widgets/look/DefaultLookAndFeel.h"

using namespace K7R;
using namespace quilvane;
using namespace K7R::test;

namespace
{

// Libraries of fonts and rasterisers differ a little in the edges of what they draw.
constexpr int channelTolerance = 24;
constexpr double pixelTolerance = 0.002;

/** Lets texts be set in the program's font for a while, as in its windows. */
class OwnFonts
{
public:
    OwnFonts()
    {
        juce::LookAndFeel::setDefaultLookAndFeel (&look);
        juce::Typeface::clearTypefaceCache();
    }

    ~OwnFonts()
    {
        juce::LookAndFeel::setDefaultLookAndFeel (nullptr);
        juce::Typeface::clearTypefaceCache();
    }

private:
    DefaultLookAndFeel look;
};

class Gallery : public SkinTest
{
public:
    ~Gallery() override { panel = nullptr; }

protected:
    static juce::File folder() { return juce::File (QUILVANE_GALLERY_FOLDER); }
    static juce::String readDocument() { return readBoundedText (folder().getChildFile ("skin.xml")); }
    static bool shallUpdate() { return std::getenv ("QUILVANE_UPDATE_REFERENCES") != nullptr; }

    juce::Image render (bool withImages)
    {
        parameter ("Feedback").setNormalised (0.62f, false);
        parameter ("FX").setNormalised (0.25f, false);
        parameter ("Stages Number").setInt (2, false);
        parameter ("LFO 1 Sync").setBool (true, false);
        parameter ("LFO 1 Note Scale").setInt (1, false);
        parameter ("LFO 1 Rate").setFloat (12.5f, false);
        parameter ("LFO 1 Depth").setNormalised (0.8f, false);
        parameter ("LFO 2 Depth").setNormalised (0.3f, false);
        parameter ("Center Frequency").setFloat (1280.0f, false);

        panel = buildDocument (readDocument(), withImages ? GalleryImages::drawAll() : SkinMembers());

        if (panel == nullptr)
            return {};

        for (const auto note : { 52, 54 })
            control<ImageMidiKeyboard> ("Keyboard").getNotes().noteOn (1, note, 1.0f);

        if (withImages)
            fillMatrix();

        return paint (*panel);
    }

    /** The combo box with its picker open, and the mouse on one of its tiles. */
    juce::Image renderPicker (bool withImages)
    {
        render (withImages);
        FloatingDesktop desktop;
        desktop.setSize (panel->getWidth(), panel->getHeight());
        desktop.addAndMakeVisible (*panel);
        control<ImageComboBox> ("Combo box").togglePicker();

        auto& picker = *desktop.layer.getShown();
        picker.mouseMove (Mouse (picker).event ({ picker.getWidth() - 1, 1 }, false));
        const auto image = paint (desktop).getClippedImage (cellOf ("ImageComboBox")).createCopy();
        desktop.removeChildComponent (panel.get());
        return image;
    }

    /** A control's cell without its caption. */
    juce::Rectangle<int> cellOf (const juce::String& name)
    {
        constexpr int captionHeight = 18;
        return component (name).getBounds().withTrimmedBottom (captionHeight);
    }

    static juce::Image sideBySide (const juce::Image& withImages, const juce::Image& fallbacks)
    {
        constexpr int gap = 4;
        juce::Image picture (juce::Image::RGB, 2 * withImages.getWidth() + gap, withImages.getHeight(), true);
        juce::Graphics g (picture);
        g.fillAll (juce::Colours::white);
        g.drawImageAt (withImages, 0, 0);
        g.drawImageAt (fallbacks, withImages.getWidth() + gap, 0);
        return picture;
    }

    static juce::File documentationPicture (const juce::String& name)
    {
        return folder().getChildFile ("../../docs/pictures/skins").getChildFile (name + ".png");
    }

    /** Gives the matrix rows, which no skin can bring. */
    void fillMatrix()
    {
        auto& cell = component ("ModulationMatrix");
        auto& matrix = dynamic_cast<ModulationMatrixComponent&> (*find (cell, "ModulationMatrix"));
        modulation.rows = { { 0, 0, 0.35f },  { 3, 1, -0.6f }, { 5, 2, 1.0f },
                            { -1, -1, 0.0f }, { 2, 3, -1.0f }, { 1, 1, 0.1f } };
        matrix.setModel (&modulation);
        matrix.selectRow (1);
    }

    static void write (const juce::Image& image, const juce::File& file)
    {
        const auto bytes = pngBytes (image);
        file.getParentDirectory().createDirectory();
        ASSERT_TRUE (file.replaceWithData (bytes.getData(), bytes.getSize())) << file.getFullPathName();
    }

    static double shareOfDifferentPixels (const juce::Image& a, const juce::Image& b)
    {
        if (a.getBounds() != b.getBounds())
            return 1.0;

        int different = 0;

        for (int y = 0; y < a.getHeight(); ++y)
            for (int x = 0; x < a.getWidth(); ++x)
            {
                const auto p = a.getPixelAt (x, y), q = b.getPixelAt (x, y);
                different += std::abs (p.getRed() - q.getRed()) > channelTolerance
                                     || std::abs (p.getGreen() - q.getGreen()) > channelTolerance
                                     || std::abs (p.getBlue() - q.getBlue()) > channelTolerance
                                 ? 1
                                 : 0;
            }

        return static_cast<double> (different) / (static_cast<double> (a.getWidth()) * a.getHeight());
    }

    static void compare (const juce::Image& actual, const juce::String& name)
    {
        const auto reference = folder().getChildFile (name);

        if (shallUpdate())
            return write (actual, reference);

        const auto share = shareOfDifferentPixels (actual, juce::ImageFileFormat::loadFrom (reference));

        if (share > pixelTolerance)
        {
            const auto output = juce::File (QUILVANE_GALLERY_OUTPUT).getChildFile (name);
            write (actual, output);
            ADD_FAILURE() << 100.0 * share << " % of the pixels differ from " << name << "; the picture is "
                          << output.getFullPathName();
        }
    }

    /** Each control for the documentation: with its images at the left, and without at the right. */
    void writePictures (const juce::Image& withImages, const juce::Image& fallbacks)
    {
        for (const auto* cell : panel->getChildren())
        {
            const auto area = cellOf (cell->getName());
            const auto name = cell->getName().toLowerCase().removeCharacters (",").replaceCharacter (' ', '-');
            write (sideBySide (withImages.getClippedImage (area), fallbacks.getClippedImage (area)),
                   documentationPicture (name));
        }
    }

    const OwnFonts fonts;
    InMemoryModulation modulation;
};

/** Adds "Tag@attribute", "Tag/child", and so on for the children. */
void collect (const juce::XmlElement& element, juce::StringArray& found)
{
    for (int i = 0; i < element.getNumAttributes(); ++i)
        found.addIfNotAlreadyThere (element.getTagName() + "@" + element.getAttributeName (i));

    for (const auto* child : element.getChildIterator())
    {
        found.addIfNotAlreadyThere (element.getTagName() + "/" + child->getTagName());
        collect (*child, found);
    }
}

} // namespace

TEST_F (Gallery, PaintsEveryControl)
{
    const auto withImages = render (true);
    ASSERT_TRUE (withImages.isValid());
    compare (withImages, "with-images.png");

    const auto fallbacks = render (false);
    ASSERT_TRUE (fallbacks.isValid());
    compare (fallbacks, "fallbacks.png");

    EXPECT_GT (shareOfDifferentPixels (withImages, fallbacks), 0.02);

    if (shallUpdate())
        writePictures (withImages, fallbacks);
}

TEST_F (Gallery, PaintsAnOpenPicker)
{
    const auto withImages = renderPicker (true);
    const auto picture = sideBySide (withImages, renderPicker (false));
    compare (picture, "picker.png");

    if (shallUpdate())
        write (picture, documentationPicture ("imagecombobox-open"));
}

TEST_F (Gallery, NamesOnlyImagesThatAreDrawn)
{
    juce::StringArray drawn;

    for (const auto& [name, bytes] : GalleryImages::drawAll())
        drawn.add (name);

    for (const auto& text : juce::StringArray::fromTokens (readDocument(), "\"", {}))
        EXPECT_TRUE (drawn.contains (text) || ! text.endsWith (".png")) << text;
}

TEST_F (Gallery, TheExampleOfTheReferenceWorks)
{
    const auto page = readBoundedText (folder().getChildFile ("../../docs/skins.md"));
    const auto document =
        page.fromFirstOccurrenceOf ("```xml", false, false).upToFirstOccurrenceOf ("```", false, false);
    panel = buildDocument (document);
    ASSERT_NE (panel, nullptr);
    EXPECT_EQ (panel->getBounds(), juce::Rectangle<int> (300, 140));
    panel->addListener (&log);

    Mouse (component ("Feedback")).dragBy ({ 0, -125 });
    EXPECT_NEAR (parameter ("Feedback").getNormalised(), 0.5, 1.0e-6);
    Mouse (component ("Stages")).press ({ 90, 10 });
    EXPECT_EQ (parameter ("Stages Number").getInt(), 3);
    log.take();
    Mouse (component ("Init")).click();
    EXPECT_EQ (log.take(), juce::String (eventId ("Restore Default Preset")));
    EXPECT_NE (dynamic_cast<GFXAnimation*> (&component ("LFO1Value")), nullptr);
}

TEST_F (Gallery, UsesTheWholeVocabulary)
{
    const auto document = parseBoundedXml (readDocument());
    ASSERT_NE (document, nullptr);
    juce::StringArray found;
    collect (*document, found);

    const struct
    {
        const char* tag;
        const char* attributes;
    } vocabulary[] {
        { "font", "typeface style file styleWIN name height extraKerning" },
        { "Panel", "name bkgCol" },
        { "controls", "ofsX ofsY" },
        { "link", "param as" },
        { "action", "type event" },
        { "gfx", "resource framesNum fontHeight firstASCII firstDigit secondDigit thirdDigit fourthDigit gaps" },
        { "size", "width height" },
        { "pos", "left top" },
        { "Knob", "name paramReset" },
        { "Switch", "style thumb paramReset" },
        { "Animation", "name" },
        { "Button", "clickEvent autorepeat" },
        { "ToggleButton", "style clickEvent radioGroupId paramReset" },
        { "MultiStateButton", "style states clickEvent radioGroupId" },
        { "Display", "name caretColour backgroundColour readonly" },
        { "DisplayFloat", "caretColour backgroundColour readonly" },
        { "Rocker", "type" },
        { "NumericDisplay", "digitsNum firstDigitOrder minValue maxValue control" },
        { "sign", "resource" },
        { "digits", "resource" },
        { "notes", "resource" },
        { "tones", "resource" },
        { "octaves", "resource" },
        { "PatternNumberDisplay", "notePatternMin notePatternMax numericPatternMin numericPatternMax "
                                  "bankAndSlotPatternMin bankAndSlotPatternMax slotMax" },
        { "MidiKeyboard", "firstKey lastKey" },
        { "Key", "left right" },
        { "PitchBender", "paramReset" },
        { "ModWheel", "paramReset" },
        { "ModulationMatrix", "name" },
        { "MidiChannelDisplay", "paramReset" },
        { "TextInput", "name editable defaultText justification paramReset textColour highlightedTextColour "
                       "caretColour backgroundColour highlightColour outlineColour focusedOutlineColour" },
        { "picker", "resource framesNum tilesInRow justification tile xOfs yOfs values" },
        { "param", "name reset" },
        { "Mixer", "background readOnly" },
        { "image", "strip name frames" },
    };

    for (const auto& row : vocabulary)
        for (const auto& attribute : juce::StringArray::fromTokens (row.attributes, false))
            EXPECT_TRUE (found.contains (juce::String (row.tag) + "@" + attribute)) << row.tag << " " << attribute;
}
