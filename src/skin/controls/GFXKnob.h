// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/controls/LinkedSlider.h"

namespace K7R
{

/** A knob: a vertical drag turns it, and its strip's frame shows where it stands. */
class GFXKnob : public LinkedSlider
{
public:
    explicit GFXKnob (const juce::String& controlName);

    void startedDragging() override;
    void stoppedDragging() override;

    bool isBeingDragged() const noexcept { return isDragging; }

protected:
    int getFrame() const override;

private:
    bool isDragging = false;
};

} // namespace K7R
