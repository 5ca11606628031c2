// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/FocusableCheckBox.h"

#include "widgets/DefaultLookAndFeel.h"

namespace quilvane
{

FocusableCheckBox::FocusableCheckBox (const juce::String& text) : box (text)
{
    // So that the tick stands out.
    box.setColour (juce::TextButton::buttonColourId, box.findColour (juce::TextEditor::backgroundColourId));
    addAndMakeVisible (box);
    setWantsKeyboardFocus (true);
    setMouseClickGrabsKeyboardFocus (false);
    setSize (box.getWidth(), box.getHeight());

    box.onClick = [this]
    {
        if (onClick != nullptr)
            onClick();
    };
}

bool FocusableCheckBox::keyPressed (const juce::KeyPress& key)
{
    if (key != juce::KeyPress::spaceKey && key != juce::KeyPress::returnKey)
        return false;

    box.triggerClick();
    return true;
}

void FocusableCheckBox::paintOverChildren (juce::Graphics& g)
{
    if (! hasKeyboardFocus (false))
        return;

    if (const auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
        look->drawFocusRing (g, getLocalBounds());
}

} // namespace quilvane
