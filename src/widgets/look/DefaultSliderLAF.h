// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

/** The look of sliders that no skin draws: a grey bar, and one thumb or two. */
class DefaultSliderLAF : public juce::LookAndFeel_V3
{
public:
    DefaultSliderLAF();

    void drawLinearSliderBackground (juce::Graphics&, int x, int y, int width, int height, float position,
                                     float minimum, float maximum, juce::Slider::SliderStyle, juce::Slider&) override;
    void drawLinearSliderThumb (juce::Graphics&, int x, int y, int width, int height, float position, float minimum,
                                float maximum, juce::Slider::SliderStyle, juce::Slider&) override;
};

} // namespace K7R
