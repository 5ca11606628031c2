// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/GUIPickerComponent.h"

#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

constexpr int width = 172, rowHeight = 22, spacing = 8;

} // namespace

GUIPickerComponent::GUIPickerComponent (const juce::StringArray& skins,
                                        const std::function<void (const juce::String&)>& onPick) :
    icon (Icons::create (Icons::Name::resize))
{
    caption.setBorderSize ({});
    addAndMakeVisible (caption);
    addAndMakeVisible (*icon);

    for (const auto& skin : skins)
    {
        auto button = std::make_unique<juce::TextButton> (skin);
        button->onClick = [toCall = onPick, skin] { toCall (skin); };
        addAndMakeVisible (*button);
        buttons.push_back (std::move (button));
    }

    setSize (width, 2 * rowHeight + spacing);
}

void GUIPickerComponent::setCurrent (const juce::String& skin)
{
    for (const auto& button : buttons)
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

    const auto numButtons = static_cast<int> (buttons.size());
    const auto buttonWidth = (width - (numButtons - 1) * spacing) / juce::jmax (1, numButtons);

    for (const auto& button : buttons)
    {
        button->setBounds (area.removeFromLeft (buttonWidth));
        area.removeFromLeft (spacing);
    }
}

} // namespace K7R
