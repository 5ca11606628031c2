// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/controls/SliderController.h"

namespace K7R
{

void SliderController::startedDragging()
{
    if (auto* parameter = getParameter (0))
        parameter->beginGesture();
}

void SliderController::stoppedDragging()
{
    if (auto* parameter = getParameter (0))
        parameter->endGesture();
}

void SliderController::valueChanged()
{
    if (auto* parameter = getParameter (0))
        parameter->setNormalised (static_cast<float> (getValue()), true);
}

juce::String SliderController::getTextFromValue (double value)
{
    auto* parameter = getParameter (0);

    if (parameter == nullptr)
        return juce::Slider::getTextFromValue (value);

    // A parameter knows the text of its own value only.
    const auto probe = parameter->clone (parameter->getId(), parameter->getName());
    probe->setNormalised (static_cast<float> (value), false);
    return probe->getDisplayText();
}

void SliderController::updateFromParameter (Parameter& parameter)
{
    if (&parameter != getParameter (0))
        return;

    setValue (static_cast<double> (parameter.getNormalised()), juce::dontSendNotification);
    updateText();
}

VolumeSlider::VolumeSlider (int initialWidth)
{
    constexpr int textWidth = 100, textHeight = 10, height = 20;

    setRange (0.0, 1.0, 1.0e-7);
    setSliderStyle (juce::Slider::LinearBar);
    setTextBoxStyle (juce::Slider::TextBoxAbove, false, textWidth, textHeight);
    setSize (initialWidth, height);

    setColour (juce::Slider::backgroundColourId, juce::Colour (0xffb84a00));
    setColour (juce::Slider::thumbColourId, juce::Colour (0xff662900));
    setColour (juce::Slider::textBoxTextColourId, juce::Colours::white);
    setColour (juce::Slider::textBoxOutlineColourId, juce::Colour (0xffb84a00));
}

} // namespace K7R
