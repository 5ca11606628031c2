// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

/** A text button that reads differently while it's on. */
class TextToggleButton final : public juce::TextButton
{
public:
    TextToggleButton (const juce::String& textWhenOn, const juce::String& textWhenOff) :
        juce::TextButton (textWhenOff),
        onText (textWhenOn),
        offText (textWhenOff)
    {
        setClickingTogglesState (true);
        setMouseClickGrabsKeyboardFocus (false);
    }

    void buttonStateChanged() override { setButtonText (getToggleState() ? onText : offText); }

private:
    const juce::String onText, offText;
};

} // namespace K7R
