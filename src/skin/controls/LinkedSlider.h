// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/BaseGFXController.h"

namespace K7R
{

/** The base of a skin's sliders: a film strip in place of the slider's own look, and a parameter that follows the
    slider. Presses of the right button or with Shift belong to the editor and don't reach the slider. */
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

    /** Returns the value to show, 0 to 1: the slider's, or the step that a stepped parameter took, which may differ. */
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
