// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/controls/GFXKnob.h"

namespace K7R
{

/** A wheel from -1 to 1 that springs back to the middle, where its parameter stands at 0.5. */
class PitchBender final : public GFXKnob
{
public:
    explicit PitchBender (const juce::String& controlName);

    void updateFromParameter (Parameter&) override;
    void stoppedDragging() override;
    void valueChanged() override;
};

/** A knob that starts at 0 and is tied to nothing by itself. */
class ModWheel final : public GFXKnob
{
public:
    using GFXKnob::GFXKnob;
};

} // namespace K7R
