// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

/** A button of a tool bar that shows a drawing: dim when disabled, on a light ground while the mouse is over it. */
class ToolbarDrawableButton final : public juce::DrawableButton
{
public:
    /** @param originalColour what of the drawing takes juce::DrawableButton::textColourId */
    ToolbarDrawableButton (const juce::String& name, const juce::Drawable& icon, juce::Colour originalColour) :
        juce::DrawableButton (name, juce::DrawableButton::ImageFitted),
        drawable (icon.createCopy()),
        iconColour (originalColour)
    {
        setTooltip (name);
        setTitle (name);
        setWantsKeyboardFocus (false);
        ToolbarDrawableButton::colourChanged();
    }

    void colourChanged() override
    {
        const auto colour = findColour (juce::DrawableButton::textColourId);
        drawable->replaceColour (iconColour, colour);
        iconColour = colour;
        setImages (drawable.get());
        repaint();
    }

    void buttonStateChanged() override
    {
        juce::DrawableButton::buttonStateChanged();
        repaint();
    }

    void paintButton (juce::Graphics& g, bool isOver, bool isPressed) override
    {
        constexpr float corner = 3.0f, overAlpha = 0.25f, downAlpha = 0.5f;

        if (! isEnabled() || ! isOver)
            return;

        g.setColour (findColour (juce::DrawableButton::backgroundColourId)
                         .withMultipliedAlpha (isPressed ? downAlpha : overAlpha));
        g.fillRoundedRectangle (getLocalBounds().toFloat(), corner);
    }

private:
    std::unique_ptr<juce::Drawable> drawable;
    juce::Colour iconColour;
};

} // namespace K7R
