// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/controls/TextButtonWithIcon.h"

namespace K7R
{

namespace
{

constexpr float overBrightness = 1.0f;
constexpr juce::uint8 downAlpha = 127;
constexpr size_t statesOfEach = 3; // normal, over, down

} // namespace

TextButtonWithIcon::TextButtonWithIcon (const juce::String& label, const juce::Drawable& icon,
                                        juce::Colour originalColour) :
    juce::TextButton (label)
{
    setMouseClickGrabsKeyboardFocus (false);

    for (auto& copy : copies)
    {
        copy.drawable = icon.createCopy();
        copy.colour = originalColour;
        copy.drawable->setInterceptsMouseClicks (false, false);
        addChildComponent (*copy.drawable);
    }

    TextButtonWithIcon::colourChanged();
    TextButtonWithIcon::buttonStateChanged();
}

TextButtonWithIcon::~TextButtonWithIcon() = default;

void TextButtonWithIcon::colourChanged()
{
    for (size_t i = 0; i < copies.size(); ++i)
    {
        const auto base =
            findColour (i < statesOfEach ? juce::TextButton::textColourOffId : juce::TextButton::textColourOnId);
        const auto state = i % statesOfEach;
        const auto wanted = state == 0   ? base
                            : state == 1 ? base.brighter (overBrightness)
                                         : base.withAlpha (downAlpha);

        copies[i].drawable->replaceColour (copies[i].colour, wanted);
        copies[i].colour = wanted;
    }

    repaint();
}

size_t TextButtonWithIcon::getShownCopy() const
{
    return (getToggleState() ? statesOfEach : 0u) + (isDown() ? 2u : isOver() ? 1u : 0u);
}

void TextButtonWithIcon::buttonStateChanged()
{
    for (size_t i = 0; i < copies.size(); ++i)
        copies[i].drawable->setVisible (i == getShownCopy());
}

void TextButtonWithIcon::resized()
{
    const auto square = getLocalBounds().withWidth (getHeight()).reduced (1).toFloat();

    for (auto& copy : copies)
        copy.drawable->setTransformToFit (square, juce::RectanglePlacement::centred);
}

void TextButtonWithIcon::paintButton (juce::Graphics& g, bool isOver, bool isPressed)
{
    auto& look = getLookAndFeel();
    look.drawButtonBackground (
        g, *this, findColour (getToggleState() ? juce::TextButton::buttonOnColourId : juce::TextButton::buttonColourId),
        isOver, isPressed);

    g.setColour (copies[getShownCopy()].colour.withMultipliedAlpha (isEnabled() ? 1.0f : 0.5f));
    g.setFont (look.getTextButtonFont (*this, getHeight()));
    g.drawFittedText (getButtonText(), getLocalBounds().withTrimmedLeft (getHeight()), juce::Justification::centredLeft,
                      1);
}

} // namespace K7R
