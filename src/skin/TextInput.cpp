// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/TextInput.h"

namespace quilvane
{

void TextInput::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    setText (element.getStringAttribute ("name"));
    PlacedComponent::readFromXml (element, skin);
    paramReset = element.getBoolAttribute ("paramReset", false);
}

void TextInput::updateFromParameter (Parameter& parameter)
{
    setText (parameter.getDisplayText());
}

void TextInput::setText (const juce::String& newText)
{
    text = newText;
    repaint();
}

void TextInput::paint (juce::Graphics& g)
{
    g.setColour (findColour (juce::Label::textColourId));
    g.drawText (text, getLocalBounds(), juce::Justification::centredLeft);
}

} // namespace quilvane
