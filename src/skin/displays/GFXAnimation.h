// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/BaseGFXController.h"

namespace K7R
{

/** Shows one frame of a strip: a parameter's value, a level that its owner gives it, or the light of an activity. */
class GFXAnimation : public BaseGFXController, public juce::Component, private juce::Timer
{
public:
    explicit GFXAnimation (const juce::String& controlName) : juce::Component (controlName) {}

    void updateFromParameter (Parameter&) override;

    /** Shows a value; what lies beyond 0 to 1 shows the first or the last frame. */
    void setValue (float);

    int getCurrentFrame() const noexcept { return currentFrame; }

    /** Lights the last frame for so long, and goes back to the one at rest. */
    void flash (int durationMs);

    void paint (juce::Graphics&) override;

protected:
    /** Without a strip. */
    virtual void paintFallback (juce::Graphics&);

    void showFrame (int frame);

    void sizeChanged() override;
    void positionChanged() override;

private:
    void blinkChanged() override { repaint(); }
    void timerCallback() override;

    int currentFrame = 0;
    int restFrame = 0;
};

} // namespace K7R
