// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/controls/GFXKnob.h"

namespace K7R
{

GFXKnob::GFXKnob (const juce::String& controlName) : LinkedSlider (controlName, 0.0)
{
    fallbackFontHeight = 13.0f;
}

void GFXKnob::startedDragging()
{
    isDragging = true;
    LinkedSlider::startedDragging();
}

void GFXKnob::stoppedDragging()
{
    isDragging = false;
    LinkedSlider::stoppedDragging();
}

int GFXKnob::getFrame() const
{
    return FilmStrip::frameFor (getShownValue(), getStrip().getNumFrames());
}

} // namespace K7R
