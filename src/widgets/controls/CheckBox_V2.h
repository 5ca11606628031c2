// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include <juce_gui_basics/juce_gui_basics.h>

#include "widgets/controls/ParameterController.h"

namespace K7R
{

/** A check box of windows that are built by code: a box, a tick, and a text behind it. */
class CheckBox_V2 final : public juce::TextButton, public ParameterController
{
public:
    /** As wide as its text asks for. */
    explicit CheckBox_V2 (const juce::String& label, int height = 20);

    void clicked() override;
    void resized() override;
    void buttonStateChanged() override;
    void paintButton (juce::Graphics&, bool isOver, bool isDown) override;

protected:
    void updateFromParameter (Parameter&) override;

private:
    juce::Rectangle<int> getBox() const;

    std::unique_ptr<juce::Drawable> tick;
};

} // namespace K7R
