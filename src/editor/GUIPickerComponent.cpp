// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/GUIPickerComponent.h"

#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

constexpr int width = 172, rowHeight = 22, spacing = 8;

} // namespace

GUIPickerComponent::GUIPickerComponent (const std::function<void (const juce::String&)>& onPick) :
    icon (Icons::create (Icons::Name::resize))
{
    caption.setBorderSize ({});
    addAndMakeVisible (caption);
    addAndMakeVisible (*icon);

    for (auto* button : { &bigButton, &smallButton })
    {
        button->onClick = [toCall = onPick, name = button->getName()] { toCall (name); };
        addAndMakeVisible (button);
    }

    setSize (width, 2 * rowHeight + spacing);
}

void GUIPickerComponent::setCurrent (const juce::String& skin)
{
    for (auto* button : { &bigButton, &smallButton })
        button->setToggleState (button->getName().equalsIgnoreCase (skin), juce::dontSendNotification);
}

void GUIPickerComponent::resized()
{
    auto area = getLocalBounds();
    auto top = area.removeFromTop (rowHeight);
    icon->setTransformToFit (top.removeFromLeft (rowHeight).reduced (2).toFloat(), juce::RectanglePlacement::centred);
    top.removeFromLeft (spacing);
    caption.setBounds (top);
    area.removeFromTop (spacing);
    bigButton.setBounds (area.removeFromLeft ((width - spacing) / 2));
    smallButton.setBounds (area.removeFromRight ((width - spacing) / 2));
}

} // namespace K7R
