// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

/** A plain label of windows that are built by code, drawn by their look and feel. */
class HardLabel final : public juce::Label
{
public:
    using juce::Label::Label;

    struct LookAndFeelMethods
    {
        virtual ~LookAndFeelMethods() = default;

        virtual void drawHardLabel (juce::Graphics&, HardLabel&) = 0;
    };

    void paint (juce::Graphics& g) override
    {
        if (auto* look = dynamic_cast<LookAndFeelMethods*> (&getLookAndFeel()))
            look->drawHardLabel (g, *this);
        else
            juce::Label::paint (g);
    }
};

} // namespace K7R
