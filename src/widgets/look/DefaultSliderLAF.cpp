// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/look/DefaultSliderLAF.h"

namespace K7R
{

namespace
{

constexpr juce::uint32 grey = 0xff808080;
constexpr float barThickness = 6.0f;
constexpr int largestThumb = 8;

} // namespace

DefaultSliderLAF::DefaultSliderLAF()
{
    setColour (juce::Slider::rotarySliderOutlineColourId, juce::Colours::black);
    setColour (juce::Slider::rotarySliderFillColourId, juce::Colour (grey));
}

void DefaultSliderLAF::drawLinearSliderBackground (juce::Graphics& g, int x, int y, int width, int height, float, float,
                                                   float, juce::Slider::SliderStyle, juce::Slider& slider)
{
    const auto area = juce::Rectangle<int> (x, y, width, height).toFloat();

    g.setColour (juce::Colour (grey));
    g.fillRect (slider.isVertical() ? area.withSizeKeepingCentre (barThickness, area.getHeight())
                                    : area.withSizeKeepingCentre (area.getWidth(), barThickness));
}

void DefaultSliderLAF::drawLinearSliderThumb (juce::Graphics& g, int x, int y, int width, int height, float position,
                                              float minimum, float maximum, juce::Slider::SliderStyle style,
                                              juce::Slider& slider)
{
    if (style != juce::Slider::LinearHorizontal && style != juce::Slider::TwoValueHorizontal)
    {
        juce::LookAndFeel_V2::drawLinearSliderThumb (g, x, y, width, height, position, minimum, maximum, style, slider);
        return;
    }

    const auto size = static_cast<float> (juce::jmin (getSliderThumbRadius (slider), largestThumb));
    const auto middle = static_cast<float> (y) + static_cast<float> (height) * 0.5f;
    const auto drawAt = [&] (float place) {
        g.fillEllipse (juce::Rectangle<float> (size, size).withCentre ({ place, middle }));
    };

    g.setColour (
        slider.findColour (juce::Slider::thumbColourId).withMultipliedAlpha (slider.isEnabled() ? 1.0f : 0.5f));

    if (style == juce::Slider::LinearHorizontal)
        drawAt (position);
    else
        for (const auto place : { minimum, maximum })
            drawAt (place);
}

} // namespace K7R
