// SPDX-License-Identifier: GPL-3.0-or-later

// The buttons of skins: events, momentary and lasting links, frames.

#include "skin/controls/GFXButton.h"
#include "skin/controls/GFXMultiStateButton.h"
#include "skin/controls/GFXToggleButton.h"
#include "support/SkinInTest.h"

using namespace K7R;
using namespace quilvane;
using namespace K7R::test;
using namespace K7R::test::keys;

namespace
{

class Buttons : public SkinTest
{
protected:
    static juce::String actions (const juce::String& list) { return "<actions>" + list + "</actions>"; }

    /** What a click with modifiers fires. */
    juce::String click (int modifiers)
    {
        Mouse (component()).click (modifiers);
        return log.take();
    }
};

} // namespace

TEST_F (Buttons, FireTheEventsOfTheirClicks)
{
    const juce::String options ("1000"), about ("1001"), next ("1002");
    const auto click = action ("onClick", "Options"), withCtrl = action ("onClickWithCtrl", "About");
    const auto more = action ("onRightClick", "Select Next Preset") + action ("onClickWithShift", "Select Next Preset");

    const struct
    {
        const char* tag;
        juce::String list;
        juce::String plain, ctrl, shift, right; // what such a click fires
    } cases[] {
        { "Button", click, options, "", options, "" },
        { "Button", withCtrl, "", about, "", "" },
        { "Button", click + withCtrl + more, options, about, options, "" },
        { "ToggleButton", click + withCtrl + more, "", about, "", "" },
        { "ToggleButton", click, "", "", "", "" },
        { "MultiStateButton", click, options, options, "", "" },
        { "MultiStateButton", click + withCtrl + more, options, about, "", "" },
        { "MultiStateButton", withCtrl, "", about, "", "" },
    };

    for (const auto& test : cases)
    {
        buildOne (test.tag, {}, size (20, 20) + actions (test.list));
        EXPECT_EQ (this->click (left), test.plain) << test.tag << " " << test.list;
        EXPECT_EQ (this->click (left | ctrl), test.ctrl) << test.tag << " " << test.list;
        EXPECT_EQ (this->click (left | shift), test.shift) << test.tag << " " << test.list;

        EXPECT_EQ (this->click (right), test.right) << test.tag << " " << test.list;
    }
}

TEST_F (Buttons, FireOnPressOrOnRelease)
{
    const struct
    {
        const char* attribute;
        bool onPress;
    } cases[] { { "", false }, { "onRelease", false }, { "onPress", true }, { "onpress", false } };

    for (const auto* tag : { "Button", "MultiStateButton" })
        for (const auto& test : cases)
        {
            buildOne (tag, "clickEvent=\"" + juce::String (test.attribute) + "\"",
                      size (20, 20) + actions (action ("onClick", "Options")));
            Mouse mouse (component());
            mouse.press ({ 5, 5 });
            EXPECT_EQ (log.take(), test.onPress ? "1000" : "") << tag << " " << test.attribute;
            mouse.release ({ 5, 5 });
            EXPECT_EQ (log.take(), test.onPress ? "" : "1000") << tag << " " << test.attribute;
        }
}

TEST_F (Buttons, LookBehindASecondWhetherTheyAreToRepeat)
{
    // Then JUCE's button asks where the mouse is: no longer over this one, which has no window.
    const auto staysDownFor = [this] (const juce::String& attributes, int milliseconds)
    {
        buildOne ("Button", attributes, size (20, 20) + actions (action ("onClick", "Options")));
        auto& button = control<GFXButton>();
        Mouse mouse (button);
        mouse.press ({ 5, 5 });
        const auto isUp = runMessageLoopUntil ([&] { return ! button.isDown(); }, milliseconds);
        mouse.release ({ 5, 5 });
        return ! isUp;
    };

    EXPECT_TRUE (staysDownFor ("autorepeat=\"yes\"", 500));
    EXPECT_FALSE (staysDownFor ("autorepeat=\"yes\"", 10000));
    EXPECT_TRUE (staysDownFor ("autorepeat=\"no\"", 1300));
    EXPECT_TRUE (staysDownFor ("autorepeat=\"perhaps\"", 1300));
}

TEST_F (Buttons, LinkedAreMomentary)
{
    auto& sync = parameter ("LFO 1 Sync");
    ControlLog told;
    sync.addListener (&told);
    buildOne ("Button", "clickEvent=\"onRelease\"",
              size (20, 20) + link ("LFO 1 Sync") + actions (action ("onClick", "Options")));

    Mouse mouse (component());
    mouse.press ({ 5, 5 });
    EXPECT_TRUE (sync.getBool());
    EXPECT_EQ (log.take(), "begin change 1000") << "a linked button fires on the press";
    mouse.release ({ 5, 5 });
    EXPECT_FALSE (sync.getBool());
    EXPECT_EQ (log.take(), "change end");
    EXPECT_EQ (told.take(), "begin change end");

    // It doesn't follow back.
    sync.setBool (true, true);
    runMessageLoopFor (20);
    EXPECT_EQ (control<GFXButton>().getState(), juce::Button::buttonNormal);
    sync.setBool (false, true);

    // The window closes in the middle of a press.
    mouse.press ({ 5, 5 });
    panel->endPendingGesture();
    EXPECT_FALSE (sync.getBool());

    // The right button is the editor's.
    told.take();
    mouse.click (right);
    EXPECT_EQ (told.take(), "");
    sync.removeListener (&told);
}

TEST_F (Buttons, ShowTheFrameOfTheirState)
{
    const struct
    {
        const char* tag;
        const char* attributes;
        const char* sizes;
        bool isOn;
        int up, pressed;
    } cases[] {
        { "Button", "", "10x10x2", false, 0, 1 },
        { "ToggleButton", "", "10x10x2", false, 0, 0 },
        { "ToggleButton", "style=\"2D\"", "10x10x2", true, 1, 1 },
        { "ToggleButton", "style=\"3D\"", "10x10x4", false, 0, 1 },
        { "ToggleButton", "style=\"3D\"", "10x10x4", true, 2, 3 },
        { "ToggleButton", "style=\"3d\"", "10x10x2", true, 1, 1 }, // which is no style
    };

    for (const auto& test : cases)
    {
        parameter ("LFO 1 Sync").setBool (test.isOn, false);
        const auto isLinked = juce::String (test.tag) == "ToggleButton";
        buildOne (test.tag, test.attributes,
                  strip (test.sizes, isLinked ? 77 : 2) + (isLinked ? link ("LFO 1 Sync") : juce::String()));
        ASSERT_EQ (component().getHeight(), 10) << "framesNum counts for buttons without a style only";
        EXPECT_EQ (shownFrame(), test.up) << test.tag << " " << test.attributes;

        Mouse mouse (component());
        mouse.press ({ 5, 5 });
        EXPECT_EQ (shownFrame(), test.pressed) << test.tag << " " << test.attributes;
        mouse.release ({ 5, 5 });
    }

    // In the dark phase of a blink the first frame is shown.
    parameter ("LFO 1 Sync").setBool (true, false);
    buildOne ("ToggleButton", {}, strip ("10x10x2", 2) + link ("LFO 1 Sync"));
    control<GUIController>().startBlinking (100000);
    EXPECT_EQ (shownFrame(), 0);
    control<GUIController>().stopBlinking();
    EXPECT_EQ (shownFrame(), 1);
}

TEST_F (Buttons, ToggleTheirParameter)
{
    auto& sync = parameter ("LFO 1 Sync");
    ControlLog told;
    sync.addListener (&told);
    buildOne ("ToggleButton", {}, size (50, 50) + link ("LFO 1 Sync"));
    auto& button = control<GFXToggleButton>();

    for (const bool isOn : { true, false, true })
    {
        EXPECT_EQ (click (left), "begin change end");
        EXPECT_EQ (told.take(), "begin change end");
        EXPECT_EQ (sync.getBool(), isOn);
        EXPECT_EQ (button.getToggleState(), isOn);
    }

    for (const auto modifiers : { right, left | shift })
    {
        EXPECT_EQ (click (modifiers), "");
        EXPECT_EQ (told.take(), "");
    }

    sync.setBool (false, true);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return ! button.getToggleState(); }));
    EXPECT_EQ (log.take(), "") << "the host did that";
    sync.removeListener (&told);

    // Without a strip: a square in the middle, filled while on.
    button.setToggleState (true, juce::dontSendNotification);
    EXPECT_EQ (paint (button).getPixelAt (0, 25), juce::Colour (0xffb3b3b3));
}

TEST_F (Buttons, OfOneGroupExcludeEachOther)
{
    const auto button = [] (const char* name, int group, const juce::String& more = {})
    {
        return "<ToggleButton name=\"" + juce::String (name) + "\" radioGroupId=\"" + juce::String (group) + "\">"
               + size (20, 20) + more + "</ToggleButton>";
    };

    build (button ("a", 5, link ("LFO 1 Sync")) + button ("b", 5) + button ("other", 6) + button ("alone", 0));
    const auto isOn = [this] (const char* name) { return control<juce::Button> (name).getToggleState(); };

    for (const auto* name : { "a", "other", "alone" })
        Mouse (component (name)).click();

    EXPECT_TRUE (isOn ("a") && isOn ("other") && isOn ("alone") && parameter ("LFO 1 Sync").getBool());
    Mouse (component ("b")).click();
    EXPECT_TRUE (! isOn ("a") && isOn ("b") && isOn ("other") && isOn ("alone"));
    EXPECT_FALSE (parameter ("LFO 1 Sync").getBool());
    Mouse (component ("b")).click();
    EXPECT_TRUE (isOn ("b")) << "one of a group stays on";
}

TEST_F (Buttons, SwitchTogetherUnderASweep)
{
    build ("<ToggleButton name=\"a\">" + size (20, 20) + "</ToggleButton><ToggleButton name=\"b\"><pos left=\"30\"/>"
           + size (20, 20) + "</ToggleButton><ToggleButton name=\"c\"><pos left=\"60\"/>" + size (20, 20)
           + "</ToggleButton>");
    GFXToggleButton::SweepGroup group;

    for (const auto* name : { "a", "b", "c" })
        control<GFXToggleButton> (name).setSweepGroup (&group);

    control<GFXToggleButton> ("b").setToggleState (true, juce::dontSendNotification);
    control<GFXToggleButton> ("c").setToggleState (true, juce::dontSendNotification);
    Mouse mouse (component ("a"));
    mouse.press ({ 5, 5 });
    mouse.drag ({ 40, 5 });
    EXPECT_FALSE (control<GFXToggleButton> ("b").getToggleState());
    EXPECT_TRUE (control<GFXToggleButton> ("c").getToggleState());

    panel.reset();
    EXPECT_TRUE (group.members.empty());
}

TEST_F (Buttons, OfManyStatesShowTheirParameter)
{
    const struct
    {
        const char* attributes;
        const char* sizes;
        int states;
        float value;
        int state, frame, pressedFrame;
    } cases[] {
        { "states=\"4\"", "10x10x4", 4, 0.0f, 0, 0, 0 },
        { "states=\"4\"", "10x10x4", 4, 0.34f, 1, 1, 1 },
        { "states=\"4\"", "10x10x4", 4, 1.0f, 3, 3, 3 },
        { "states=\"4\" style=\"3D\"", "10x10x8", 4, 0.7f, 2, 4, 5 },
        { "states=\"1\"", "10x10x2", 2, 1.0f, 1, 1, 1 },
        { "states=\"-7\"", "10x10x2", 2, 0.4f, 0, 0, 0 },
        { "", "10x10x2", 2, 0.6f, 1, 1, 1 },
    };

    for (const auto& test : cases)
    {
        parameter ("Feedback").setNormalised (test.value, false);
        buildOne ("MultiStateButton", test.attributes,
                  strip (test.sizes, 1) + link ("Feedback") + actions (action ("onClick", "Options")));
        auto& button = control<GFXMultiStateButton>();
        EXPECT_EQ (button.getNumStates(), test.states) << test.attributes;
        EXPECT_EQ (button.getCurrentState(), test.state) << test.attributes << " " << test.value;
        EXPECT_EQ (shownFrame(), test.frame) << test.attributes << " " << test.value;

        Mouse mouse (component());
        mouse.press ({ 5, 5 });
        EXPECT_EQ (shownFrame(), test.pressedFrame) << test.attributes;
        mouse.release ({ 5, 5 });
        EXPECT_EQ (log.take(), "1000");
        EXPECT_EQ (parameter ("Feedback").getNormalised(), test.value) << "the event does the work";
    }
}

TEST_F (Buttons, WithoutAStripAreAsLargeAsTheirName)
{
    EXPECT_EQ (GFXButton ({}).getBounds(), juce::Rectangle<int> (18, 18));
    EXPECT_EQ (GFXButton ("A name").getHeight(), 18);
    EXPECT_GT (GFXButton ("A longer name").getWidth(), GFXButton ("A name").getWidth());

    buildOne ("Button", {}, size (40, 30));
    EXPECT_EQ (paint (component()).getPixelAt (2, 2), juce::Colour (0xffe6e6e6));
    Mouse mouse (component());
    mouse.press ({ 5, 5 });
    EXPECT_EQ (paint (component()).getPixelAt (2, 2), juce::Colour (0xff666666));
    EXPECT_EQ (paint (component()).getPixelAt (0, 0), juce::Colours::black);
    mouse.release ({ 5, 5 });
}
