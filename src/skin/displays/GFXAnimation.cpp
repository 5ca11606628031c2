// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/displays/GFXAnimation.h"

#include "skin/Fallbacks.h"

namespace K7R
{

void GFXAnimation::updateFromParameter (Parameter& parameter)
{
    setValue (parameter.getNormalised());
}

void GFXAnimation::setValue (float value)
{
    showFrame (FilmStrip::frameFor (value, framesNum));
}

void GFXAnimation::showFrame (int frame)
{
    if (std::exchange (currentFrame, frame) != frame)
        repaint();
}

void GFXAnimation::flash (int durationMs)
{
    setValue (1.0f);
    startTimer (durationMs);
}

void GFXAnimation::timerCallback()
{
    stopTimer();
    showFrame (restFrame);
}

void GFXAnimation::sizeChanged()
{
    setBounds (getX(), getY(), getFrameWidth(), getFrameHeight());
}

void GFXAnimation::positionChanged()
{
    setTopLeftPosition (getPlace().getPosition());
}

void GFXAnimation::paint (juce::Graphics& g)
{
    if (getStrip().isValid())
        getStrip().draw (g, isBlinkedOff() ? 0 : currentFrame);
    else
        paintFallback (g);
}

void GFXAnimation::paintFallback (juce::Graphics& g)
{
    Fallbacks::paintState (g, getLocalBounds(), juce::Colour (0xffe6e6e6), currentFrame, framesNum);
}

} // namespace K7R
