// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include "core/SoftwareDesignation.h"

namespace K7R
{

/** Who made what the program is made of, and under which terms it may be used. As high as its text at its width. */
class CreditsText final : public juce::Component
{
public:
    explicit CreditsText (const std::vector<SoftwareDesignation::Credit>&);

    /** Takes a width, and the height that goes with it. */
    void setWidth (int width);

    void paint (juce::Graphics&) override;

private:
    void add (const juce::String& text, bool isHeading);

    juce::AttributedString text;
    juce::TextLayout layout;
};

} // namespace K7R
