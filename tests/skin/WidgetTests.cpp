// SPDX-License-Identifier: GPL-3.0-or-later

// The widgets of windows that are built by code, and their look.

#include "parameters/IntParameter.h"
#include "support/SkinInTest.h"
#include "widgets/controls/CheckBox_V2.h"
#include "widgets/controls/RadioTextButtons.h"
#include "widgets/controls/SliderController.h"
#include "widgets/controls/TextButtonWithIcon.h"
#include "widgets/controls/TextToggleButton.h"
#include "widgets/controls/ToolbarDrawableButton.h"
#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/look/Icons.h"

using namespace K7R;
using namespace quilvane;
using namespace K7R::test;

namespace
{

class Widgets : public SkinTest
{
};

/** How many separate runs of a colour lie along a row. */
int countRuns (const juce::Image& image, int y, juce::Colour colour)
{
    int runs = 0;

    for (int x = 0; x < image.getWidth(); ++x)
        if (image.getPixelAt (x, y) == colour && (x == 0 || image.getPixelAt (x - 1, y) != colour))
            ++runs;

    return runs;
}

} // namespace

TEST_F (Widgets, RadioButtonsAreTheItemsOfAParameter)
{
    auto& stages = dynamic_cast<EnumParameter&> (parameter ("Stages Number"));
    stages.setInt (1, false);
    RadioTextButtons buttons (&stages);
    buttons.setSize (100, buttons.getHeight());

    EXPECT_EQ (buttons.getHeight(), 80);
    EXPECT_EQ (buttons.getSelected(), 1);
    EXPECT_EQ (buttons.getChildComponent (2)->getBounds(), juce::Rectangle<int> (0, 40, 100, 20));

    struct Listener : RadioTextButtons::Listener
    {
        void radioButtonSelected (RadioTextButtons&, int index) override { selected.add (index); }
        juce::Array<int> selected;
    } listener;

    buttons.addListener (&listener);
    stages.addListener (&log);
    Mouse (*buttons.getChildComponent (2)).click();
    EXPECT_EQ (buttons.getSelected(), 2);
    EXPECT_EQ (stages.getInt(), 2);
    EXPECT_EQ (log.take(), "begin change end");
    Mouse (*buttons.getChildComponent (2)).click();
    EXPECT_EQ (listener.selected, juce::Array<int> ({ 2 })) << "what is on already is no choice";

    stages.setInt (0, true);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return buttons.getSelected() == 0; }));
    EXPECT_EQ (log.take(), "change") << "to follow is no gesture";
    stages.removeListener (&log);
    buttons.select (7);
    EXPECT_EQ (buttons.getSelected(), -1);

    RadioTextButtons withMargins (&stages, { 1, 2, 3, 4 });
    withMargins.setSize (100, withMargins.getHeight());
    EXPECT_EQ (withMargins.getHeight(), 84);
    EXPECT_EQ (withMargins.getChildComponent (1)->getBounds(), juce::Rectangle<int> (2, 21, 94, 20));
    EXPECT_EQ (paint (withMargins).getPixelAt (0, 0), juce::Colours::black);

    EXPECT_EQ (RadioTextButtons (nullptr).getHeight(), 0);
}

TEST_F (Widgets, CheckBoxesFollowAndSetAParameter)
{
    parameter ("LFO 1 Sync").setBool (true, false);
    CheckBox_V2 box ("A label", 20);
    box.addParameter (&parameter ("LFO 1 Sync"));
    EXPECT_TRUE (box.getToggleState());
    EXPECT_TRUE (box.getChildComponent (0)->isVisible()) << "the tick";

    box.setVisible (true);
    parameter ("LFO 1 Sync").addListener (&log);
    Mouse (box).click();
    EXPECT_EQ (log.take(), "begin change end");
    parameter ("LFO 1 Sync").removeListener (&log);
    EXPECT_FALSE (parameter ("LFO 1 Sync").getBool());
    EXPECT_FALSE (box.getChildComponent (0)->isVisible());

    parameter ("LFO 1 Sync").setBool (true, true);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return box.getToggleState(); }));
    EXPECT_TRUE (box.getChildComponent (0)->isVisible());

    box.addParameter (&parameter ("LFO 1 Sync"));
    box.addParameter (nullptr);
    EXPECT_EQ (box.getNumParameters(), 1u);
    EXPECT_GT (CheckBox_V2 ("A much longer label", 20).getWidth(), box.getWidth());
    EXPECT_EQ (paint (box).getPixelAt (3, 3), box.findColour (juce::TextButton::buttonColourId));
}

TEST_F (Widgets, TextToggleButtonsReadDifferentlyWhileOn)
{
    TextToggleButton button ("On now", "Off now");
    button.setSize (60, 20);
    button.setVisible (true);
    EXPECT_EQ (button.getButtonText(), "Off now");
    Mouse (button).click();
    EXPECT_EQ (button.getButtonText(), "On now");
    Mouse (button).click();
    EXPECT_EQ (button.getButtonText(), "Off now");
}

TEST_F (Widgets, SlidersShowTheParametersTexts)
{
    parameter ("Feedback").setNormalised (0.25f, false);
    VolumeSlider slider;
    slider.addParameter (&parameter ("Feedback"));
    EXPECT_EQ (slider.getBounds(), juce::Rectangle<int> (100, 20));
    EXPECT_NEAR (slider.getValue(), 0.25, 1.0e-6);
    EXPECT_EQ (slider.getTextFromValue (0.25), parameter ("Feedback").getDisplayText());
    EXPECT_EQ (slider.getTextFromValue (0.75), "75%");
    EXPECT_EQ (parameter ("Feedback").getNormalised(), 0.25f) << "asking changes nothing";

    ControlLog told;
    parameter ("Feedback").addListener (&told);
    slider.startedDragging();
    slider.setValue (0.5, juce::sendNotificationSync);
    slider.stoppedDragging();
    EXPECT_EQ (told.take(), "begin change end");
    EXPECT_EQ (parameter ("Feedback").getNormalised(), 0.5f);
    parameter ("Feedback").removeListener (&told);

    // Only the first of several counts.
    slider.addParameter (&parameter ("FX"));
    EXPECT_NEAR (slider.getValue(), 0.5, 1.0e-6);

    EXPECT_EQ (SliderController().getTextFromValue (0.5), juce::Slider().getTextFromValue (0.5));
}

TEST_F (Widgets, IconsTakeTheColourOfTheText)
{
    const auto icon = Icons::create (Icons::Name::plus);
    ASSERT_NE (icon, nullptr);
    EXPECT_EQ (Icons::fromSvg ("no drawing"), nullptr);

    const auto inkOf = [] (juce::Component& button, juce::Colour colour)
    {
        const auto image = paint (button);

        for (int y = 0; y < image.getHeight(); ++y)
            for (int x = 0; x < image.getHeight(); ++x)
                if (image.getPixelAt (x, y) == colour)
                    return true;

        return false;
    };

    const juce::Colour green (0xff20c040);
    TextButtonWithIcon button ("Add", *icon, juce::Colour (Icons::colour));
    button.setSize (120, 48); // so that strokes have pixels of their own
    EXPECT_FALSE (inkOf (button, green));
    button.setColour (juce::TextButton::textColourOffId, green);
    EXPECT_TRUE (inkOf (button, green));

    ToolbarDrawableButton tool ("Add", *icon, juce::Colour (Icons::colour));
    tool.setSize (48, 48);
    tool.setColour (juce::DrawableButton::textColourId, green);
    EXPECT_TRUE (inkOf (tool, green));
    EXPECT_EQ (tool.getTooltip(), "Add");
}

//==============================================================================
TEST_F (Widgets, TheLookDrawsOneThumbOrTwo)
{
    DefaultSliderLAF look;
    const juce::Colour thumb (0xff20c040);
    const std::pair<juce::Slider::SliderStyle, int> cases[] { { juce::Slider::LinearHorizontal, 1 },
                                                              { juce::Slider::TwoValueHorizontal, 2 } };

    for (const auto& [style, numThumbs] : cases)
    {
        juce::Slider slider (style, juce::Slider::NoTextBox);
        slider.setLookAndFeel (&look);
        slider.setColour (juce::Slider::thumbColourId, thumb);
        slider.setSize (120, 20);
        slider.setRange (0.0, 1.0);

        if (numThumbs == 2)
            slider.setMinAndMaxValues (0.25, 0.75);
        else
            slider.setValue (0.5);

        const auto image = paint (slider);
        EXPECT_EQ (countRuns (image, 10, thumb), numThumbs);

        // The bar is 6 high in the middle.
        EXPECT_EQ (image.getPixelAt (20, 10), juce::Colour (0xff808080));
        EXPECT_EQ (image.getPixelAt (20, 7), juce::Colour (0xff808080));
        EXPECT_EQ (image.getPixelAt (20, 6), juce::Colours::black);
        EXPECT_EQ (image.getPixelAt (20, 13), juce::Colours::black);
        slider.setLookAndFeel (nullptr);
    }

    // An upright slider's bar is as upright.
    juce::Slider upright (juce::Slider::LinearVertical, juce::Slider::NoTextBox);
    upright.setLookAndFeel (&look);
    upright.setSize (20, 120);
    const auto image = paint (upright);
    EXPECT_EQ (image.getPixelAt (10, 20), juce::Colour (0xff808080));
    EXPECT_EQ (image.getPixelAt (10, 60), juce::Colour (0xff808080));
    EXPECT_EQ (image.getPixelAt (2, 60), juce::Colours::black);
    upright.setLookAndFeel (nullptr);
}
