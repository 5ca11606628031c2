// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/displays/GFXMidiChannelDisplay.h"

namespace K7R
{

int GFXMidiChannelDisplay::getFrame() const
{
    return isEnabled() ? FilmStrip::frameFor (getShownValue(), getStrip().getNumFrames() - 1) + 1 : 0;
}

void GFXMidiChannelDisplay::paintFallback (juce::Graphics& g)
{
    auto* const parameter = getParameter();
    const auto text = parameter != nullptr ? parameter->getDisplayText() : getOwnText();

    g.setColour (juce::Colours::black);
    g.setFont ({ "Tahoma", juce::jmax (1.0f, static_cast<float> (getHeight()) * 0.75f), juce::Font::plain });
    g.drawText (text, getLocalBounds(), juce::Justification::centred, false);
}

} // namespace K7R
