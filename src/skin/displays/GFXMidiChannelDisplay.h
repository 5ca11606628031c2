// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/controls/LinkedSlider.h"

namespace K7R
{

/** Shows a MIDI channel, and lets a drag choose it. Frame 0 of its strip is for the disabled display, the others
    are the channels. */
class GFXMidiChannelDisplay final : public LinkedSlider
{
public:
    explicit GFXMidiChannelDisplay (const juce::String& controlName) : LinkedSlider (controlName, 0.0) {}

protected:
    int getFrame() const override;
    void paintFallback (juce::Graphics&) override;
};

} // namespace K7R
