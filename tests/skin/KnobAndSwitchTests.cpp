// SPDX-License-Identifier: GPL-3.0-or-later

// Knobs, switches, rockers and wheels: which frame they show, and what a drag tells the parameter.

#include "skin/controls/GFXKnob.h"
#include "skin/controls/GFXRocker.h"
#include "skin/controls/GFXSwitch.h"
#include "skin/controls/PerformanceWheels.h"
#include "skin/displays/GFXMidiChannelDisplay.h"
#include "support/SkinInTest.h"

using namespace K7R;
using namespace quilvane;
using namespace K7R::test;
using namespace K7R::test::keys;

namespace
{

class Knobs : public SkinTest
{
protected:
    juce::Slider& slider() { return control<juce::Slider>(); }

    /** The value of a slider that follows a parameter, once that is delivered. */
    bool follows (double expected)
    {
        return runMessageLoopUntil ([&] { return std::abs (slider().getValue() - expected) < 1.0e-3; });
    }
};

class Rockers : public SkinTest
{
};

} // namespace

TEST_F (Knobs, ShowTheFrameOfTheirValue)
{
    const struct
    {
        int frames;
        double value;
        int expected;
    } cases[] {
        { 3, 0.0, 0 },    { 3, 0.24, 0 },      { 3, 0.25, 1 },     { 3, 0.749, 1 },   { 3, 0.75, 2 },
        { 3, 1.0, 2 },    { 1, 0.0, 0 },       { 1, 1.0, 0 },      { 2, 0.499, 0 },   { 2, 0.5, 1 },
        { 101, 0.5, 50 }, { 101, 0.995, 100 }, { 101, 0.994, 99 }, { 128, 1.0, 127 }, { 4, 0.333, 1 },
    };

    for (const auto* tag : { "Knob", "Switch", "ModWheel" })
        for (const auto& test : cases)
        {
            buildOne (tag, {}, strip ("4x4x" + juce::String (test.frames), test.frames));
            slider().setValue (test.value, juce::dontSendNotification);
            EXPECT_EQ (shownFrame(), test.expected) << tag << ", " << test.frames << " frames, " << test.value;

            component().setEnabled (false);
            EXPECT_EQ (shownFrame(), juce::String (tag) == "Switch" ? 0 : test.expected) << tag << " disabled";
        }

    buildOne ("MidiChannelDisplay", {}, strip ("4x4x17", 17));

    for (const auto& [value, expected] : { std::pair (0.0, 1), std::pair (0.5, 9), std::pair (1.0, 16) })
    {
        slider().setValue (value, juce::dontSendNotification);
        EXPECT_EQ (shownFrame(), expected) << value;
    }

    component().setEnabled (false);
    EXPECT_EQ (shownFrame(), 0);
}

TEST_F (Knobs, MakeOneGestureOfADrag)
{
    for (const auto* tag : { "Knob", "Switch", "MidiChannelDisplay", "ModWheel" })
    {
        parameter ("Feedback").setNormalised (0.5f, true);
        buildOne (tag, {}, size (20, 20) + link ("Feedback"));
        EXPECT_NEAR (slider().getValue(), 0.5, 1.0e-3) << tag << " shows its parameter from the start";

        ControlLog told;
        parameter ("Feedback").addListener (&told);

        Mouse mouse (component());
        mouse.press ({ 10, 10 });
        mouse.drag ({ 10, 0 });
        mouse.drag ({ 10, -15 });
        runMessageLoopFor (20); // what comes back must not be written again
        mouse.release ({ 10, -15 });
        runMessageLoopFor (20);

        EXPECT_NEAR (parameter ("Feedback").getNormalised(), 0.6, 0.002) << tag << ": 250 pixels are the whole range";
        EXPECT_EQ (told.entries.joinIntoString (" "), "begin change change end") << tag;
        EXPECT_EQ (log.entries.joinIntoString (" "), "begin change change end") << tag;
        EXPECT_NEAR (slider().getValue(), parameter ("Feedback").getNormalised(), 1.0e-3);

        // The host moves it back; nobody is told that a user did.
        log.take();
        parameter ("Feedback").setNormalised (0.25f, true);
        EXPECT_TRUE (follows (0.25)) << tag;
        EXPECT_EQ (log.take(), "") << tag;

        parameter ("Feedback").removeListener (&told);
    }
}

TEST_F (Knobs, LeaveRightAndShiftPressesToTheEditor)
{
    for (const auto* style : { "Rotary", "Horizontal", "Vertical" })
        for (const auto modifiers : { right, left | shift, right | shift })
        {
            parameter ("Feedback").setNormalised (0.5f, true);
            buildOne ("Switch", "style=\"" + juce::String (style) + "\"", size (40, 40) + link ("Feedback"));
            Mouse (component()).dragBy ({ 15, -15 }, modifiers);
            EXPECT_NEAR (parameter ("Feedback").getNormalised(), 0.5, 1.0e-6) << style << " " << modifiers;
            EXPECT_EQ (log.take(), "") << style << " " << modifiers;
        }

    // Disabled, a drag does nothing either.
    buildOne ("Knob", {}, size (40, 40) + link ("Feedback"));
    component().setEnabled (false);
    Mouse (component()).dragBy ({ 0, -50 });
    EXPECT_NEAR (slider().getValue(), 0.5, 1.0e-6);
    EXPECT_EQ (log.take(), "");

    // Without a parameter it moves, and has nothing to tell.
    buildOne ("Knob", {}, size (40, 40));
    Mouse (component()).dragBy ({ 0, -125 });
    EXPECT_NEAR (slider().getValue(), 0.5, 1.0e-6);
    EXPECT_EQ (log.take(), "");
}

TEST_F (Knobs, EndAGestureWhoseReleaseIsNotSeen)
{
    ControlLog told;
    parameter ("Feedback").addListener (&told);

    buildOne ("Knob", {}, size (40, 40) + link ("Feedback"));
    Mouse (component()).press ({ 10, 10 });
    panel->endPendingGesture();
    EXPECT_EQ (told.take(), "begin end");

    Mouse (component()).press ({ 10, 10 });
    panel.reset();
    EXPECT_EQ (told.take(), "begin end");
    parameter ("Feedback").removeListener (&told);
}

TEST_F (Knobs, EachSegmentOfASwitchIsItsOwnTarget)
{
    constexpr int segment = 24, numSegments = 4;

    for (const bool isHorizontal : { true, false })
    {
        const auto length = segment * numSegments;
        buildOne ("Switch",
                  "thumb=\"" + juce::String (segment / 2) + "\" style=\""
                      + (isHorizontal ? "horizontal\"" : "VERTICAL\""),
                  strip (isHorizontal ? "96x10x4" : "10x96x4", numSegments) + link ("Stages Number"));
        ASSERT_EQ (isHorizontal ? component().getWidth() : component().getHeight(), length);

        for (int pixel = 1; pixel < length - 1; ++pixel)
        {
            if (pixel % segment == 0 || pixel % segment == segment - 1)
                continue; // a border may round to either side

            const auto point = isHorizontal ? juce::Point<int> (pixel, 5) : juce::Point<int> (5, length - 1 - pixel);
            Mouse mouse (component());
            mouse.press (point);
            mouse.release (point);
            EXPECT_EQ (parameter ("Stages Number").getInt(), pixel / segment) << pixel << " " << isHorizontal;
            EXPECT_EQ (shownFrame(), pixel / segment) << pixel;
        }
    }

    // A thumb without measure leaves a pixel of travel, and no division by zero.
    for (const auto* thumb : { "-5", "0", "5000", "99999999999" })
    {
        buildOne ("Switch", "style=\"Horizontal\" thumb=\"" + juce::String (thumb) + "\"", size (30, 10));
        Mouse (component()).click();
        EXPECT_TRUE (std::isfinite (slider().getValue())) << thumb;
        paint (component());
    }
}

TEST_F (Knobs, ShowNameAndValueWithoutAStrip)
{
    const auto inkOf = [this] (const char* tag, const juce::String& children)
    {
        buildOne (tag, {}, size (120, 60) + children);
        slider().setEnabled (true);
        const auto image = paint (component());
        std::array<int, 2> ink {}; // dark pixels in the upper and lower quarter

        for (int y = 0; y < 60; ++y)
            for (int x = 0; x < 120; ++x)
                if (image.getPixelAt (x, y) != juce::Colours::black && y != 0 && y != 59 && x != 0 && x != 119)
                    ++ink[y < 30 ? 0 : 1];

        EXPECT_EQ (image.getPixelAt (0, 30), juce::Colour (0xffb3b3b3)) << "the frame";
        return ink;
    };

    EXPECT_NE (inkOf ("Knob", {}), (std::array<int, 2> { 0, 0 })) << "the slider's own look";
    EXPECT_NE (inkOf ("Switch", {}), (std::array<int, 2> { 0, 0 }));
}

//==============================================================================
TEST_F (Knobs, PitchBendersSpringBack)
{
    buildOne ("PitchBender", {}, strip ("4x4x3", 3) + link ("FX"));
    auto& bender = control<PitchBender>();
    EXPECT_EQ (bender.juce::Slider::getRange(), juce::Range<double> (-1.0, 1.0));

    parameter ("FX").setNormalised (0.2f, false);
    bender.setValue (0.0, juce::dontSendNotification);
    EXPECT_EQ (shownFrame(), 1) << "the middle";

    Mouse mouse (component());
    mouse.press ({ 2, 2 });
    mouse.drag ({ 2, 2 - 125 });
    EXPECT_NEAR (bender.getValue(), 1.0, 1.0e-6);
    EXPECT_EQ (parameter ("FX").getNormalised(), 1.0f);
    EXPECT_EQ (shownFrame(), 2);
    mouse.release ({ 2, 2 - 125 });

    EXPECT_EQ (log.take(), "begin change end change");

    // The parameter's own news come back later.
    runMessageLoopFor (50);
    EXPECT_EQ (parameter ("FX").getNormalised(), 0.5f);
    EXPECT_EQ (bender.getValue(), 0.0);

    // A drag that Shift was pressed in ends as well.
    mouse.press ({ 2, 2 });
    mouse.drag ({ 2, 2 - 50 });
    mouse.release ({ 2, 2 - 50 }, keys::shift);
    EXPECT_EQ (bender.getValue(), 0.0);
    EXPECT_EQ (log.take(), "begin change end change");
}

//==============================================================================
TEST_F (Rockers, FireTheEventOfTheSideAndOfCtrl)
{
    const auto all = "<actions>" + action ("onLessClick", "Select Previous Preset")
                     + action ("onMoreClick", "Select Next Preset") + action ("onLessClickWithCtrl", "Options")
                     + action ("onMoreClickWithCtrl", "About") + "</actions>";
    const auto plain = "<actions>" + action ("onLessClick", "Select Previous Preset") + "</actions>";
    const juce::String less ("1003"), more ("1002"), lessCtrl ("1000"), moreCtrl ("1001");
    ASSERT_EQ (juce::String (eventId ("Select Previous Preset")), less);

    const struct
    {
        const char* type;
        juce::Point<int> size;
        juce::String actions;
        juce::Point<int> press;
        int modifiers;
        juce::String expected;
        int frame;
    } cases[] {
        { "vertical", { 20, 21 }, all, { 5, 10 }, left, less, 0 },
        { "vertical", { 20, 21 }, all, { 5, 9 }, left, more, 2 },
        { "vertical", { 20, 20 }, all, { 5, 10 }, left | ctrl, lessCtrl, 0 },
        { "vertical", { 20, 20 }, all, { 5, 9 }, left | ctrl, moreCtrl, 2 },
        { "horizontal", { 21, 20 }, all, { 10, 5 }, left, less, 0 },
        { "horizontal", { 21, 20 }, all, { 11, 5 }, left, more, 2 },
        { "horizontal", { 20, 20 }, all, { 10, 5 }, left | ctrl, lessCtrl, 0 },
        { "Horizontal", { 21, 20 }, all, { 0, 0 }, left, more, 2 }, // which is no type
        { "vertical", { 20, 20 }, plain, { 5, 15 }, left | ctrl, "", 0 },
        { "vertical", { 20, 20 }, plain, { 5, 5 }, left, "", 2 },
    };

    for (const auto& test : cases)
    {
        const auto sizes = juce::String (test.size.x) + "x" + juce::String (test.size.y) + "x3";
        buildOne ("Rocker", "type=\"" + juce::String (test.type) + "\"",
                  strip (sizes, 3) + test.actions + "<pos left=\"100\" top=\"50\"/>");
        EXPECT_EQ (shownFrame(), 1);

        Mouse mouse (component());
        mouse.press (test.press, test.modifiers);
        EXPECT_EQ (log.take(), test.expected) << test.type << " " << test.press.toString();
        EXPECT_EQ (shownFrame(), test.frame);

        // The side stays down while the mouse moves: here the place in the panel differs.
        mouse.drag (test.press);
        EXPECT_EQ (shownFrame(), test.frame);

        mouse.release (test.press);
        EXPECT_EQ (shownFrame(), 1);
        EXPECT_EQ (log.take(), "");
    }
}

TEST_F (Rockers, AtThePanelsOriginShowRestWhileTheMouseMovesInside)
{
    buildOne ("Rocker", {}, strip ("20x20x3", 3));
    Mouse mouse (component());
    mouse.press ({ 5, 5 });
    mouse.drag ({ 5, 6 });
    EXPECT_EQ (shownFrame(), 1);
    mouse.drag ({ 5, 40 });
    EXPECT_EQ (shownFrame(), 2);
    mouse.release ({ 5, 40 });
    EXPECT_EQ (shownFrame(), 1);
}

TEST_F (Rockers, PaintTheirHalvesWithoutAStrip)
{
    const juce::Colour face (0xffe6e6e6);

    for (const bool isHorizontal : { false, true })
    {
        buildOne ("Rocker", isHorizontal ? "type=\"horizontal\"" : "", size (40, 40));
        const auto colourAt = [&] (bool isLess)
        {
            const auto place = isLess == isHorizontal ? 8 : 32;
            return paint (component()).getPixelAt (isHorizontal ? place : 20, isHorizontal ? 20 : place);
        };

        EXPECT_EQ (colourAt (true), face.darker (0.7f));
        EXPECT_EQ (colourAt (false), face.darker (0.7f));
        EXPECT_EQ (paint (component()).getPixelAt (20, 20), face) << "the gap";
        EXPECT_EQ (paint (component()).getPixelAt (0, 20), juce::Colours::black);

        Mouse mouse (component());
        mouse.press (isHorizontal ? juce::Point<int> (8, 20) : juce::Point<int> (20, 32));
        EXPECT_EQ (colourAt (true), face.darker (0.5f));
        EXPECT_EQ (colourAt (false), face.darker (0.7f));
        mouse.release ({ 20, 20 });
    }

    // The sides of an odd size are alike, too.
    buildOne ("Rocker", {}, size (20, 41));
    const auto image = paint (component());
    int upper = 0, lower = 0;

    for (int y = 1; y < 40; ++y)
        if (image.getPixelAt (10, y) == face.darker (0.7f))
            ++(y < 20 ? upper : lower);

    EXPECT_EQ (upper, lower);
    EXPECT_EQ (upper, 18);
}
