// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/controls/PerformanceWheels.h"

namespace K7R
{

PitchBender::PitchBender (const juce::String& controlName) : GFXKnob (controlName)
{
    setRange (-1.0, 1.0, 0.0);
    setValue (0.0, juce::dontSendNotification);
}

void PitchBender::updateFromParameter (Parameter& parameter)
{
    // What valueChanged() writes, read back.
    setValue (2.0 * static_cast<double> (parameter.getNormalised()) - 1.0, juce::dontSendNotification);
}

void PitchBender::valueChanged()
{
    sendToParameter ((static_cast<float> (getValue()) + 1.0f) * 0.5f);
}

void PitchBender::stoppedDragging()
{
    GFXKnob::stoppedDragging();

    if (! linkMuted)
        setValue (0.0, juce::sendNotificationSync);
}

} // namespace K7R
