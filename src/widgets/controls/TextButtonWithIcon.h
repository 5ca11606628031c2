// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>
#include <memory>

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

/** A text button with a drawing at its left, in the colour of the text. A press takes no focus. */
class TextButtonWithIcon : public juce::TextButton
{
public:
    /** @param originalColour what of the drawing takes the text's colour */
    TextButtonWithIcon (const juce::String& label, const juce::Drawable& icon, juce::Colour originalColour);
    ~TextButtonWithIcon() override;

    void colourChanged() override;
    void resized() override;
    void buttonStateChanged() override;
    void paintButton (juce::Graphics&, bool isOver, bool isDown) override;

private:
    // Normal, over and down, first while off and then while on.
    struct Copy
    {
        std::unique_ptr<juce::Drawable> drawable;
        juce::Colour colour;
    };

    size_t getShownCopy() const;

    std::array<Copy, 6> copies;
};

} // namespace K7R
