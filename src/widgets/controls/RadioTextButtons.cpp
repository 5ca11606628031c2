// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/controls/RadioTextButtons.h"

#include "parameters/IntParameter.h"
#include "widgets/look/DefaultLookAndFeel.h"

namespace K7R
{

RadioTextButtons::RadioTextButtons (EnumParameter* parameter, juce::BorderSize<int> outerMargins) :
    margins (outerMargins)
{
    if (parameter != nullptr)
        for (const auto& item : parameter->getEnumNames())
        {
            auto* button = buttons.add (std::make_unique<juce::TextButton> (item));
            button->setWantsKeyboardFocus (false);
            button->setColour (juce::TextButton::buttonColourId, juce::Colour (0xffd0d0d0));
            button->setColour (juce::TextButton::textColourOffId, juce::Colour (0xff282828));
            button->setColour (juce::TextButton::buttonOnColourId, juce::Colour (0xffeb6e2a));
            button->setColour (juce::TextButton::textColourOnId, juce::Colours::white);
            button->addListener (this);
            addAndMakeVisible (button);
        }

    setWantsKeyboardFocus (true);
    setMouseClickGrabsKeyboardFocus (false);
    setSize (getWidth(), margins.getTopAndBottom() + buttons.size() * rowHeight);
    addParameter (parameter);
}

RadioTextButtons::~RadioTextButtons() = default;

void RadioTextButtons::select (int index)
{
    if (! show (index))
        return;

    if (auto* parameter = getParameter (0))
        setInGesture (*parameter, index);

    tellSelection();
}

bool RadioTextButtons::show (int index)
{
    const auto selected = getSelected();

    if (selected == index && selected >= 0)
        return false;

    for (int i = 0; i < buttons.size(); ++i)
        buttons[i]->setToggleState (i == index, juce::dontSendNotification);

    return true;
}

void RadioTextButtons::tellSelection()
{
    listeners.call ([this, index = getSelected()] (auto& listener) { listener.radioButtonSelected (*this, index); });
}

int RadioTextButtons::getSelected() const
{
    for (int i = 0; i < buttons.size(); ++i)
        if (buttons[i]->getToggleState())
            return i;

    return -1;
}

void RadioTextButtons::buttonClicked (juce::Button* button)
{
    select (buttons.indexOf (static_cast<juce::TextButton*> (button)));
}

void RadioTextButtons::updateFromParameter (Parameter& parameter)
{
    if (show (parameter.getInt()))
        tellSelection();
}

void RadioTextButtons::resized()
{
    for (int i = 0; i < buttons.size(); ++i)
        buttons[i]->setBounds (margins.getLeft(), margins.getTop() + i * rowHeight,
                               getWidth() - margins.getLeftAndRight(), rowHeight);
}

void RadioTextButtons::paint (juce::Graphics& g)
{
    g.fillAll (juce::Colours::black);
    g.setColour (juce::Colour (0xffd0d0d0));
    g.fillRect (margins.subtractedFrom (getLocalBounds()));
}

void RadioTextButtons::paintOverChildren (juce::Graphics& g)
{
    if (! hasKeyboardFocus (false))
        return;

    if (const auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
        look->drawFocusRing (g, getLocalBounds());
}

bool RadioTextButtons::keyPressed (const juce::KeyPress& key)
{
    const auto isNext = key == juce::KeyPress::downKey || key == juce::KeyPress::rightKey;

    if (! isNext && key != juce::KeyPress::upKey && key != juce::KeyPress::leftKey)
        return false;

    if (const auto index = getSelected() + (isNext ? 1 : -1); juce::isPositiveAndBelow (index, buttons.size()))
        select (index);

    return true;
}

} // namespace K7R
