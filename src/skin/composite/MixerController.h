// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/FilmStrip.h"
#include "skin/SkinParameterController.h"
#include "skin/controls/GFXSwitch.h"

namespace K7R
{

/** A row of channels, one for each of its parameters: a slider of a strip, and under it a display of another strip.
    The gaps are to the left of each channel, and above each slider and each display.

    A press on a slider gives its channel the value at the mouse, and a drag goes on with that channel alone. With Ctrl
    held at the press, a drag moves all channels together, each from where it stood and as far as a plain drag would;
    those that reach an end wait there until the mouse is back.
*/
class MixerController final : public SkinParameterController
{
public:
    explicit MixerController (const juce::String& controlName);

    /** Reads "background" and "readOnly", and the children "pos", "size", "gfx" and "parameters", by their
        exact names. */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;

    enum class StripKind
    {
        slider,
        display,
    };

    /** Gives a strip to all channels, and lays them out. */
    void setStrip (StripKind, const FilmStrip&);

    /** Shows the values and takes no clicks; they go to what lies behind. */
    void setReadOnly (bool);

    Parameter* getParameterAt (const juce::MouseEvent&, juce::Component** component) override;
    std::vector<Part> getParts() override;

    // Also of the master slider, which lies over the channels.
    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    void endPendingGesture() override;
    void mouseWheelMove (const juce::MouseEvent&, const juce::MouseWheelDetails&) override;

    void resized() override { layOut(); }
    void paint (juce::Graphics&) override;

protected:
    void parameterAdded (Parameter&, size_t index) override;
    void updateFromParameter (Parameter&) override;

private:
    /** One channel's slider, or its display. */
    class Animation final : public juce::Component
    {
    public:
        Animation();

        /** Takes the strip's size, if it's valid. */
        void setStrip (const FilmStrip&);

        /** @param newValue 0 to 1; others are ignored */
        void setValue (float newValue);
        void paint (juce::Graphics&) override;

    private:
        FilmStrip strip;
        int currentFrame = 0;
        float value = 0.0f;
    };

    /** Lies over all sliders, invisible, and takes the mouse for them. It has no life of its own: with Ctrl, a slider
        would hide the mouse and throw it elsewhere. */
    class MasterSlider final : public GFXSwitch
    {
    public:
        explicit MasterSlider (MixerController&);

        // The mixer listens to them.
        void mouseDown (const juce::MouseEvent&) override {}
        void mouseDrag (const juce::MouseEvent&) override {}
        void mouseUp (const juce::MouseEvent&) override {}
        void mouseDoubleClick (const juce::MouseEvent&) override {}

        // Those of the mixer.
        Parameter* getParameterAt (const juce::MouseEvent&, juce::Component** component) override;
        bool canResetParameterAt (const juce::MouseEvent&) override;

        void paint (juce::Graphics&) override {}

    private:
        MixerController& mixer;
    };

    void layOut();
    juce::Point<int> getSliderSize() const;

    /** The channel whose slider or display is at a place; -1 for none. */
    int findChannel (juce::Point<int>) const;
    void moveChannel (int channel, float normalised);
    bool isDragging() const noexcept { return draggedChannel >= 0 || ! valuesAtStart.empty(); }

    /** @param distance as a part of the range */
    void turnWheel (int channel, float distance, bool isSmooth);
    void moveToNeighbour (Parameter&, int direction);

    juce::Image backgroundImage;
    FilmStrip sliderStrip, displayStrip;
    juce::OwnedArray<Animation> sliderFrames, displayFrames; // as many as parameters
    int gapX = 0, gapY = 0;
    bool readOnly = false;

    int draggedChannel = -1;
    std::vector<float> valuesAtStart; // of a drag of all channels; else empty
    int startOfDrag = 0;
    int pointer = -1; // index of the mouse, or the finger, that drags
    int wheelChannel = -1;
    float wheelRest = 0.0f; // of turns that were too small for a step

    MasterSlider masterSlider { *this };
};

} // namespace K7R
