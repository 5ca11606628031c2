// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/controls/FocusableCheckBox.h"

#include "widgets/look/DefaultLookAndFeel.h"

namespace K7R
{

FocusableCheckBox::FocusableCheckBox (const juce::String& text) : box (text)
{
    // So that the tick stands out.
    box.setColour (juce::TextButton::buttonColourId, box.findColour (juce::TextEditor::backgroundColourId));
    addAndMakeVisible (box);
    setTitle (text);
    box.setAccessible (false); // this speaks for it
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

std::unique_ptr<juce::AccessibilityHandler> FocusableCheckBox::createAccessibilityHandler()
{
    class Handler final : public juce::AccessibilityHandler
    {
    public:
        explicit Handler (FocusableCheckBox& checkBox) :
            juce::AccessibilityHandler (checkBox, juce::AccessibilityRole::toggleButton, actionsOf (checkBox)),
            owner (checkBox)
        {
        }

        juce::AccessibleState getCurrentState() const override
        {
            const auto state = juce::AccessibilityHandler::getCurrentState().withCheckable();
            return owner.isOn() ? state.withChecked() : state;
        }

    private:
        static juce::AccessibilityActions actionsOf (FocusableCheckBox& checkBox)
        {
            const auto click = [&checkBox] { checkBox.box.triggerClick(); };
            return juce::AccessibilityActions()
                .addAction (juce::AccessibilityActionType::press, click)
                .addAction (juce::AccessibilityActionType::toggle, click);
        }

        const FocusableCheckBox& owner;
    };

    return std::make_unique<Handler> (*this);
}

void FocusableCheckBox::paintOverChildren (juce::Graphics& g)
{
    if (! hasKeyboardFocus (false))
        return;

    if (const auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
        look->drawFocusRing (g, getLocalBounds());
}

} // namespace K7R
