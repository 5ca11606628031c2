// SPDX-License-Identifier: GPL-3.0-or-later

// The boxes that open a list, and the slider of an amount.

#include "editor/settings/GUISettingsComponent.h"
#include "parameters/IntParameter.h"
#include "support/SkinInTest.h"
#include "support/TestDesktop.h"
#include "widgets/controls/ComboBoxButton.h"
#include "widgets/controls/ComboBoxEx.h"
#include "widgets/controls/ModulationSlider.h"

using namespace K7R;
using namespace quilvane;
using namespace K7R::test;

namespace
{

class Boxes : public SkinTest
{
protected:
    /** The open menu; null for none. */
    ModalComponent* openMenu()
    {
        for (auto* modal : allOf<ModalComponent> (desktop))
            if (modal->isShown())
                return modal;

        return nullptr;
    }

    juce::StringArray shownItems (bool tickedOnly)
    {
        juce::StringArray items;

        if (auto* menu = openMenu())
            for (const auto* button : allOf<juce::Button> (*menu))
                if (button->getToggleState() || ! tickedOnly)
                    items.add (button->getButtonText());

        return items;
    }

    /** Takes an item of the open menu, and lets the choice be told. */
    void choose (int index)
    {
        auto* menu = openMenu();
        ASSERT_NE (menu, nullptr);
        Mouse (*allOf<juce::Button> (*menu)[static_cast<size_t> (index)]).click();
        runMessageLoopFor (20);
    }

    template <typename Box>
    void expectFollowsAndSetsItsParameter (Box& box, const juce::Array<int>& told)
    {
        auto& stages = dynamic_cast<EnumParameter&> (parameter ("Stages Number"));
        stages.setInt (1, false);
        desktop.addAndMakeVisible (box);
        box.setBounds (100, 80, 90, 20);
        box.addParameter (&stages);
        box.addParameter (&parameter ("LFO 1 Waveform"));
        EXPECT_EQ (box.getItems(), stages.getEnumNames());
        EXPECT_EQ (box.getText(), stages.getEnumNames()[1]);

        Mouse (box).click();
        ASSERT_NE (openMenu(), nullptr);
        EXPECT_EQ (openMenu()->getPosition(), box.getBounds().getBottomLeft());
        EXPECT_EQ (shownItems (false), stages.getEnumNames());
        EXPECT_EQ (shownItems (true), juce::StringArray (stages.getEnumNames()[1]));

        ControlLog gestures;
        stages.addListener (&gestures);
        choose (3);
        stages.removeListener (&gestures);
        EXPECT_EQ (box.getSelectedIndex(), 3);
        EXPECT_EQ (stages.getInt(), 3);
        EXPECT_EQ (gestures.take(), "begin change end");
        EXPECT_EQ (told, juce::Array<int> ({ 3 }));

        stages.setInt (0, true);
        EXPECT_TRUE (runMessageLoopUntil ([&] { return box.getSelectedIndex() == 0; }));
        EXPECT_EQ (told.size(), 1) << "no choice of the user's";

        for (const auto key : { juce::KeyPress::spaceKey, juce::KeyPress::returnKey, juce::KeyPress::downKey })
        {
            EXPECT_TRUE (box.keyPressed (juce::KeyPress (key)));
            ASSERT_NE (openMenu(), nullptr);
            openMenu()->dismiss();
        }

        EXPECT_FALSE (box.keyPressed (juce::KeyPress (juce::KeyPress::escapeKey)));
        Mouse (box).click (keys::right);
        EXPECT_EQ (openMenu(), nullptr);

        // A box that is disabled opens nothing, and closes what it has opened.
        box.showMenu();
        box.setEnabled (false);
        EXPECT_EQ (openMenu(), nullptr);
        Mouse (box).click();
        EXPECT_TRUE (box.keyPressed (juce::KeyPress (juce::KeyPress::spaceKey)));
        EXPECT_EQ (openMenu(), nullptr);
    }

    TestDesktop desktop;
};

} // namespace

TEST_F (Boxes, FollowAndSetTheirParameter)
{
    struct Listener : ComboBoxEx::Listener, ComboBoxButton::Listener
    {
        void itemChosen (ComboBoxEx& box) override { told.add (box.getSelectedIndex()); }
        void itemChosen (ComboBoxButton& box) override { told.add (box.getSelectedIndex()); }
        juce::Array<int> told;
    } ofBox, ofButton;

    ComboBoxEx box;
    box.addListener (&ofBox);
    expectFollowsAndSetsItsParameter (box, ofBox.told);

    ComboBoxButton button;
    button.addListener (&ofButton);
    expectFollowsAndSetsItsParameter (button, ofButton.told);
}

TEST_F (Boxes, ShareAMenuAndKeepTheirChoicesApart)
{
    PopupMenuEx menu;
    menu.addItem (1, "One");
    menu.addItem (2, "Two");

    const auto makeBox = [&]
    {
        auto box = std::make_unique<ComboBoxEx> (&menu);
        box->setItems ({ "One", "Two" });
        desktop.addAndMakeVisible (*box);
        return box;
    };

    const auto first = makeBox();
    auto second = makeBox();

    first->showMenu();
    menu.close();
    second->showMenu();
    choose (1);
    EXPECT_EQ (first->getSelectedIndex(), -1);
    EXPECT_EQ (second->getSelectedIndex(), 1);

    second->setItems ({ "One" });
    EXPECT_EQ (second->getSelectedIndex(), -1) << "the item is gone";

    second->showMenu();
    second = nullptr;
    EXPECT_FALSE (menu.isOpen()) << "nobody is there to be told";
}

TEST_F (Boxes, ATextThatIsTooLongIsShortenedAndHasATooltip)
{
    const juce::String text ("A name that no box of this size has room for");
    ComboBoxEx box;
    desktop.addAndMakeVisible (box);
    box.setItems ({ text });
    box.setSelectedIndex (0);
    box.setSize (80, 20);
    const juce::Colour ink (0xff20c040);
    box.setColour (juce::ComboBox::textColourId, ink);
    EXPECT_EQ (box.getTooltip(), text);

    const auto image = paint (box);
    int lastInk = 0;

    for (int y = 0; y < image.getHeight(); ++y)
        for (int x = 0; x < image.getWidth(); ++x)
            if (image.getPixelAt (x, y) == ink)
                lastInk = juce::jmax (lastInk, x);

    EXPECT_GT (lastInk, 40);
    EXPECT_LT (lastInk, 62) << "over the arrow";

    box.setSize (400, 20);
    EXPECT_EQ (box.getTooltip(), "");
}

TEST_F (Boxes, SkinsAreChosenByNameAndByPictureAlike)
{
    struct Listener : GUISettingsComponent::Listener
    {
        void skinChosen (const juce::String& name) override { chosen.add (name); }
        juce::StringArray chosen;
    } listener;

    const juce::StringArray skins { "Big", "Small", "Wide" };
    GUISettingsComponent page (plugin(), skins, juce::File(), 500, listener);
    desktop.addAndMakeVisible (page);
    auto& names = *allOf<ComboBoxButton> (page).at (0);
    EXPECT_EQ (names.getItems(), skins);

    const auto lit = [&]
    {
        juce::StringArray found;

        for (const auto* picture : allOf<juce::Button> (page))
            if (picture->getToggleState())
                found.add (picture->getName());

        return found;
    };

    page.setCurrent ("small");
    EXPECT_EQ (names.getText(), "Small");
    EXPECT_EQ (lit(), juce::StringArray ("Small"));
    EXPECT_TRUE (listener.chosen.isEmpty());

    names.showMenu();
    choose (2);
    Mouse (*allOf<juce::Button> (page).at (0)).click();
    EXPECT_EQ (listener.chosen, juce::StringArray ({ "Wide", "Big" }));

    page.setCurrent ("one that was removed");
    EXPECT_EQ (names.getText(), "");
    EXPECT_TRUE (lit().isEmpty());
}

TEST_F (Boxes, AnAmountFillsFromTheMiddle)
{
    ModulationSlider slider;
    slider.setSize (164, 30);
    const juce::Colour fill (0xffeb6e2a);
    constexpr int barY = 8, left = 62, right = 102, middle = 82;

    const auto filled = [&] (double value)
    {
        slider.setValue (value, juce::dontSendNotification);
        const auto image = paint (slider);
        return std::pair (image.getPixelAt (left, barY) == fill, image.getPixelAt (right, barY) == fill);
    };

    EXPECT_EQ (filled (0.8), std::pair (false, true));
    EXPECT_EQ (filled (-0.8), std::pair (true, false));
    EXPECT_EQ (filled (0.0), std::pair (false, false));
    EXPECT_EQ (filled (7.0), std::pair (false, true));
    EXPECT_EQ (slider.getValue(), 1.0);
    EXPECT_EQ (slider.getTextFromValue (-0.254), "-0.25");
    EXPECT_EQ (slider.getTextFromValue (0.5), "+0.50");
    EXPECT_EQ (slider.getTextFromValue (-0.001), "0.00");

    Mouse mouse (slider);
    mouse.press ({ middle + 40, barY });
    mouse.release ({ middle + 40, barY });
    EXPECT_NEAR (slider.getValue(), 0.5, 0.011);
    slider.mouseDoubleClick (mouse.event ({ middle, barY }, false));
    EXPECT_EQ (slider.getValue(), 0.0);
    EXPECT_TRUE (slider.keyPressed (juce::KeyPress (juce::KeyPress::rightKey)));
    EXPECT_NEAR (slider.getValue(), 0.01, 1.0e-9);
}
