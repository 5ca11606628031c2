// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include "widgets/controls/ParameterController.h"

namespace K7R
{

/** A slider of windows that are built by code. It follows its first parameter and shows its texts. */
class SliderController : public juce::Slider, public ParameterController
{
public:
    SliderController() = default;

    void startedDragging() override;
    void stoppedDragging() override;
    void valueChanged() override;
    juce::String getTextFromValue (double) override;

protected:
    void updateFromParameter (Parameter&) override;
};

/** A bar with its text above. */
class VolumeSlider final : public SliderController
{
public:
    explicit VolumeSlider (int initialWidth = 100);
};

} // namespace K7R
