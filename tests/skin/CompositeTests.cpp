// SPDX-License-Identifier: GPL-3.0-or-later

// Controls that are built from others or hold several parameters: combo boxes of images, mixers, keyboards, and
// texts that are typed.

#include "skin/composite/ImageComboBox.h"
#include "skin/composite/ImageMidiKeyboard.h"
#include "skin/composite/MixerController.h"
#include "skin/composite/TextInput.h"
#include "support/SkinInTest.h"
#include "support/TestDesktop.h"

using namespace K7R;
using namespace quilvane;
using namespace K7R::test;

namespace
{

class Composites : public SkinTest
{
protected:
    void TearDown() override
    {
        // A panel goes before what it lies on.
        for (auto* name : { "Stages Number", "LFO 1 Depth", "LFO 2 Depth", "FX" })
            parameter (name).removeListener (&told);

        panel.reset();
    }

    /** Builds one control at (50, 60) on a desktop, and listens to a parameter. */
    void place (const juce::String& tag, const juce::String& attributes, const juce::String& children)
    {
        buildOne (tag, attributes, children);
        panel->setSize (400, 300);
        desktop.addAndMakeVisible (*panel);
    }

    juce::Component* shown() { return desktop.layer.getShown(); }

    static juce::String parameters (const juce::StringArray& names)
    {
        juce::String text ("<parameters>");

        for (const auto& name : names)
            text << "<param name=\"" << name << "\"/>";

        return text + "</parameters>";
    }

    FloatingDesktop desktop;
    ControlLog told; // of parameters
};

const juce::String at5060 ("<pos left=\"50\" top=\"60\"/>");

} // namespace

//==============================================================================
TEST_F (Composites, AComboBoxChoosesATileFromItsPicker)
{
    parameter ("Stages Number").setInt (1, false);
    parameter ("Stages Number").addListener (&told);
    place ("ImageComboBox", {},
           at5060 + strip ("30x10x4", 4)
               + "<picker tilesInRow=\"2\" justification=\"tileAligned\" tile=\"3\" xOfs=\"1\" yOfs=\"-2\" "
                 "values=\"off\"/>"
                 "<param name=\"Stages Number\"/>");
    EXPECT_EQ (component().getBounds(), juce::Rectangle<int> (50, 60, 30, 10));
    EXPECT_EQ (component().getTitle(), "Stages Number");
    EXPECT_EQ (shownFrame(), 1);

    // What belongs to the editor doesn't open it.
    for (const auto modifiers : { keys::right, keys::left | keys::shift })
        Mouse (component()).click (modifiers);

    EXPECT_EQ (shown(), nullptr);

    Mouse (component()).click();
    ASSERT_NE (shown(), nullptr);
    EXPECT_EQ (shown()->getBounds(), juce::Rectangle<int> (50 - 30 + 1, 60 - 10 - 2, 60, 20));

    for (int tile = 0; tile < 4; ++tile)
        EXPECT_EQ (frameAt (paint (*shown()), tile % 2 * 30 + 15, tile / 2 * 10 + 5), tile);

    const auto isHighlighted = [this] { return frameAt (paint (*shown()), 45, 5) != 1; };
    Mouse mouse (*shown());
    shown()->mouseMove (mouse.event ({ 45, 5 }, false));
    EXPECT_TRUE (isHighlighted());
    shown()->mouseExit (mouse.event ({ 45, 25 }, false));
    EXPECT_FALSE (isHighlighted());

    mouse.press ({ 5, 15 });
    juce::ModifierKeys::currentModifiers = {};
    EXPECT_EQ (shown(), nullptr);
    EXPECT_EQ (parameter ("Stages Number").getInt(), 2);
    EXPECT_EQ (told.take(), "begin change end");
    EXPECT_EQ (log.take(), "moved Stages Number");
    EXPECT_TRUE (runMessageLoopUntil ([&] { return shownFrame() == 2; }));

    // By the keyboard: up from the present item, and no further; then away without a choice.
    for (const auto& [pressed, expected] :
         { std::pair { juce::KeyPress::returnKey, 0 }, std::pair { juce::KeyPress::escapeKey, 0 } })
    {
        Mouse (component()).click();
        ASSERT_NE (shown(), nullptr);

        for (const auto key : { juce::KeyPress::upKey, juce::KeyPress::upKey, juce::KeyPress::leftKey })
            EXPECT_TRUE (shown()->keyPressed (juce::KeyPress (key)));

        EXPECT_TRUE (shown()->keyPressed (juce::KeyPress (pressed)));
        EXPECT_EQ (shown(), nullptr);
        EXPECT_EQ (parameter ("Stages Number").getInt(), expected);
    }

    // A second press closes it, and so does the end of the window; with the panel it goes.
    Mouse (component()).click();
    Mouse (component()).click();
    EXPECT_EQ (shown(), nullptr);
    Mouse (component()).click();
    panel->endPendingGesture();
    EXPECT_EQ (shown(), nullptr);
    Mouse (component()).click();
    ASSERT_NE (shown(), nullptr);
    panel.reset();
    EXPECT_EQ (shown(), nullptr);
    EXPECT_EQ (desktop.getNumChildComponents(), 0);
}

TEST_F (Composites, PickersAreLaidOutWhateverTheSkinSays)
{
    const struct
    {
        const char* picker;
        const char* gfx;
        juce::Rectangle<int> expected; // on the desktop, which is 400 x 300
    } cases[] {
        { "", "30x10x4", { 50, 45, 30, 40 } },
        { "tilesInRow=\"4\" justification=\"centred\" xOfs=\"7\" yOfs=\"3\" tile=\"2\"",
          "30x10x4",
          { 12, 63, 120, 10 } },
        { "tilesInRow=\"3\" justification=\"tileAligned\"", "30x10x4", { 50, 60, 90, 20 } },
        { "tilesInRow=\"0\" justification=\"tileAligned\" tile=\"-9\"", "30x10x4", { 50, 60, 30, 40 } },
        { "tilesInRow=\"-2147483648\"", "30x10x4", { 50, 45, 30, 40 } },
        { "tilesInRow=\"2147483647\" justification=\"tileAligned\" tile=\"2147483647\"",
          "30x10x4",
          { 0, 60, 120, 10 } },
        { "justification=\"tileAligned\" xOfs=\"2147483647\" yOfs=\"-2147483648\"", "30x10x4", { 370, 0, 30, 40 } },
        { "Justification=\"tileAligned\"", "30x10x9", { 50, 45, 30, 40 } }, // no tile for what is no value
        { "justification=\"tileAligned\"", "missing", { 50, 60, 44, 72 } },
    };

    for (const auto& test : cases)
    {
        place ("ImageComboBox", {},
               at5060 + size (44, 18) + strip (test.gfx, juce::String (test.gfx).getTrailingIntValue()) + "<picker "
                   + test.picker + "/><Param/><param name=\"Stages Number\"/><param name=\"FX\"/>");
        Mouse (component()).click();
        ASSERT_NE (shown(), nullptr) << test.picker;
        EXPECT_EQ (shown()->getBounds(), test.expected) << test.picker << test.gfx;
        paint (*shown());
    }

    // Tiles of their own have their own size.
    place ("ImageComboBox", {},
           at5060 + strip ("30x10x4", 4) + "<picker resource=\"40x7x4\" framesNum=\"4\" justification=\"tileAligned\" "
               + "yOfs=\"10\"/><param name=\"Stages Number\"/>");
    Mouse (component()).click();
    ASSERT_NE (shown(), nullptr);
    EXPECT_EQ (shown()->getBounds(), juce::Rectangle<int> (50, 70, 40, 28));
    EXPECT_EQ (frameAt (paint (*shown()), 35, 24), 3);

    // Without a parameter there is nothing to pick, nor where names have other cases.
    place ("ImageComboBox", {}, strip ("30x10x4", 4) + "<Param name=\"Stages Number\"/>");
    Mouse (component()).click();
    EXPECT_EQ (shown(), nullptr);
}

//==============================================================================
TEST_F (Composites, AMixerMovesTheChannelUnderTheMouse)
{
    for (const auto* name : { "LFO 1 Depth", "LFO 2 Depth" })
    {
        parameter (name).setNormalised (0.5f, false);
        parameter (name).addListener (&told);
    }

    place (
        "Mixer", "background=\"100x90x1\"",
        at5060
            + "<gfx gaps=\"4,6\"><image strip=\"slider\" name=\"20x60x11\" frames=\"11\"/>"
              "<image strip=\"display\" name=\"10x8x11\" frames=\"11\"/><Image strip=\"slider\" name=\"5x5x1\"/></gfx>"
              "<parameters><param name=\"LFO 1 Depth\"/><param name=\"LFO 2 Depth\" reset=\"false\"/>"
              "<param name=\"LFO 1 Depth\"/><param name=\"Nothing\"/><Param name=\"FX\"/></parameters>");
    auto& mixer = control<MixerController>();
    const juce::Point<int> first (14, 6), second (38, 6); // the upper ends of the sliders

    const auto frameOf = [&] (juce::Point<int> place) { return frameAt (paint (mixer), place.x, place.y); };
    EXPECT_EQ (mixer.getBounds(), juce::Rectangle<int> (50, 60, 100, 90));
    ASSERT_EQ (mixer.getParts().size(), 2u);
    EXPECT_EQ (mixer.getParts()[1].component->getBounds(), juce::Rectangle<int> (28, 6, 20, 60));
    EXPECT_EQ (mixer.getParts()[1].component->getTitle(), "LFO 2 Depth");
    EXPECT_EQ (frameOf ({ 26, 30 }), 0) << "the background";

    for (const auto& place : { first, second, juce::Point<int> (10, 73), juce::Point<int> (35, 73) })
        EXPECT_EQ (frameOf (place), 5);

    // The master slider gets the mouse, and only one channel moves, wherever the drag goes.
    auto& master = *mixer.getComponentAt (second);
    EXPECT_EQ (master.getBounds(), juce::Rectangle<int> (4, 6, 100, 60));
    Mouse mouse (master);
    mouse.press (second.withY (15));
    mixer.mouseDown (mouse.event (second.withY (15), false)); // which a window tells
    EXPECT_NEAR (parameter ("LFO 2 Depth").getNormalised(), 0.75f, 1.0e-6f);
    mixer.mouseDrag (mouse.event (first.withY (48), true));
    mixer.mouseUp (mouse.event (first.withY (48), true));
    mouse.release (first);
    EXPECT_NEAR (parameter ("LFO 2 Depth").getNormalised(), 0.2f, 1.0e-6f);
    EXPECT_EQ (parameter ("LFO 1 Depth").getNormalised(), 0.5f);
    EXPECT_EQ (told.take(), "begin change end");
    EXPECT_EQ (log.take(), "moved LFO 2 Depth");
    EXPECT_TRUE (runMessageLoopUntil ([&] { return frameOf (second) == 2 && frameOf ({ 35, 73 }) == 2; }));

    // What the editor asks about a place.
    auto& target = dynamic_cast<SkinControl&> (master);
    juce::Component* part = nullptr;
    EXPECT_EQ (target.getParameterAt (mouse.event ({ 30, 5 }, false), &part), &parameter ("LFO 2 Depth"));
    EXPECT_EQ (part, mixer.getParts()[1].component);
    EXPECT_EQ (target.getParameterAt (mouse.event ({ 60, 5 }, false), nullptr), nullptr);
    EXPECT_TRUE (target.canResetParameterAt (mouse.event ({ 5, 5 }, false)));
    EXPECT_FALSE (target.canResetParameterAt (mouse.event ({ 30, 5 }, false)));
}

TEST_F (Composites, CtrlMovesAllChannelsOfAMixerFromWhereTheyStood)
{
    parameter ("LFO 1 Depth").setNormalised (0.2f, false);
    parameter ("LFO 2 Depth").setNormalised (0.9f, false);
    parameter ("LFO 2 Depth").addListener (&told);
    place ("Mixer", {},
           size (100, 90) + "<gfx><image strip=\"slider\" name=\"20x60x11\" frames=\"11\"/></gfx>"
               + parameters ({ "LFO 1 Depth", "LFO 2 Depth" }));
    auto& mixer = control<MixerController>();

    const auto expectValues = [&] (float value1, float value2)
    {
        EXPECT_NEAR (parameter ("LFO 1 Depth").getNormalised(), value1, 1.0e-5f);
        EXPECT_NEAR (parameter ("LFO 2 Depth").getNormalised(), value2, 1.0e-5f);
    };

    Mouse mouse (mixer);
    mouse.press ({ 10, 40 }, keys::left | keys::ctrl);
    expectValues (0.2f, 0.9f);
    mouse.drag ({ 10, 10 }); // half of the slider
    expectValues (0.7f, 1.0f);
    mouse.drag ({ 10, 34 });
    expectValues (0.3f, 1.0f);
    mouse.drag ({ 10, 40 });
    expectValues (0.2f, 0.9f);
    panel->endPendingGesture();
    mouse.release ({ 10, 40 });
    EXPECT_EQ (told.take(), "begin change end");

    // What the window's end cut off doesn't go on with the next press.
    mouse.press ({ 10, 40 }, keys::left | keys::ctrl);
    panel->endPendingGesture();
    mouse.drag ({ 10, 20 });
    mouse.press ({ 10, 40 }, keys::left | keys::ctrl);
    mouse.drag ({ 10, 40 });
    mouse.release ({ 10, 40 });
    expectValues (0.2f, 0.9f);

    // The wheel moves one; a click that belongs to the editor, none; nor does anything while it's read only.
    mixer.mouseWheelMove (mouse.event ({ 30, 20 }, false), { 0.0f, -1.0f, false, false, false });
    expectValues (0.2f, 0.75f);
    Mouse (mixer).click (keys::right);
    mixer.setReadOnly (true);
    Mouse (mixer).press ({ 10, 40 });
    juce::ModifierKeys::currentModifiers = {};
    expectValues (0.2f, 0.75f);
    EXPECT_EQ (panel->getComponentAt (mixer.getPosition() + juce::Point<int> (10, 40)), panel.get());
}

TEST_F (Composites, ChannelsOfAMixerMayLieCloserThanTheirImages)
{
    place ("Mixer", {},
           size (100, 90) + "<gfx gaps=\"-5,-2\"><image strip=\"slider\" name=\"20x60x11\" frames=\"11\"/></gfx>"
               + parameters ({ "LFO 1 Depth", "LFO 2 Depth" }));
    auto& mixer = control<MixerController>();
    EXPECT_EQ (mixer.getParts()[0].component->getBounds(), juce::Rectangle<int> (-5, -2, 20, 60));
    EXPECT_EQ (mixer.getParts()[1].component->getBounds(), juce::Rectangle<int> (10, -2, 20, 60));
    EXPECT_EQ (mixer.getParameterAt (Mouse (mixer).event ({ 12, 5 }, false), nullptr), &parameter ("LFO 2 Depth"))
        << "the one on top";
}

TEST_F (Composites, TheWheelMovesSteppedChannelsToo)
{
    parameter ("Stages Number").setInt (1, false);
    place ("Mixer", {}, size (40, 90) + parameters ({ "Stages Number" }));
    const auto turn = [this] (float amount, bool isSmooth)
    {
        Mouse mouse (component());
        control<MixerController>().mouseWheelMove (mouse.event ({ 20, 20 }, false),
                                                   { 0.0f, amount, false, isSmooth, false });
        return parameter ("Stages Number").getInt();
    };

    EXPECT_EQ (turn (0.19f, false), 2) << "a notch";
    EXPECT_EQ (turn (-0.19f, false), 1);
    int numTurns = 1;

    while (turn (0.05f, true) == 1 && numTurns < 100)
        ++numTurns;

    EXPECT_GT (numTurns, 10) << "of a trackpad";
    EXPECT_LT (numTurns, 30);
}

TEST_F (Composites, MixersEndureWhatSkinsSay)
{
    for (const auto* attributes : { "readOnly=\"maybe\"", "background=\"missing\"" })
        for (const auto* gfx : { "gaps=\"99999999999,-99999999999\"", "gaps=\"-20,-5\"", "gaps=\",\"", "gaps=\"1\"" })
            for (const auto* frames : { "11", "0", "-1", "2147483647", "-2147483648" })
            {
                place ("Mixer", attributes,
                       size (50, 40) + "<gfx " + gfx + "><image strip=\"slider\" name=\"20x60x11\" frames=\"" + frames
                           + "\"/><image strip=\"display\" name=\"none\" frames=\"" + frames
                           + "\"/><image strip=\"both\" name=\"20x60x11\"/></gfx>"
                           + parameters ({ "LFO 1 Depth", "Stages Number", "Preset Name", "LFO 1 Sync" }));
                auto& mixer = control<MixerController>();
                EXPECT_EQ (mixer.getParts().size(), 4u);
                Mouse (mixer).dragBy ({ 3, 90 });
                Mouse (mixer).dragBy ({ 3, 90 }, keys::left | keys::ctrl);
                paint (mixer);
            }

    place ("Mixer", {}, {});
    paint (component());
}

//==============================================================================
TEST_F (Composites, AKeyboardShowsItsImagesWhereTheyAre)
{
    const auto key = [] (int x, int y, const char* sizes, int frames, const char* attributes = "")
    {
        return "<Key " + juce::String (attributes) + "><pos left=\"" + juce::String (x) + "\" top=\"" + juce::String (y)
               + "\"/>" + strip (sizes, frames) + "</Key>";
    };

    // C, C sharp, two without an image, and E.
    buildOne ("MidiKeyboard", "firstKey=\"60\" lastKey=\"64\"",
              size (60, 40) + "<Keys>" + key (2, 3, "12x30x3", 3) + key (10, 3, "8x15x2", 2, "left=\"1\" right=\"2\"")
                  + "<Key/><Key/>" + key (50, 3, "8x30x3", 3) + key (0, 0, "60x40x1", 1) + "</Keys>");
    auto& keyboard = control<ImageMidiKeyboard>();
    const auto frameOf = [&] (int x, int y) { return frameAt (paint (keyboard), x, y); };

    EXPECT_EQ (keyboard.getRangeStart(), 60);
    EXPECT_EQ (keyboard.getRangeEnd(), 64);
    EXPECT_EQ (frameOf (4, 10), 0);

    keyboard.getNotes().noteOn (1, 60, 1.0f);
    keyboard.getNotes().noteOn (1, 61, 1.0f);
    keyboard.getNotes().noteOn (1, 62, 1.0f);
    EXPECT_EQ (frameOf (4, 10), 2);
    EXPECT_EQ (frameOf (12, 10), 1) << "a strip of two has its last frame for a key that is down; black keys lie above";
    EXPECT_EQ (frameOf (52, 10), 0) << "what the keys without images set doesn't dim it";

    const std::pair<juce::Point<int>, int> places[] { { { 4, 10 }, 60 },  { { 9, 10 }, 61 },  { { 12, 10 }, 61 },
                                                      { { 19, 10 }, 61 }, { { 12, 25 }, 60 }, { { 25, 30 }, 62 },
                                                      { { 52, 10 }, 64 }, { { 4, 38 }, -1 },  { { 59, 39 }, -1 } };

    for (const auto& [place, note] : places)
        EXPECT_EQ (keyboard.findKey (place), note) << place.toString();
}

TEST_F (Composites, AKeyboardsRangeWantsBothEnds)
{
    const struct
    {
        const char* attributes;
        int first, last;
    } cases[] {
        { "firstKey=\"48\"", 0, 127 },
        { "lastKey=\"48\"", 0, 127 },
        { "firstKey=\"48\" lastKey=\"72\"", 48, 72 },
        { "firstKey=\"-5\" lastKey=\"99999\"", 0, 127 },
        { "firstKey=\"72\" lastKey=\"48\"", 72, 72 },
    };

    for (const auto& test : cases)
    {
        juce::String manyKeys;

        for (int i = 0; i < 140; ++i)
            manyKeys << "<Key>" << size (i * 100, -i) << "</Key>";

        buildOne ("MidiKeyboard", test.attributes, size (60, 40) + "<Keys>" + manyKeys + "</Keys>");
        EXPECT_EQ (control<ImageMidiKeyboard>().getRangeStart(), test.first) << test.attributes;
        EXPECT_EQ (control<ImageMidiKeyboard>().getRangeEnd(), test.last) << test.attributes;
        paint (component());
    }
}

//==============================================================================
TEST_F (Composites, ATextIsEditedByTheGestureThatTheSkinNames)
{
    const struct
    {
        const char* attributes;
        bool byClick, byDoubleClick;
    } cases[] {
        { "", false, false },
        { "editable=\"no\"", false, false },
        { "editable=\"onclick\"", false, false },
        { "editable=\"onClick\"", true, true },
        { "editable=\"onDoubleClick\"", false, true },
    };

    for (const auto& test : cases)
    {
        place ("TextInput", test.attributes, at5060 + size (80, 20));
        auto& input = control<TextInput>();
        Mouse mouse (input);
        mouse.click (keys::right);
        mouse.click (keys::left | keys::shift);
        EXPECT_EQ (input.getOpenEditor(), nullptr);
        mouse.click();
        EXPECT_EQ (input.getOpenEditor() != nullptr, test.byClick) << test.attributes;
        input.mouseDoubleClick (mouse.event ({ 5, 5 }, false));
        EXPECT_EQ (input.getOpenEditor() != nullptr, test.byDoubleClick) << test.attributes;
    }

    // The result becomes the text.
    auto& input = control<TextInput>();
    auto* editor = input.getOpenEditor();
    EXPECT_EQ (editor->getText(), "it");
    EXPECT_EQ (desktop.getLocalArea (editor->getParentComponent(), editor->getBounds()),
               juce::Rectangle<int> (50, 60, 80, 20));
    editor->setText ("New");
    editor->finishEditing();
    EXPECT_EQ (input.getOpenEditor(), nullptr);
    EXPECT_EQ (input.getText(), "New");
    EXPECT_EQ (log.take(), "change");

    // That of an edit which the window ends with doesn't.
    input.mouseDoubleClick (Mouse (input).event ({ 5, 5 }, false));
    ASSERT_NE (input.getOpenEditor(), nullptr);
    input.getOpenEditor()->setText ("Newer");
    panel->endPendingGesture();
    EXPECT_EQ (input.getText(), "New");
}

TEST_F (Composites, ATypedTextReachesTheParameterIfItCanBeRead)
{
    const struct
    {
        const char* parameter;
        const char* typed;
        const char* expected;
    } cases[] {
        { "Center Frequency", "440", "440Hz" }, { "Center Frequency", "loud", "440Hz" },
        { "LFO 1 Sync", "off", "Off" },         { "LFO 1 Sync", "on", "On" },
        { "LFO 1 Sync", "perhaps", "On" },      { "Preset Name", "Any words", "Any words" },
    };

    for (const auto& test : cases)
    {
        auto& linked = parameter (test.parameter);
        place ("TextInput", "editable=\"onClick\"", size (80, 20) + link (test.parameter));
        auto& input = control<TextInput>();
        EXPECT_EQ (input.getText(), linked.getDisplayText());
        Mouse (input).click();
        ASSERT_NE (input.getOpenEditor(), nullptr);
        EXPECT_EQ (input.getOpenEditor()->getText(), linked.getDisplayText());
        input.getOpenEditor()->setText (test.typed);
        input.getOpenEditor()->finishEditing();
        EXPECT_EQ (linked.getDisplayText(), test.expected);
        EXPECT_EQ (input.getText(), linked.getDisplayText());
    }
}

TEST_F (Composites, TextsTakeTheirFontAndColoursFromTheSkin)
{
    buildOne ("TextInput",
              "justification=\"center\" backgroundColour=\"ff102030\" outlineColour=\"ff00ff00\" defaultText=\"None\"",
              size (60, 20) + "<font style=\"plain\" styleWIN=\"bold\" height=\"13.5\" extraKerning=\"0.25\"/>");
    const auto& input = control<TextInput>();
    EXPECT_TRUE (input.getFont().isBold());
    EXPECT_EQ (input.getFont().getTypefaceName(), "Tahoma");
    EXPECT_EQ (input.getFont().getHeight(), 13.5f);
    EXPECT_EQ (input.getFont().getExtraKerningFactor(), 0.25f);
    EXPECT_EQ (input.getJustification().getFlags(), 36);

    const auto image = paint (component());
    EXPECT_EQ (image.getPixelAt (0, 0), juce::Colour (0xff00ff00));
    EXPECT_EQ (image.getPixelAt (2, 2), juce::Colour (0xff102030));

    for (const auto* font : { "height=\"nan\"", "height=\"-1e9\"", "height=\"1e30\" extraKerning=\"inf\"",
                              "style=\"bold\" styleWIN=\"plain\" name=\"\"" })
    {
        buildOne ("TextInput", "justification=\"right\"", size (60, 20) + "<font " + font + "/>");
        EXPECT_FALSE (control<TextInput>().getFont().isBold());
        EXPECT_EQ (control<TextInput>().getJustification().getFlags(), 2);
        EXPECT_LE (control<TextInput>().getFont().getHeight(), 4096.0f);
        paint (component());
    }
}
