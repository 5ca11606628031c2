// SPDX-License-Identifier: GPL-3.0-or-later

// Panels, and what all controls share: links, actions, strips, sizes and places.

#include "skin/controls/GFXButton.h"
#include "skin/controls/GFXKnob.h"
#include "skin/controls/GFXRocker.h"
#include "skin/controls/GFXSwitch.h"
#include "skin/displays/GFXAnimation.h"
#include "support/SkinInTest.h"

using namespace K7R;
using namespace quilvane;
using namespace K7R::test;

namespace
{

class Panels : public SkinTest
{
};

class Controls : public SkinTest
{
};

} // namespace

TEST_F (Panels, OffsetTheirOwnControls)
{
    build ("<Panel name=\"outer\"><pos left=\"20\" top=\"10\"/><controls ofsX=\"5\" ofsY=\"-3\">"
           "<Knob name=\"knob\"><pos left=\"10\" top=\"10\"/></Knob>"
           "<Panel name=\"inner\"><pos left=\"1\" top=\"2\"/><controls>"
           "<Rocker name=\"deep\"><pos left=\"7\" top=\"8\"/></Rocker></controls></Panel></controls></Panel>");

    EXPECT_EQ (component ("outer").getPosition(), juce::Point<int> (20, 10));
    EXPECT_EQ (component ("knob").getPosition(), juce::Point<int> (15, 7));
    EXPECT_EQ (component ("inner").getPosition(), juce::Point<int> (6, -1));
    EXPECT_EQ (component ("deep").getPosition(), juce::Point<int> (7, 8));
}

TEST_F (Panels, BuildEveryTagInAnyCaseAndSkipOthers)
{
    const juce::StringArray tags { "Knob",
                                   "Switch",
                                   "Animation",
                                   "Button",
                                   "ToggleButton",
                                   "MultiStateButton",
                                   "Display",
                                   "DisplayFloat",
                                   "Rocker",
                                   "Panel",
                                   "NumericDisplay",
                                   "NoteDisplay",
                                   "PatternNumberDisplay",
                                   "MidiKeyboard",
                                   "PitchBender",
                                   "ModWheel",
                                   "ModulationMatrix",
                                   "MidiChannelDisplay",
                                   "TextInput",
                                   "ImageComboBox",
                                   "Mixer" };
    juce::String controls ("a text<Unknown/><!-- a comment -->");

    for (const auto& tag : tags)
        controls << "<" << tag << " name=\"" << tag << "\"/><" << tag.toLowerCase() << "/>";

    build (controls);
    EXPECT_EQ (panel->getNumChildComponents(), 2 * tags.size());

    for (int i = 0; i < tags.size(); ++i)
    {
        const auto* exact = panel->getChildComponent (2 * i);
        const auto* lowerCase = panel->getChildComponent (2 * i + 1);
        EXPECT_EQ (exact->getName(), tags[i]);
        EXPECT_TRUE (exact->isVisible());
        EXPECT_EQ (typeid (*exact), typeid (*lowerCase)) << tags[i];
    }

    // An attribute of another class doesn't change the class.
    buildOne ("Knob", "style=\"Horizontal\"");
    EXPECT_EQ (control<GFXKnob>().getSliderStyle(), juce::Slider::RotaryVerticalDrag);
}

TEST_F (Panels, ShowAnImageOrAColourOrWhatLiesBehind)
{
    const struct
    {
        const char* attributes;
        const char* gfx;
        juce::Colour expected;
    } cases[] {
        { "bkgCol=\"ff102030\"", "<gfx resource=\"20x10x2\" framesNum=\"2\"/>", frameColour (0) },
        { "bkgCol=\"ff102030\"", "<gfx resource=\"missing\"/>", juce::Colour (0xff102030) },
        { "bkgCol=\"FF00ff00\"", "", juce::Colour (0xff00ff00) },
        { "bkgCol=\"0\"", "", juce::Colours::black },
        { "", "<size width=\"20\" height=\"10\"/>", juce::Colours::black },
    };

    for (const auto& test : cases)
    {
        buildOne ("Panel", test.attributes, juce::String (test.gfx) + size (20, 10));
        EXPECT_EQ (component().getBounds(), juce::Rectangle<int> (20, 10)) << test.gfx;
        EXPECT_EQ (paint (*panel).getPixelAt (19, 9), test.expected) << test.attributes << test.gfx;
    }
}

TEST_F (Panels, PassListenersToAllDepths)
{
    build ("<Panel><controls><Panel><controls><Rocker name=\"deep\"><actions>" + action ("onMoreClick", "About")
           + "</actions></Rocker></controls></Panel></controls></Panel>");
    Mouse (component ("deep")).click();
    EXPECT_EQ (log.take(), ""); // the upper half is none of a rocker without a height

    component ("deep").setSize (10, 20);
    Mouse mouse (component ("deep"));
    mouse.press ({ 5, 2 });
    EXPECT_EQ (log.take(), juce::String (eventId ("About")));

    panel->removeListener (&log);
    mouse.press ({ 5, 2 });
    EXPECT_EQ (log.take(), "");

    // Twice is once.
    panel->addListener (&log);
    panel->addListener (&log);
    mouse.press ({ 5, 2 });
    EXPECT_EQ (log.entries.size(), 1);
}

//==============================================================================
TEST_F (Controls, AreLinkedByRoleAndName)
{
    const struct
    {
        const char* links;
        const char* expected; // empty for none
    } cases[] {
        { "<link param=\"Feedback\" as=\"connectedTo\"/>", "Feedback" },
        { "<link param=\"Feedback\" as=\"connectedTo\"/><link param=\"FX\" as=\"connectedTo\"/>", "FX" },
        { "<link param=\"Feedback\" as=\"connectedTo\"/><link param=\"Nothing\" as=\"connectedTo\"/>", "Feedback" },
        { "<link param=\"Feedback\" as=\"connectedto\"/>", "" },
        { "<link param=\"Feedback\" as=\"shows\"/>", "" },
        { "<link param=\"Feedback\"/>", "" },
        { "<link param=\"feedback\" as=\"connectedTo\"/>", "" },
        { "<other param=\"Feedback\" as=\"connectedTo\"/>", "" },
        { "", "" },
    };

    for (const auto& test : cases)
    {
        buildOne ("Knob", {}, "<links>" + juce::String (test.links) + "</links>");
        const auto* linked = control<GFXKnob>().GUIController::getParameter();
        EXPECT_EQ (linked != nullptr ? linked->getName() : juce::String(), test.expected) << test.links;
    }

    // Of two parameters only the last one moves the control.
    buildOne ("Knob", {},
              "<links><link param=\"Feedback\" as=\"connectedTo\"/><link param=\"FX\" as=\"connectedTo\"/></links>");
    auto& knob = control<GFXKnob>();
    parameter ("FX").setNormalised (0.75f, true);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return knob.getValue() > 0.7; }));
    parameter ("Feedback").setNormalised (0.25f, true);
    runMessageLoopFor (50);
    EXPECT_NEAR (knob.getValue(), 0.75, 1.0e-6);
}

TEST_F (Controls, TakeActionsThatAreKnown)
{
    const auto events = [this] (const juce::String& actions)
    {
        build ("<Rocker name=\"it\">" + size (10, 20) + actions + "</Rocker>");
        Mouse (component()).press ({ 5, 2 });
        return log.take();
    };

    const auto about = juce::String (eventId ("About"));
    ASSERT_EQ (about, "1001");
    EXPECT_EQ (events ("<actions>" + action ("onMoreClick", "About") + "</actions>"), about);
    EXPECT_EQ (events ("<actions>" + action ("onMoreClick", "about") + "</actions>"), "");
    EXPECT_EQ (events ("<actions>" + action ("onMoreClick", "Nothing") + "</actions>"), "");
    EXPECT_EQ (events ("<actions>" + action ("OnMoreClick", "About") + "</actions>"), "");
    EXPECT_EQ (events ("<actions>" + action ("", "About") + "</actions>"), "");
    EXPECT_EQ (events (action ("onMoreClick", "About")), "");
    EXPECT_EQ (
        events ("<actions>" + action ("onMoreClick", "Options") + action ("onMoreClick", "About") + "</actions>"),
        about);
    EXPECT_EQ (events ("<actions/><actions>" + action ("onMoreClick", "About") + "</actions>"), "")
        << "only the first list counts";
}

TEST_F (Controls, TakeTheSizeOfAFrame)
{
    const struct
    {
        const char* gfx;
        juce::Point<int> expected; // behind a size of 7 x 9
    } cases[] {
        { "<gfx resource=\"12x100x1\" framesNum=\"3\"/>", { 12, 33 } },
        { "<gfx resource=\"12x100x1\"/>", { 12, 100 } },
        { "<gfx resource=\"12x100x1\" framesNum=\"100\"/>", { 12, 1 } },
        { "<gfx resource=\"12x100x1\" framesNum=\"101\"/>", { 7, 9 } },
        { "<gfx resource=\"12x100x1\" framesNum=\"0\"/>", { 7, 9 } },
        { "<gfx resource=\"12x100x1\" framesNum=\"-3\"/>", { 7, 9 } },
        { "<gfx resource=\"12x100x1\" framesNum=\"99999999999\"/>", { 7, 9 } },
        { "<gfx resource=\"missing\" framesNum=\"3\"/>", { 7, 9 } },
        { "<gfx framesNum=\"3\"/>", { 7, 9 } },
        { "", { 7, 9 } },
    };

    for (const auto* tag : { "Knob", "Switch", "Animation", "Button", "Rocker", "MidiChannelDisplay", "ModWheel" })
        for (const auto& test : cases)
        {
            buildOne (tag, {}, "<pos left=\"3\" top=\"4\"/>" + size (7, 9) + test.gfx);
            EXPECT_EQ (component().getBounds(), juce::Rectangle<int> (3, 4, test.expected.x, test.expected.y))
                << tag << test.gfx;
            paint (component());
        }
}

TEST_F (Controls, AreResetByADoubleClickAsTheSkinSays)
{
    const struct
    {
        const char* tag;
        const char* attributes;
        bool expected;
    } cases[] {
        { "Knob", "", true },
        { "Knob", "paramReset=\"false\"", false },
        { "Switch", "", true },
        { "Switch", "style=\"vertical\"", false },
        { "Switch", "style=\"Horizontal\"", false },
        { "Switch", "style=\"Horizontal\" paramReset=\"1\"", true },
        { "Switch", "style=\"Slanted\"", true },
        { "Button", "paramReset=\"true\"", false },
        { "ToggleButton", "", false },
        { "ToggleButton", "paramReset=\"true\"", true },
        { "MultiStateButton", "", true },
        { "TextInput", "", false },
        { "TextInput", "paramReset=\"yes\"", true },
        { "NumericDisplay", "", true },
    };

    for (const auto& test : cases)
    {
        buildOne (test.tag, test.attributes);
        EXPECT_EQ (control<GUIController>().canResetParameterAt (Mouse (component()).event ({}, false)), test.expected)
            << test.tag << " " << test.attributes;
    }
}
