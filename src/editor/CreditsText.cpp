// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/CreditsText.h"

#include <cmath>

namespace K7R
{

namespace
{

constexpr const char* typeface = "Tahoma";
constexpr float fontHeight = 12.5f;
constexpr juce::uint32 headingColour = 0xffb84a00, textColour = 0xff282828;

} // namespace

CreditsText::CreditsText (const std::vector<SoftwareDesignation::Credit>& credits)
{
    text.setWordWrap (juce::AttributedString::byWord);
    text.setLineSpacing (2.0f);

    for (const auto& credit : credits)
    {
        if (credit.heading.isNotEmpty())
            add (credit.heading, true);

        add (credit.text, false);
    }

    setTitle ("Credits");
    setDescription (text.getText());
}

void CreditsText::add (const juce::String& run, bool isHeading)
{
    const juce::Font font (typeface, fontHeight, isHeading ? juce::Font::bold : juce::Font::plain);
    text.append (run + (isHeading ? "\n" : "\n\n"), font, juce::Colour (isHeading ? headingColour : textColour));
}

void CreditsText::setWidth (int width)
{
    layout.createLayout (text, static_cast<float> (width));
    setSize (width, static_cast<int> (std::ceil (layout.getHeight())));
    repaint();
}

void CreditsText::paint (juce::Graphics& g)
{
    layout.draw (g, getLocalBounds().toFloat());
}

} // namespace K7R
