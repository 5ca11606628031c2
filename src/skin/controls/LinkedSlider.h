// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/BaseGFXController.h"

namespace K7R
{

/** What the sliders of a skin share: a film strip in place of the slider's own look, a parameter that follows the
    slider, and the gestures that belong to the editor and don't reach the slider: whatever the mouse does with the right button or
    with Shift. */
class LinkedSlider : public BaseGFXController, public juce::Slider
{
public:
    /** The range is 0 to 1, the value 0; no text box. */
    LinkedSlider (const juce::String& controlName, double interval);

    void readFromXml (const juce::XmlElement&, SkinFile&) override;
    void updateFromParameter (Parameter&) override;

    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    void startedDragging() override;
    void stoppedDragging() override;
    void valueChanged() override;
    void paint (juce::Graphics&) override;

protected:
    /** The strip's frame for the present value. */
    virtual int getFrame() const = 0;

    /** Without a strip: the parameter's name and value over the slider's own look. */
    virtual void paintFallback (juce::Graphics&);

    /** The slider's value, as 0 to 1; of a parameter of steps the one that it took, which the slider may rest beside. */
    float getShownValue() const;

    /** The value as text, of a slider without a parameter. */
    virtual juce::String getOwnText() const { return juce::String (getValue(), 6); }

    /** Writes a value that the user chose to the parameter, and tells the listeners; unless the link is muted. */
    void sendToParameter (float normalised);

    /** Of a fallback's text; 0 leaves the present one. */
    float fallbackFontHeight = 0.0f;

private:
    bool isPressed = false;
};

} // namespace K7R
