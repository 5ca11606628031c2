// SPDX-License-Identifier: GPL-3.0-or-later

// What displays show for a value or a text, and how a text is edited.

#include "skin/displays/GFXAnimation.h"
#include "skin/displays/GFXDisplay.h"
#include "skin/displays/NoteDisplay.h"
#include "skin/displays/NumericDisplay.h"
#include "skin/displays/PatternNumberDisplay.h"
#include "support/SkinInTest.h"

using namespace K7R;
using namespace quilvane;
using namespace K7R::test;

namespace
{

class Displays : public SkinTest
{
};

class TextDisplays : public SkinTest
{
protected:
    GFXDisplay& display() { return control<GFXDisplay>(); }

    /** A font of the glyphs A to H, of 5 x 4 pixels each, and of the same under the caret. */
    static juce::String font() { return "<gfx resource=\"5x4x16\" fontHeight=\"4\" firstASCII=\"A\"/>"; }

    /** The glyphs along the display: a letter, in lower case under the caret, and "." for none. */
    juce::String glyphs()
    {
        const auto image = paint (component());
        juce::String shown;

        for (int x = 2; x < image.getWidth(); x += 5)
        {
            const auto frame = frameAt (image, x, 2);
            shown << juce::String::charToString (static_cast<juce::juce_wchar> (frame < 0   ? '.'
                                                                                : frame < 8 ? 'A' + frame
                                                                                            : 'a' + frame - 8));
        }

        return shown;
    }

    void type (const juce::String& characters)
    {
        for (auto c = characters.getCharPointer(); ! c.isEmpty(); ++c)
            display().keyPressed ({ static_cast<int> (*c), juce::ModifierKeys(), *c });
    }

    void press (int key) { display().keyPressed (juce::KeyPress (key)); }
};

struct Edits : GFXDisplay::TextListener
{
    void displayTextEdited (GFXDisplay& display) override { texts.add (display.getText()); }
    juce::StringArray texts;
};

} // namespace

TEST_F (Displays, AnimationsShowAValue)
{
    const struct
    {
        float value;
        int frame;
    } cases[] { { 0.0f, 0 }, { 0.124f, 0 }, { 0.126f, 1 }, { 1.0f, 4 }, { 1.5f, 4 }, { -3.0f, 0 } };

    buildOne ("Animation", {}, strip ("4x4x5", 5));
    auto& animation = control<GFXAnimation>();

    for (const auto& test : cases)
    {
        animation.setValue (test.value);
        EXPECT_EQ (animation.getCurrentFrame(), test.frame) << test.value;
        EXPECT_EQ (shownFrame(), test.frame) << test.value;
    }

    animation.setValue (std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ (animation.getCurrentFrame(), 0);

    animation.setValue (1.0f);
    animation.startBlinking (100000);
    EXPECT_EQ (shownFrame(), 0);
    animation.stopBlinking();
    EXPECT_EQ (shownFrame(), 4);
    animation.setValue (0.0f);

    animation.flash (30);
    EXPECT_EQ (shownFrame(), 4);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return animation.getCurrentFrame() == 0; }));

    parameter ("Feedback").setNormalised (0.5f, false);
    buildOne ("Animation", {}, size (20, 20) + link ("Feedback") + "<gfx framesNum=\"9\"/>");
    EXPECT_EQ (control<GFXAnimation>().getCurrentFrame(), 4) << "the skin's number stands without a strip, too";
}

//==============================================================================
TEST_F (TextDisplays, DrawTheGlyphsOfTheirText)
{
    const struct
    {
        const char* text;
        const char* shown;
    } cases[] {
        { "", "....." },        { "ABC", "ABC.." },  { "HGFED", "HGFED" },
        { "ABCDEFG", "ABCDE" }, { "AiB@", "AABA." }, // what the font hasn't is its first glyph
    };

    for (const auto& test : cases)
    {
        buildOne ("Display", {}, font() + size (25, 4));
        display().setText (test.text);
        EXPECT_EQ (glyphs(), test.shown) << test.text;
    }

    // Half the rows are for the caret; what is left over is no glyph.
    const struct
    {
        const char* gfx;
        const char* shown; // of "ABH"
    } fonts[] {
        { "<gfx resource=\"5x4x16\" fontHeight=\"4\" firstASCII=\"B\"/>", "AAG" },
        { "<gfx resource=\"5x4x7\" fontHeight=\"4\" firstASCII=\"A\"/>", "ABA" },
        { "<gfx resource=\"5x4x16\" fontHeight=\"0\" firstASCII=\"A\"/>", "..." },
        { "<gfx resource=\"5x4x16\" fontHeight=\"-4\" firstASCII=\"A\"/>", "..." },
        { "<gfx resource=\"5x4x16\" fontHeight=\"9999\" firstASCII=\"A\"/>", "AAA" },
        { "<gfx resource=\"5x4x16\" fontHeight=\"4\" firstASCII=\"A\"/><gfx fontHeight=\"4\" firstASCII=\"B\"/>",
          "AAG" },
    };

    for (const auto& test : fonts)
    {
        buildOne ("Display", {}, test.gfx + size (15, 4));
        display().setText ("ABH");
        EXPECT_EQ (glyphs(), test.shown) << test.gfx;
    }

    // Without a font the text is white on the background's colour.
    build ("<Display name=\"it\" backgroundColour=\"ff203040\">" + size (40, 16) + "</Display>");
    EXPECT_EQ (display().getText(), "it");
    EXPECT_EQ (paint (component()).getPixelAt (39, 15), juce::Colour (0xff203040));
}

TEST_F (TextDisplays, ShowNamesWhole)
{
    auto& name = parameter ("Preset Name");
    const auto shows = [&] (const juce::String& text)
    {
        name.setString (text, true);
        EXPECT_TRUE (runMessageLoopUntil ([&] { return display().getText() == text; })) << text;
        return paint (component());
    };

    // A font of 95 glyphs of one colour each, of 8 x 16 pixels, from the blank on; the capital fills its cell.
    buildOne ("Display", {}, "<gfx resource=\"8x16x190\" fontHeight=\"16\"/>" + size (80, 16) + link ("Preset Name"));
    const auto frames = [&] (const juce::Image& image)
    {
        juce::String text;

        for (int x = 0; x < 80; x += 8)
            text << juce::String::charToString (static_cast<juce::juce_wchar> (' ' + frameAt (image, x, 0)));

        return text.trimEnd();
    };

    EXPECT_EQ (frames (shows ("0123456789")), "0123456789");
    EXPECT_EQ (display().getTooltip(), "");

    // A name that is too long ends in an ellipsis, here in the program's font; the tooltip shows all of it.
    const auto cut = shows ("0123456789 and more");
    EXPECT_EQ (frames (cut), "012345678");
    EXPECT_EQ (display().getTooltip(), "0123456789 and more");

    const auto hasInk = [&] (const juce::Image& image, int column)
    {
        for (int y = 0; y < 16; ++y)
            for (int x = column * 8; x < column * 8 + 8; ++x)
                if (image.getPixelAt (x, y) != frameColour (0) && image.getPixelAt (x, y) != juce::Colours::black)
                    return true;

        return false;
    };

    EXPECT_TRUE (hasInk (cut, 9));
    EXPECT_FALSE (hasInk (shows ("Gr"), 2));

    // Letters that the font hasn't got.
    const auto foreign = shows (juce::String::fromUTF8 ("Gr\xc3\xb6\xc3\x9f, \xc3\xa9 \xe4\xbd\xa0"));
    EXPECT_EQ (frames (foreign).substring (0, 2), "Gr");

    for (const auto column : { 2, 3, 6, 8 })
        EXPECT_TRUE (hasInk (foreign, column)) << column;

    EXPECT_FALSE (hasInk (foreign, 5));
}

TEST_F (TextDisplays, FollowTheirParameter)
{
    parameter ("Stages Number").setInt (1, false);
    buildOne ("Display", {}, size (40, 16) + link ("Stages Number"));
    EXPECT_EQ (display().getText(), "4") << "the parameter, not the name";

    parameter ("Stages Number").setInt (3, true);
    EXPECT_TRUE (runMessageLoopUntil ([this] { return display().getText() == "8"; }));

    // A point at the last place that is seen goes out of sight.
    const struct
    {
        float value;
        int width;
        const char* expected;
    } cases[] { { 0.25f, 10, " 0.25" }, { 0.25f, 15, "0.25" }, { 12.5f, 15, " 12.5" },
                { 12.5f, 10, "12.5" },  { 12.5f, 0, "12.5" },  { 12.5f, 50, "12.5" } };

    for (const auto& test : cases)
    {
        parameter ("LFO 1 Rate").setFloat (test.value, false);
        buildOne ("DisplayFloat", {}, font() + size (test.width, 4) + link ("LFO 1 Rate"));
        EXPECT_EQ (display().getText(), test.expected) << test.width;
    }

    // What is typed isn't overwritten.
    for (const auto* tag : { "Display", "DisplayFloat" })
    {
        buildOne (tag, {}, size (40, 16) + link ("LFO 1 Rate"));
        Mouse (component()).click();
        type ("x");
        const auto typed = display().getText();
        parameter ("LFO 1 Rate").setNormalised (parameter ("LFO 1 Rate").getNormalised() > 0.5f ? 0.1f : 0.9f, true);
        runMessageLoopFor (20);
        EXPECT_EQ (display().getText(), typed) << tag;
    }
}

TEST_F (TextDisplays, AreEditedByKeys)
{
    buildOne ("Display", {}, font() + size (25, 4));
    Edits edits;
    display().addTextListener (&edits);
    display().setText ("ABC");

    EXPECT_FALSE (display().keyPressed ({ 'x', juce::ModifierKeys(), 'x' })) << "before a click";
    Mouse (component()).click();
    EXPECT_TRUE (display().isBeingEdited());
    EXPECT_EQ (glyphs(), "ABCa.") << "behind the text the caret stands on the glyph of what the font hasn't";

    using Key = juce::KeyPress;
    const struct
    {
        int key; // or a character to type
        const char* text;
        const char* shown;
    } steps[] {
        { Key::leftKey, "ABC", "ABc.." },
        { 'D', "ABDC", "ABDc." },
        { Key::backspaceKey, "ABC", "ABc.." },
        { Key::homeKey, "ABC", "aBC.." },
        { Key::backspaceKey, "ABC", "aBC.." },
        { Key::leftKey, "ABC", "aBC.." },
        { Key::deleteKey, "BC", "bC..." },
        { Key::rightKey, "BC", "Bc..." },
        { Key::endKey, "BC", "BCa.." },
        { Key::rightKey, "BC", "BCa.." },
        { Key::deleteKey, "BC", "BCa.." },
        { 'E', "BCE", "BCEa." },
        { 'F', "BCEF", "BCEFa" },
        { 'G', "BCEFG", "CEFGa" },
        { Key::homeKey, "BCEFG", "bCEFG" },
    };

    for (const auto& step : steps)
    {
        if (step.key >= 'A' && step.key <= 'Z')
            type (juce::String::charToString (static_cast<juce::juce_wchar> (step.key)));
        else
            press (step.key);

        EXPECT_EQ (display().getText(), step.text);
        EXPECT_EQ (glyphs(), step.shown) << step.text;
    }

    // Keys with modifiers, and such that write nothing, are somebody else's.
    EXPECT_FALSE (display().keyPressed ({ 'x', juce::ModifierKeys::ctrlModifier, 'x' }));
    EXPECT_FALSE (display().keyPressed (Key (Key::F1Key)));
    EXPECT_EQ (edits.texts.size(), 0);

    press (Key::returnKey);
    EXPECT_FALSE (display().isBeingEdited());
    EXPECT_EQ (edits.texts.joinIntoString ("|"), "BCEFG");
    EXPECT_EQ (glyphs(), "BCEFG") << "no caret";

    // Escape brings back what stood there, and tells nobody; so does an edit that changes nothing.
    Mouse (component()).click();
    type ("A");
    press (Key::escapeKey);
    EXPECT_EQ (display().getText(), "BCEFG");
    Mouse (component()).click();
    press (Key::returnKey);
    EXPECT_EQ (edits.texts.size(), 1);

    // The window closes: the edit is undone.
    Mouse (component()).click();
    press (Key::backspaceKey);
    panel->endPendingGesture();
    EXPECT_EQ (edits.texts.joinIntoString ("|"), "BCEFG");
    EXPECT_EQ (display().getText(), "BCEFG");

    display().removeTextListener (&edits);
    Mouse (component()).click();
    type ("A");
    press (Key::returnKey);
    EXPECT_EQ (edits.texts.size(), 1);
}

TEST_F (TextDisplays, OnlyEditOnALeftClickOfOneThatMayBeWritten)
{
    const struct
    {
        const char* attributes;
        int modifiers;
        bool expected;
    } cases[] {
        { "", juce::ModifierKeys::leftButtonModifier, true },
        { "readonly=\"no\"", juce::ModifierKeys::leftButtonModifier, true },
        { "readonly=\"yes\"", juce::ModifierKeys::leftButtonModifier, false },
        { "", juce::ModifierKeys::rightButtonModifier, false },
        { "", juce::ModifierKeys::leftButtonModifier | juce::ModifierKeys::shiftModifier, false },
    };

    for (const auto& test : cases)
    {
        buildOne ("Display", test.attributes, size (40, 16));
        Mouse (component()).click (test.modifiers);
        EXPECT_EQ (display().isBeingEdited(), test.expected) << test.attributes << " " << test.modifiers;
    }
}

//==============================================================================
TEST_F (Displays, NumbersHaveDigitsAndARange)
{
    const struct
    {
        const char* attributes;
        double value;
        const char* digits;
        double kept;
        bool isNegative;
    } cases[] {
        { "digitsNum=\"3\" firstDigitOrder=\"100\" minValue=\"0\"", 42, "042", 42, false },
        { "digitsNum=\"3\" firstDigitOrder=\"100\" minValue=\"0\"", 5000, "999", 999, false },
        { "digitsNum=\"3\" firstDigitOrder=\"100\" minValue=\"10\" maxValue=\"50\"", 3, "010", 10, false },
        { "digitsNum=\"3\" firstDigitOrder=\"100\" minValue=\"10\" maxValue=\"50\"", 70, "050", 50, false },
        { "digitsNum=\"3\" firstDigitOrder=\"100\"", -42, "042", -42, true },
        { "digitsNum=\"3\" firstDigitOrder=\"100\"", -5000, "999", -999, true },
        { "digitsNum=\"3\" firstDigitOrder=\"10\"", 0.3, "003", 0.3, false }, // 0.3 isn't shown as 0.2
        { "digitsNum=\"3\" firstDigitOrder=\"10\"", 12.34, "123", 12.34, false },
        { "digitsNum=\"2\" firstDigitOrder=\"1\"", 0.57, "57", 0.57, false },
        { "digitsNum=\"0\" firstDigitOrder=\"9\"", 7, "7", 7, false },
        { "digitsNum=\"99\" firstDigitOrder=\"1000000000\" minValue=\"0\"", 1234567890, "1234567890", 1234567890,
          false },
        { "firstDigitOrder=\"-1\"", 5, "0", 0, false },
    };

    for (const auto& test : cases)
    {
        buildOne ("NumericDisplay", test.attributes, "<size width=\"6\" height=\"9\"/>");
        auto& display = control<NumericDisplay>();
        display.setValue (test.value, true);

        if (juce::String (test.attributes) != "firstDigitOrder=\"-1\"")
        {
            EXPECT_EQ (display.getShownDigits(), test.digits) << test.attributes << " " << test.value;
            EXPECT_NEAR (display.getValue(), test.kept, 1.0e-9) << test.attributes << " " << test.value;
        }

        EXPECT_EQ (display.isShownNegative(), test.isNegative) << test.attributes << " " << test.value;

        const auto numCells = juce::String (test.digits).length() + (display.hasSign() ? 1 : 0);
        EXPECT_EQ (display.getBounds(), juce::Rectangle<int> (6 * numCells, 9)) << test.attributes;
    }

    buildOne ("NumericDisplay", "minValue=\"0\"");
    EXPECT_EQ (component().getBounds(), juce::Rectangle<int> (10, 16));
    control<NumericDisplay>().setValue (std::numeric_limits<double>::quiet_NaN(), true);
    EXPECT_EQ (control<NumericDisplay>().getValue(), 0.0);
}

TEST_F (Displays, NumbersShowTheirCellsFrames)
{
    parameter ("Center Frequency").setFloat (320.0f, false);
    buildOne ("NumericDisplay", "digitsNum=\"3\" firstDigitOrder=\"100\"",
              "<size width=\"6\" height=\"9\"/><pos left=\"4\" top=\"5\"/><gfx><sign resource=\"6x9x2\"/>"
              "<digits resource=\"6x9x11\"/></gfx>"
                  + link ("Center Frequency"));
    EXPECT_EQ (component().getPosition(), juce::Point<int> (4, 5));

    const auto frames = [this]
    {
        const auto image = paint (component());
        juce::StringArray shown;

        for (int x = 3; x < image.getWidth(); x += 6)
            shown.add (juce::String (frameAt (image, x, 4)));

        return shown.joinIntoString (" ");
    };

    EXPECT_EQ (frames(), "0 4 3 1");
    control<NumericDisplay>().setValue (-905, false);
    EXPECT_EQ (frames(), "1 10 1 6");
    component().setEnabled (false);
    EXPECT_EQ (frames(), "0 0 0 0");
}

TEST_F (Displays, NumbersFollowVerticalDrags)
{
    const struct
    {
        const char* control;
        int x;
        double expected; // from 320, by 20 pixels upwards
    } cases[] { { "", 2, 820 }, { "", 8, 370 }, { "", 14, 325 }, { "Continous", 2, 325 }, { "other", 8, 370 } };

    for (const auto& test : cases)
    {
        parameter ("Center Frequency").setFloat (320.0f, false);
        buildOne ("NumericDisplay",
                  "digitsNum=\"3\" firstDigitOrder=\"100\" minValue=\"20\" control=\"" + juce::String (test.control)
                      + "\"",
                  "<size width=\"6\" height=\"9\"/>" + link ("Center Frequency"));
        EXPECT_NEAR (control<NumericDisplay>().getValue(), 320.0, 0.01);

        Mouse mouse (component());
        mouse.press ({ test.x, 5 });
        mouse.drag ({ test.x, -5 });
        mouse.drag ({ test.x, -15 });
        mouse.release ({ test.x, -15 });
        EXPECT_NEAR (parameter ("Center Frequency").getFloat(), test.expected, 0.1) << test.control << test.x;
        EXPECT_EQ (log.take(), "begin change end");
    }
}

//==============================================================================
TEST_F (Displays, NotesHaveALetterASharpAndAnOctave)
{
    buildOne ("NoteDisplay", {},
              "<size width=\"6\" height=\"9\"/><gfx><notes resource=\"6x9x9\"/><tones resource=\"6x9x4\"/>"
              "<octaves resource=\"6x9x13\"/></gfx>");
    auto& display = control<NoteDisplay>();
    EXPECT_EQ (component().getBounds(), juce::Rectangle<int> (18, 9));

    const auto frames = [this]
    {
        const auto image = paint (component());
        return juce::String (frameAt (image, 3, 4)) + " " + juce::String (frameAt (image, 9, 4)) + " "
               + juce::String (frameAt (image, 15, 4));
    };

    const struct
    {
        int note;
        const char* text;
        const char* frames;
    } cases[] { { 0, "C0", "1 1 1" },     { 1, "C#0", "1 2 1" },    { 4, "E0", "3 1 1" },
                { 5, "F0", "4 1 1" },     { 66, "F#5", "4 2 6" },   { 70, "A#5", "6 2 6" },
                { 127, "G10", "5 1 11" }, { 500, "G10", "5 1 11" }, { -9, "C0", "1 1 1" } };

    for (const auto& test : cases)
    {
        display.setNote (test.note);
        EXPECT_EQ (display.getShownText(), test.text);
        EXPECT_EQ (frames(), test.frames) << test.note;
    }

    display.setNoteOff (true);
    EXPECT_EQ (frames(), "8 3 12");
    component().setEnabled (false);
    EXPECT_EQ (frames(), "0 0 0");
}

TEST_F (Displays, PatternNumbersReadInThreeWays)
{
    using Mode = PatternNumberDisplay::Mode;
    using Frames = std::array<int, 4>;
    const struct
    {
        const char* attributes;
        Mode mode;
        int value;
        Frames frames;
    } cases[] {
        { "", Mode::note, 0, { 11, 11, 12, 1 } },
        { "", Mode::note, 2, { 11, 12, 12, 1 } },
        { "notePatternMin=\"1\"", Mode::note, 0, { 11, 11, 11, 1 } },
        { "", Mode::numeric, 0, { 0, 1, 2, 0 } }, // 1, the least
        { "numericPatternMin=\"0\"", Mode::numeric, 3, { 0, 1, 4, 0 } },
        { "numericPatternMin=\"42\" numericPatternMax=\"99\"", Mode::numeric, 0, { 0, 5, 3, 0 } },
        { "", Mode::bankAndSlot, 1, { 2, 18, 1, 2 } },
        { "bankAndSlotPatternMin=\"13\"", Mode::bankAndSlot, 0, { 3, 18, 1, 2 } },
        { "bankAndSlotPatternMin=\"12\"", Mode::bankAndSlot, 0, { 2, 18, 2, 3 } },
        { "bankAndSlotPatternMin=\"17\" slotMax=\"20\"", Mode::bankAndSlot, 0, { 3, 18, 1, 2 } },
        { "bankAndSlotPatternMin=\"5\" slotMax=\"2\"", Mode::bankAndSlot, 0, { 3, 18, 1, 2 } },
    };

    for (const auto& test : cases)
    {
        // 0 to 3
        parameter ("Stages Number").setInt (test.value, false);
        buildOne ("PatternNumberDisplay", test.attributes,
                  "<size width=\"40\" height=\"9\"/><gfx firstDigit=\"10x9x12\" secondDigit=\"10x9x19\" "
                  "thirdDigit=\"10x9x13\" fourthDigit=\"10x9x11\"/>"
                      + link ("Stages Number"));
        auto& display = control<PatternNumberDisplay>();
        display.setMode (test.mode);
        EXPECT_EQ (display.getFrames(), test.frames) << test.attributes << " " << test.value;

        const auto image = paint (component());

        for (int i = 0; i < 4; ++i)
            EXPECT_EQ (frameAt (image, i * 10 + 5, 4), test.frames[static_cast<size_t> (i)]) << test.attributes << i;

        component().setEnabled (false);
        EXPECT_EQ (display.getFrames(), (Frames { 0, 0, 0, 0 }));
        EXPECT_EQ (frameAt (paint (component()), 5, 4), 0);
    }

    const struct
    {
        const char* attributes;
        int slotMax;
    } slots[] { { "", 12 }, { "slotMax=\"20\"", 16 }, { "slotMax=\"2\"", 4 }, { "slotMax=\"7\"", 7 } };

    for (const auto& test : slots)
    {
        buildOne ("PatternNumberDisplay", test.attributes);
        EXPECT_EQ (control<PatternNumberDisplay>().getSlotMax(), test.slotMax);
        EXPECT_EQ (component().getWidth(), 100);
    }
}
