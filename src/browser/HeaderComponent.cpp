// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/HeaderComponent.h"

#include "widgets/look/DefaultLookAndFeel.h"

namespace K7R
{

HeaderComponent::HeaderComponent (const juce::String& title, juce::Button* left, juce::Button* right) :
    label ({}, title),
    leftButton (left),
    rightButton (right)
{
    for (auto* button : { left, right })
        if (button != nullptr)
        {
            button->setSize (height, height);
            addAndMakeVisible (button);
        }

    label.setInterceptsMouseClicks (false, false);
    label.setColour (DefaultLookAndFeel::hardLabelTextId, juce::Colours::black);
    label.setFont (juce::Font (DefaultLookAndFeel::textHeight - 1.0f).boldened());
    addAndMakeVisible (label);
    setSize (getWidth(), height);
}

void HeaderComponent::parentSizeChanged()
{
    setSize (getParentWidth(), height);
}

void HeaderComponent::resized()
{
    constexpr int fromRightEdge = 1;

    label.setBounds (getLocalBounds().withTrimmedLeft (leftButton != nullptr ? height : 0));

    if (leftButton != nullptr)
        leftButton->setTopLeftPosition (0, 0);

    if (rightButton != nullptr)
        rightButton->setTopLeftPosition (getWidth() - height - fromRightEdge, 0);
}

void HeaderComponent::paint (juce::Graphics& g)
{
    g.fillAll (findColour (DefaultLookAndFeel::browserHeaderId));
}

} // namespace K7R
