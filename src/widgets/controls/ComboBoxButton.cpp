// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/controls/ComboBoxButton.h"

#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

constexpr int textMargin = 8, arrowMargin = 4;

} // namespace

ComboBoxButton::ComboBoxButton() : arrow (Icons::create (Icons::Name::arrowDown)), arrowColour (Icons::colour)
{
    ComboBoxButton::colourChanged();
}

ComboBoxButton::~ComboBoxButton() = default;

juce::Font ComboBoxButton::getFont() const
{
    return juce::Font (DefaultLookAndFeel::getEmbeddedTypeface()).withHeight (DefaultLookAndFeel::textHeight);
}

juce::Rectangle<int> ComboBoxButton::getArrowArea() const
{
    return getLocalBounds().removeFromRight (getHeight());
}

juce::Rectangle<int> ComboBoxButton::getTextArea() const
{
    return getLocalBounds().withTrimmedRight (getHeight()).withTrimmedLeft (textMargin);
}

void ComboBoxButton::colourChanged()
{
    const auto colour = findColour (juce::TextButton::textColourOffId);
    arrow->replaceColour (arrowColour, colour);
    arrowColour = colour;
    repaint();
}

void ComboBoxButton::paint (juce::Graphics& g)
{
    const auto* look = dynamic_cast<const DefaultLookAndFeel*> (&getLookAndFeel());

    if (look != nullptr)
        look->drawButtonFace (g, getLocalBounds(), findColour (juce::TextButton::buttonColourId),
                              { isEnabled(), isMouseOver(), isMouseButtonDown() });

    drawSelectedText (g, findColour (juce::TextButton::textColourOffId));
    arrow->drawWithin (g, getArrowArea().reduced (arrowMargin).toFloat(), juce::RectanglePlacement::centred,
                       isEnabled() ? 1.0f : 0.5f);

    if (look != nullptr && hasKeyboardFocus (false))
        look->drawFocusRing (g, getLocalBounds());
}

} // namespace K7R
