// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/controls/LinkedSlider.h"

#include <utility>

#include "parameters/FloatParameter.h"
#include "skin/Fallbacks.h"

namespace K7R
{

namespace
{

bool hasSteps (const Parameter& parameter)
{
    return dynamic_cast<const FloatParameter*> (&parameter) == nullptr;
}

} // namespace

LinkedSlider::LinkedSlider (const juce::String& controlName, double interval) :
    juce::Slider (juce::Slider::RotaryVerticalDrag, juce::Slider::NoTextBox)
{
    setName (controlName);
    setRange (0.0, 1.0, interval);
    setValue (0.0, juce::dontSendNotification);
}

void LinkedSlider::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    BaseGFXController::readFromXml (element, skin);
    place (*this);
}

void LinkedSlider::updateFromParameter (Parameter& parameter)
{
    setValue (static_cast<double> (parameter.getNormalised()), juce::dontSendNotification);
    repaint(); // also of a slider that stood there already, and showed another step
}

float LinkedSlider::getShownValue() const
{
    if (const auto* parameter = getParameter(); parameter != nullptr && ! linkMuted && hasSteps (*parameter))
        return parameter->getNormalised();

    const auto range = getRange();
    return static_cast<float> ((getValue() - range.getStart()) / range.getLength());
}

//==============================================================================
void LinkedSlider::mouseDown (const juce::MouseEvent& e)
{
    if (belongsToEditor (e.mods))
        return;

    isPressed = true;
    juce::Slider::mouseDown (e);
}

void LinkedSlider::mouseDrag (const juce::MouseEvent& e)
{
    if (! belongsToEditor (e.mods) && isEnabled())
        juce::Slider::mouseDrag (e);
}

void LinkedSlider::mouseUp (const juce::MouseEvent& e)
{
    // Also of a drag that Shift was pressed in.
    if (! std::exchange (isPressed, false))
        return;

    juce::Slider::mouseUp (e);

    // The next drag begins at the step that this one left.
    if (auto* parameter = getParameter(); parameter != nullptr && ! linkMuted && hasSteps (*parameter))
        updateFromParameter (*parameter);
}

void LinkedSlider::startedDragging()
{
    if (! linkMuted && getParameter() != nullptr)
        beginGesture();
}

void LinkedSlider::stoppedDragging()
{
    if (! linkMuted && getParameter() != nullptr)
        endGesture();
}

void LinkedSlider::valueChanged()
{
    sendToParameter (static_cast<float> (getValue()));
}

void LinkedSlider::sendToParameter (float normalised)
{
    if (linkMuted || getParameter() == nullptr)
        return;

    getParameter()->setNormalised (normalised, true);
    notifyValueChanged();
}

//==============================================================================
void LinkedSlider::paint (juce::Graphics& g)
{
    if (getStrip().isValid())
        getStrip().draw (g, getFrame());
    else
        paintFallback (g);
}

void LinkedSlider::paintFallback (juce::Graphics& g)
{
    if (fallbackFontHeight > 0.0f)
        g.setFont (fallbackFontHeight);

    Fallbacks::drawFrame (g, getLocalBounds());
    juce::Slider::paint (g);

    auto* const parameter = getParameter();
    const auto value = parameter != nullptr ? parameter->getDisplayText() : getOwnText();

    g.setColour (juce::Colours::black);
    g.drawFittedText (value, getLocalBounds(), juce::Justification::centredBottom, 2);

    if (parameter != nullptr)
        g.drawFittedText (parameter->getName(), getLocalBounds(), juce::Justification::centredTop, 2);
}

} // namespace K7R
