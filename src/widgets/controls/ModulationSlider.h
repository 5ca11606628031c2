// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include "widgets/look/DefaultSliderLAF.h"

namespace K7R
{

/** The amount of a modulation, from -1 to +1: a bar that fills from its middle, over a scale whose own middle reads the
    amount. A double click gives 0. For the message thread. */
class ModulationSlider final : public juce::Slider
{
public:
    ModulationSlider();
    ~ModulationSlider() override;

    /** With two digits and its sign: "-0.25", "0.00", "+1.00". */
    juce::String getTextFromValue (double) override;

    void paint (juce::Graphics&) override;
    void focusGained (FocusChangeType) override { repaint(); }
    void focusLost (FocusChangeType) override { repaint(); }

    /** Of the bar at the left and the right, for the ring of the keyboard's focus. */
    static constexpr int margin = 2;

private:
    /** Draws the bar and the scale. */
    class OwnLookAndFeel final : public DefaultSliderLAF
    {
    public:
        juce::Slider::SliderLayout getSliderLayout (juce::Slider&) override;
        void drawLinearSlider (juce::Graphics&, int x, int y, int width, int height, float position, float minimum,
                               float maximum, juce::Slider::SliderStyle, juce::Slider&) override;

    private:
        static void drawScale (juce::Graphics&, juce::Rectangle<int>, juce::Slider&);
    };

    juce::SharedResourcePointer<OwnLookAndFeel> look;
};

} // namespace K7R
