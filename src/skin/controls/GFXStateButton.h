// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/BaseGFXController.h"

namespace K7R
{

/** What buttons share that show one of several states. Their strip has a frame for each state in the style "2D", and
    two, up and pressed, in the style "3D"; its "framesNum" isn't read. */
class GFXStateButton : public BaseGFXController, public juce::Button
{
public:
    explicit GFXStateButton (const juce::String& controlName) : juce::Button (controlName)
    {
        setWantsKeyboardFocus (false);
    }

protected:
    /** Reads further "style", the strip, "clickEvent" and "radioGroupId". */
    void readStates (const juce::XmlElement&, SkinFile&, int numStates);

    /** Only with a strip. */
    void paintState (juce::Graphics&, int state, bool isPressed) const;

private:
    void blinkChanged() override { repaint(); }

    bool is3D = false;
};

} // namespace K7R
