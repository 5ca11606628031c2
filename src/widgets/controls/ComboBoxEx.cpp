// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/controls/ComboBoxEx.h"

#include "widgets/look/DefaultLookAndFeel.h"

namespace K7R
{

namespace
{

constexpr int arrowWidth = 18, textMargin = 6;

} // namespace

juce::Font ComboBoxEx::getFont() const
{
    return { "Tahoma", DefaultLookAndFeel::textHeight, juce::Font::plain };
}

juce::Rectangle<int> ComboBoxEx::getArrowArea() const
{
    return getLocalBounds().removeFromRight (juce::jmin (arrowWidth, getHeight()));
}

juce::Rectangle<int> ComboBoxEx::getTextArea() const
{
    return getLocalBounds().withTrimmedRight (getArrowArea().getWidth()).withTrimmedLeft (textMargin);
}

void ComboBoxEx::paint (juce::Graphics& g)
{
    if (const auto* look = dynamic_cast<const DefaultLookAndFeel*> (&getLookAndFeel()))
        look->drawDropDown (g, *this, getArrowArea(), hasKeyboardFocus (false), isMouseOver());

    drawSelectedText (g, findColour (juce::ComboBox::textColourId));
}

} // namespace K7R
